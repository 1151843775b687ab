#include "window/dialogs/dialogchangelogsignature.h"

#include "qrb/changelog.h"
#include "window/common/guard.h"

#include <QPushButton>

namespace tarvo::window {

DialogChangelogSignature::DialogChangelogSignature(const QString& entry, QWidget* parent)
    : DialogSignature("DialogChangelogSignature", tr("&Log entry:"), entry.section('\n', 0, 0),
                      parent),
      m_entry(entry) {
    setWindowTitle(tr("Verify Log Entry Signature"));
    addMethod(tr("1 (default)"), 1);
    connect(addButton("buttonVerify", tr("&Verify Signature")), &QPushButton::clicked, this,
            &DialogChangelogSignature::on_buttonVerify_clicked);
    addCloseButton();
    restore();
}

void DialogChangelogSignature::on_buttonVerify_clicked() {
    guarded(this, [this] {
        qrb::pointcloud::Changelog::verifyLogEntry(m_entry.toStdString(), method(), key())
            ? tellVerified()
            : tellNotVerified();
    });
}

}  // namespace tarvo::window
