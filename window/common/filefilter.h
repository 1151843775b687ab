// File name filters of database file dialogs.
#pragma once

#include <QString>

namespace tarvo::window {

// The groups of database file types, joined with ";;".
const QString& databaseFileTypeFilter();

// The formats of other programs that are read, as one entry.
const QString& pointFileTypeFilter();

// The filter with "All files (*.*)" at the end.
QString withAllFiles(const QString& filter);

// Those of databases with an entry of all patterns in front and "All files (*.*)" at the end.
QString databaseFileDialogFilter();

// A name of a database with the usual extension where it has none.
QString withDatabaseExtension(const QString& fileName);

}  // namespace tarvo::window
