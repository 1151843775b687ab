#include "window/common/outputdialog.h"

#include <QFileDialog>
#include <QFileInfo>

namespace tarvo::window {

QString chooseOutput(QWidget* parent, const QString& title, const QString& proposed,
                     const QString& filter, const QString& extension) {
    QFileDialog dialog(parent, title, QFileInfo(proposed).path(), filter);
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    dialog.setFileMode(QFileDialog::AnyFile);
    dialog.setDefaultSuffix(extension);
    dialog.selectFile(QFileInfo(proposed).fileName());
    if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty())
        return {};
    return dialog.selectedFiles().first();
}

}  // namespace tarvo::window
