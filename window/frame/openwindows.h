// The windows of the program, and which of them has a database open.
#pragma once

#include <QList>
#include <QString>

namespace tarvo::window {

class MainWindow;
struct DatabaseSession;

// In the order of the application's top-level widgets; those that were closed are left out.
QList<MainWindow*> openWindows();

// The place of a new database must not be that of one that a window has open, by whatever names.
// asking: the session of the window that wants it. Throws std::runtime_error.
void refuseOpenDatabase(const QString& fileName, const DatabaseSession& asking);

}  // namespace tarvo::window
