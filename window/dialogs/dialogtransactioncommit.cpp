#include "window/dialogs/dialogtransactioncommit.h"

#include "ui_dialogsignature.h"

namespace tarvo::window {

DialogTransactionCommit::DialogTransactionCommit(QWidget* parent)
    : DialogSignature("DialogTransactionCommit", {}, {}, parent) {
    setWindowTitle(tr("Commit Current Transaction"));
    addMethod(tr("0 (none)"), 0);
    addMethod(tr("1 (default)"), 1);
    connect(ui().editMethod, &QComboBox::currentIndexChanged, this,
            &DialogTransactionCommit::on_editMethod_currentIndexChanged);
    ui().buttonBox->setStandardButtons(QDialogButtonBox::Ok | QDialogButtonBox::Cancel);
    connect(ui().buttonBox, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(ui().buttonBox, &QDialogButtonBox::rejected, this, &QDialog::reject);
    restore();
    on_editMethod_currentIndexChanged(ui().editMethod->currentIndex());
}

void DialogTransactionCommit::on_editMethod_currentIndexChanged(int) {
    setKeyEnabled(method() != 0);
}

}  // namespace tarvo::window
