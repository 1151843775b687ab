// What the points table shows as texts for the clipboard: rows, columns, and filter expressions.
// Values stand without their names.
#pragma once

#include "qrb/pointattribute.h"

#include <QChar>
#include <QString>

class QTreeWidget;
class QTreeWidgetItem;

namespace tarvo::window {

// A line of the shown columns' names and one of the values of each selected row, in the order in
// which they are shown; the column of row numbers is left out. Empty without a selected row.
QString selectedRows(const QTreeWidget* table, QChar separator);

// The column's name and its values in all rows, a line each, in the order in which they are shown.
QString shownColumn(const QTreeWidget* table, int column);

// A filter expression for the points with the value of a cell; where values are real numbers, half
// a resolution to both sides of it, so that it also finds what is stored as this value. Empty where
// it is no number. attribute: the column's.
QString cellFilter(const QTreeWidgetItem* row, int column,
                   const qrb::pointcloud::PointAttribute& attribute);

// A filter expression that selects the same points by their ids, those that follow each other as a
// range; empty without a selected row, or where no column is the id.
QString selectedRowsFilter(const QTreeWidget* table, const QString& idName);

}  // namespace tarvo::window
