#include "window/frame/openwindows.h"

#include "window/frame/mainwindow.h"

#include <QApplication>
#include <stdexcept>

namespace tarvo::window {

QList<MainWindow*> openWindows() {
    QList<MainWindow*> windows;
    for (QWidget* widget : QApplication::topLevelWidgets()) {
        if (auto* window = qobject_cast<MainWindow*>(widget); window && !window->wasClosed())
            windows += window;
    }
    return windows;
}

void refuseOpenDatabase(const QString& fileName, const DatabaseSession& asking) {
    const auto identity = files::identityOf(fileName.toStdString());
    if (!identity)
        return;
    for (const MainWindow* window : openWindows()) {
        const DatabaseSession& session = window->session();
        if (!session.database || session.identity != identity)
            continue;
        throw std::runtime_error(
            (&session == &asking
                 ? QObject::tr(
                       "This database is open.\nClose it first, or choose another location.")
                 : QObject::tr("This database is open in another window.\n"
                               "Close it there first, or choose another location."))
                .toStdString());
    }
}

}  // namespace tarvo::window
