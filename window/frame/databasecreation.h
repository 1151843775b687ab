// The road from the wish for a new database to its file.
#pragma once

#include "window/panels/databasesession.h"

#include <QString>

class QWidget;

namespace tarvo::window {

// Asks for location and settings until a database could be created with them or the user gives up.
// Shows its errors. Returns the file name, empty if none was created; the session stays as it is.
QString createDatabase(const DatabaseSession& session, QWidget* parent);

}  // namespace tarvo::window
