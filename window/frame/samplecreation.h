// The road from the wish for a sample to a database with simulated points.
#pragma once

#include "window/panels/databasesession.h"

#include <QString>

class QWidget;

namespace tarvo::window {

// Asks for the name of a file, and makes a database with about a million simulated points there.
// Returns its name; empty if the user gives no name. The session stays as it is. Throws what making
// it throws, Cancelled among that, and leaves nothing behind then.
QString createSample(const DatabaseSession& session, QWidget* parent);

}  // namespace tarvo::window
