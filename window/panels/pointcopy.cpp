#include "window/panels/pointcopy.h"

#include "core/valueformat.h"
#include "window/panels/pointrow.h"

#include <QHeaderView>
#include <QStringList>
#include <QTreeWidget>
#include <algorithm>
#include <cmath>
#include <vector>

namespace tarvo::window {

namespace {

// Without the name that the table may show with it.
QString valueOf(const QTreeWidgetItem* item, int column) {
    return static_cast<const PointRow*>(item)->value(column);
}

std::vector<const QTreeWidgetItem*> selectedItems(const QTreeWidget* table) {
    std::vector<const QTreeWidgetItem*> items;
    for (int row = 0; row < table->topLevelItemCount(); ++row)
        if (const QTreeWidgetItem* item = table->topLevelItem(row); item->isSelected())
            items.push_back(item);
    return items;
}

std::vector<int> shownColumns(const QTreeWidget* table) {
    std::vector<int> columns;
    const QHeaderView* header = table->header();
    for (int visual = 0; visual < header->count(); ++visual)
        if (const int column = header->logicalIndex(visual);
            column > 0 && !table->isColumnHidden(column))
            columns.push_back(column);
    return columns;
}

}  // namespace

QString selectedRows(const QTreeWidget* table, QChar separator) {
    const auto items = selectedItems(table);
    if (items.empty())
        return {};
    const auto columns = shownColumns(table);
    QString text;
    QStringList cells;
    for (const int column : columns)
        cells += table->headerItem()->text(column);
    text += cells.join(separator) + '\n';
    for (const QTreeWidgetItem* item : items) {
        cells.clear();
        for (const int column : columns)
            cells += valueOf(item, column);
        text += cells.join(separator) + '\n';
    }
    return text;
}

QString shownColumn(const QTreeWidget* table, int column) {
    QString text = table->headerItem()->text(column) + '\n';
    for (int row = 0; row < table->topLevelItemCount(); ++row)
        text += valueOf(table->topLevelItem(row), column) + '\n';
    return text;
}

QString cellFilter(const QTreeWidgetItem* row, int column,
                   const qrb::pointcloud::PointAttribute& attribute) {
    const QString element = row->treeWidget()->headerItem()->text(column);
    const QString value = valueOf(row, column);
    bool isNumber = false;
    const double number = value.toDouble(&isNumber);
    if (!isNumber || !std::isfinite(number))
        return {};
    if (number == attribute.invalidValue)
        return QString("%1 == %2:invalid").arg(element, element.section('[', 0, 0));
    const bool isWhole = core::ValueFormat(attribute).type() != qrb::pointcloud::DataType::DOUBLE;
    if (isWhole || !(attribute.resolution > 0))
        return QString("%1 == %2").arg(element, value);
    // A value lies in the middle between those that are stored as its neighbours.
    const double half = attribute.resolution / 2;
    const int places = core::decimalsOfResolution(half);
    return QString("(%1 >= %2) && (%1 <= %3)")
        .arg(element, QString::number(number - half, 'f', places),
             QString::number(number + half, 'f', places));
}

QString selectedRowsFilter(const QTreeWidget* table, const QString& idName) {
    int column = 1;
    while (column < table->columnCount() && table->headerItem()->text(column) != idName)
        ++column;
    if (column >= table->columnCount())
        return {};
    std::vector<qulonglong> ids;
    for (const QTreeWidgetItem* item : selectedItems(table))
        ids.push_back(valueOf(item, column).toULongLong());
    std::sort(ids.begin(), ids.end());
    QStringList terms;
    for (std::size_t i = 0, end = 0; i < ids.size(); i = end) {
        for (end = i + 1; end < ids.size() && ids[end] <= ids[end - 1] + 1;)
            ++end;
        terms += ids[i] == ids[end - 1]
                     ? QString("%1 == %2").arg(idName).arg(ids[i])
                     : QString("(%1 >= %2 && %1 <= %3)").arg(idName).arg(ids[i]).arg(ids[end - 1]);
    }
    return terms.join(" || ");
}

}  // namespace tarvo::window
