// File name filters of database file dialogs.
#pragma once

#include <QString>

namespace tarvo::window {

// The groups of database file types, joined with ";;".
const QString& databaseFileTypeFilter();

// The formats of other programs that are read, as one entry.
const QString& pointFileTypeFilter();

// Those of databases with an entry of all patterns in front and "All files (*.*)" at the end.
QString databaseFileDialogFilter();

}  // namespace tarvo::window
