#include "window/app/startup.h"

#include "qrb/loader.h"
#include "window/common/guard.h"
#include "window/common/librarydialog.h"
#include "window/common/messages.h"
#include "window/common/textformat.h"
#include "window/frame/librarychoice.h"
#include "window/frame/mainwindow.h"

#include <QApplication>
#include <QFile>
#include <QMessageBox>
#include <QPushButton>
#include <QTimer>
#include <cstdlib>
#include <exception>
#include <optional>

namespace tarvo::window {

namespace {

// What the user wants in place of a library that could not be loaded; none: the end.
std::optional<QString> otherLibrary(const QString& failed, const QString& reason) {
    const QString tried = failed.isEmpty() ? QString(qrb::defaultLibraryName) : failed;
    QMessageBox box(QMessageBox::Critical, programName(),
                    QObject::tr("%1\n\nLibrary: %2").arg(reason, tried));
    box.setTextFormat(Qt::PlainText);
    box.setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    const auto* browse = box.addButton(QObject::tr("&Browse ..."), QMessageBox::AcceptRole);
    const QAbstractButton* standard =
        failed.isEmpty() ? nullptr
                         : box.addButton(QObject::tr("&Default Library"), QMessageBox::ResetRole);
    box.addButton(QObject::tr("&Quit"), QMessageBox::RejectRole);
    box.exec();
    if (box.clickedButton() == standard && standard)
        return QString();
    if (box.clickedButton() != browse)
        return std::nullopt;
    const QString name = chooseLibrary(nullptr, failed);
    return name.isEmpty() ? failed : name;
}

// Whether a library is loaded at the end. In place of one that fails another one can be chosen.
bool loadChosenLibrary() {
    while (true) {
        QString& chosen = libraryChoice().fileName;
        try {
            qrb::freeLibrary();
            qrb::loadLibrary(chosen.toStdString());
            return true;
        } catch (const std::exception& error) {
            const auto other = otherLibrary(chosen, translatedMessage(error.what()));
            if (!other)
                return false;
            chosen = *other;
        }
    }
}

void closeFurtherWindows(const MainWindow* first) {
    for (QWidget* widget : QApplication::topLevelWidgets()) {
        if (widget != first && qobject_cast<MainWindow*>(widget))
            delete widget;
    }
}

// Runs one window until all windows are closed.
int runWindow(bool isFirst) {
    MainWindow window;
    window.show();
    QTimer::singleShot(0, &window, [&window, isFirst] {
        window.openArguments(QCoreApplication::arguments().mid(1), isFirst);
    });
    libraryChoice().restart = false;
    QApplication::setQuitOnLastWindowClosed(true);
    const int result = QApplication::exec();
    QApplication::setQuitOnLastWindowClosed(false);
    closeFurtherWindows(&window);
    return result;
}

}  // namespace

void setApplicationNames() {
    QApplication::setApplicationName("qrbadmin");
    QApplication::setOrganizationName("TARVO LMS");
    QApplication::setOrganizationDomain("tarvo-lms.example");
    // By this name desktops know which icon the windows have.
    QApplication::setDesktopFileName("qrbadmin");
}

void applyStyleSheet() {
    QFile file(":/resources/stylesheet.qss");
    if (file.open(QIODevice::ReadOnly))
        qApp->setStyleSheet(QString::fromUtf8(file.readAll()));
}

int runWindows() {
    // A box that closes while no window is shown would otherwise end the loop to come.
    QApplication::setQuitOnLastWindowClosed(false);
    int result = EXIT_FAILURE;
    bool isFirst = true;
    do {
        if (!loadChosenLibrary())
            return EXIT_FAILURE;
        if (!guarded(nullptr, [&] { result = runWindow(isFirst); }))
            return EXIT_FAILURE;
        isFirst = false;
    } while (libraryChoice().restart);
    return result;
}

}  // namespace tarvo::window
