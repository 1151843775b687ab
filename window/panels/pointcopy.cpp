#include "window/panels/pointcopy.h"

#include <QHeaderView>
#include <QStringList>
#include <QTreeWidget>
#include <algorithm>
#include <vector>

namespace tarvo::window {

namespace {

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
    const auto addLine = [&](const QTreeWidgetItem* item) {
        QStringList cells;
        for (const int column : columns)
            cells += item->text(column);
        text += cells.join(separator) + '\n';
    };
    addLine(table->headerItem());
    for (const QTreeWidgetItem* item : items)
        addLine(item);
    return text;
}

QString selectedRowsFilter(const QTreeWidget* table, const QString& idName) {
    int column = 1;
    while (column < table->columnCount() && table->headerItem()->text(column) != idName)
        ++column;
    if (column >= table->columnCount())
        return {};
    std::vector<qulonglong> ids;
    for (const QTreeWidgetItem* item : selectedItems(table))
        ids.push_back(item->text(column).toULongLong());
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
