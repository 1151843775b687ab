// Selected rows of the points table as texts for the clipboard.
#pragma once

#include <QChar>
#include <QString>

class QTreeWidget;

namespace tarvo::window {

// A line of the shown columns' names and one of the values of each selected row, in the order in
// which they are shown; the column of row numbers is left out. Empty without a selected row.
QString selectedRows(const QTreeWidget* table, QChar separator);

// A filter expression that selects the same points by their ids, those that follow each other as a
// range; empty without a selected row, or where no column is the id.
QString selectedRowsFilter(const QTreeWidget* table, const QString& idName);

}  // namespace tarvo::window
