// The road of points from files of other formats into a database.
#pragma once

#include "window/dialogs/dialogimportpoints.h"
#include "window/panels/databasesession.h"

#include <QString>
#include <QStringList>

class QWidget;

namespace tarvo::window {

struct ImportOutcome {
    bool changed = false;  // the session's database has the points
    QString opened;        // a new database that the user wants to see; empty: none
};

// Reads the files, shows what was found, and imports it until that could be done or the user gives
// up; in one transaction, or nothing is left. target: where the points can go besides a new
// database, of the session. Shows the errors of the import; throws Failure and Cancelled for files
// that can't be read.
ImportOutcome importPoints(const QStringList& fileNames, const DatabaseSession& session,
                           const ImportTarget& target, QWidget* parent);

}  // namespace tarvo::window
