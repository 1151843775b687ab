#include "window/frame/aboutbox.h"

#include "catalogue/catalogue.h"
#include "window/common/textformat.h"
#include "window/dialogs/dialoglicences.h"

#include <QApplication>
#include <QDir>
#include <QIcon>
#include <QMessageBox>
#include <QPushButton>
#include <QStringList>

namespace tarvo::window {

namespace {

QString definitionsLine(const QString& title, const catalogue::Stamp& stamp) {
    return QString("%1 %2 (%3)")
        .arg(title, QString::fromStdString(stamp.version), QString::fromStdString(stamp.date));
}

}  // namespace

QString aboutText(const QString& windowTitle, const qrb::Context& context) {
    const auto text = [](const std::string& utf8) { return QString::fromStdString(utf8); };
    return QStringList{
        windowTitle + ' ' + programVersionText(),
        "",
        definitionsLine(QObject::tr("QRB Point Attribute Definitions"),
                        catalogue::attributesStamp()),
        definitionsLine(QObject::tr("QRB Meta Data Item Definitions"), catalogue::metaDataStamp()),
        definitionsLine(QObject::tr("QRB File Schema Definitions"), catalogue::schemasStamp()),
        "",
        text(context.interfaceName() + " " + context.interfaceVersion()),
        libraryTitle(text(context.libraryName()), text(context.libraryVersion())),
        QObject::tr("Path: %1").arg(QDir::toNativeSeparators(text(context.libraryFilename()))),
        "",
        QObject::tr("Qt Library %1").arg(qVersion()),
        QString(150, '_'),
        "",
        text(context.libraryLicense()),
    }
        .join('\n');
}

void showAboutBox(QWidget* parent, const qrb::Context& context) {
    QMessageBox box(QMessageBox::NoIcon, QString(), QString(), QMessageBox::Ok, parent);
    // The library's texts must not be taken for rich text.
    box.setTextFormat(Qt::PlainText);
    box.setText(aboutText(programName(), context));
    box.setIconPixmap(QIcon(":/resources/logo.png").pixmap(64, 64));
    const QPushButton* licences =
        box.addButton(QObject::tr("&Licences ..."), QMessageBox::ActionRole);
    box.setEscapeButton(QMessageBox::Ok);
    // Or it would close the box. Whoever hears of its end, such as the style, stays.
    QObject::disconnect(licences, &QPushButton::clicked, nullptr, nullptr);
    QObject::connect(licences, &QPushButton::clicked, &box,
                     [&box] { DialogLicences(&box).exec(); });
    box.exec();
}

}  // namespace tarvo::window
