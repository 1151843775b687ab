#include "window/common/librarydialog.h"

#include "qrb/loader.h"

#include <QDir>
#include <QFileDialog>

namespace tarvo::window {

QString chooseLibrary(QWidget* parent, const QString& start) {
    return QDir::toNativeSeparators(
        QFileDialog::getOpenFileName(parent, "Switch QRB Library...", start,
                                     QString("QRB Library (%1)").arg(qrb::libraryFilePattern)));
}

}  // namespace tarvo::window
