#include "window/common/librarydialog.h"

#include "qrb/loader.h"

#include <QDir>
#include <QFileDialog>

namespace tarvo::window {

QString chooseLibrary(QWidget* parent, const QString& start) {
    return QDir::toNativeSeparators(
        QFileDialog::getOpenFileName(parent, QObject::tr("Switch QRB Library..."), start,
                                     QObject::tr("QRB Library (%1)").arg(qrb::libraryFilePattern)));
}

}  // namespace tarvo::window
