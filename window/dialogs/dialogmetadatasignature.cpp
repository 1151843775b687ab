#include "window/dialogs/dialogmetadatasignature.h"

#include "ui_dialogsignature.h"
#include "window/common/guard.h"
#include "window/common/messageboxes.h"

#include <QPushButton>

namespace tarvo::window {

DialogMetaDataSignature::DialogMetaDataSignature(const qrb::Pointcloud& database,
                                                 const QString& item, InTransaction inTransaction,
                                                 QWidget* parent)
    : DialogSignature("DialogMetaDataSignature", tr("Meta &Data Item:"), item, parent),
      m_database(database),
      m_item(item.toStdString()),
      m_inTransaction(std::move(inTransaction)) {
    setWindowTitle(tr("Meta Data Item Signature"));
    addMethod(tr("1 (default)"), 1);
    connect(addButton("buttonVerify", tr("&Verify Signature")), &QPushButton::clicked, this,
            &DialogMetaDataSignature::on_buttonVerify_clicked);
    connect(addButton("buttonCreate", tr("&Create Signature")), &QPushButton::clicked, this,
            &DialogMetaDataSignature::on_buttonCreate_clicked);
    connect(addButton("buttonDelete", tr("De&lete Signature")), &QPushButton::clicked, this,
            &DialogMetaDataSignature::on_buttonDelete_clicked);
    addCloseButton();
    restore();
    ui().labelState->show();
    guarded(this, [this] { showState(); });
}

bool DialogMetaDataSignature::isSigned() const {
    return m_database.metaData().verifySignature(m_item, 0, {});
}

void DialogMetaDataSignature::showState() {
    ui().labelState->setText(isSigned() ? tr("The item is signed.")
                                        : tr("The item is not signed."));
}

void DialogMetaDataSignature::on_buttonVerify_clicked() {
    guarded(this, [this] {
        m_database.metaData().verifySignature(m_item, method(), key()) ? tellVerified()
                                                                       : tellNotVerified();
    });
}

void DialogMetaDataSignature::on_buttonCreate_clicked() {
    guarded(this, [this] {
        if (isSigned() &&
            !confirmed(this, tr("The item is already signed.\nOverwrite existing signature?")))
            return;
        if (!m_inTransaction("Sign a meta data item"))
            return;
        m_database.metaData().createSignature(m_item, method(), key());
        m_changed = true;
        showState();
        showInformation(this, tr("Signature successfully created."));
    });
}

void DialogMetaDataSignature::on_buttonDelete_clicked() {
    guarded(this, [this] {
        if (!isSigned()) {
            showInformation(this, tr("The item is not signed."));
            return;
        }
        if (!confirmed(this, tr("Delete signature?")) ||
            !m_inTransaction("Delete the signature of a meta data item"))
            return;
        m_database.metaData().createSignature(m_item, 0, {});
        m_changed = true;
        showState();
        showInformation(this, tr("Signature successfully deleted."));
    });
}

}  // namespace tarvo::window
