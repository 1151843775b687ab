// What the cells of a list show.
#pragma once

#include <QList>
#include <QStringList>

class QTreeWidget;
class QTreeWidgetItem;

QStringList textsOf(const QTreeWidgetItem* row);
QStringList headersOf(const QTreeWidget* tree);
// Horizontally; what is not set is left.
Qt::Alignment alignmentOf(const QTreeWidgetItem* row, int column);
void compareAlignments(const QTreeWidgetItem* row, const QList<Qt::Alignment>& expected);
// Whether the cell has the icon of the program with this name.
bool shows(const QTreeWidgetItem* row, int column, const char* icon);
