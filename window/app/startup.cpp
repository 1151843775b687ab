#include "window/app/startup.h"

#include "qrb/loader.h"
#include "window/common/guard.h"
#include "window/common/messageboxes.h"
#include "window/frame/librarychoice.h"
#include "window/frame/mainwindow.h"

#include <QApplication>
#include <QFile>
#include <QTimer>
#include <cstdlib>
#include <exception>

namespace tarvo::window {

namespace {

// Whether a library is loaded at the end. A chosen library that fails can be given up for the
// default one.
bool loadChosenLibrary() {
    while (true) {
        QString& chosen = libraryChoice().fileName;
        try {
            qrb::freeLibrary();
            qrb::loadLibrary(chosen.toStdString());
            return true;
        } catch (const std::exception& error) {
            const QString text = QString::fromUtf8(error.what());
            if (chosen.isEmpty()) {
                showError(nullptr, text);
                return false;
            }
            if (!confirmed(nullptr, QString("%1\n\nLibrary: %2\n\n"
                                            "Go back to the default library?")
                                        .arg(text, chosen)))
                return false;
            chosen.clear();
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
