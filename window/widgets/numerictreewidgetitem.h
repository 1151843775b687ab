// A tree row that sorts its columns by number where both cells are numbers, else by text.
#pragma once

#include <QTreeWidgetItem>

namespace tarvo::window {

class NumericTreeWidgetItem : public QTreeWidgetItem {
public:
    using QTreeWidgetItem::QTreeWidgetItem;

    // A number to sort a column by in place of its text, such as the bytes behind "1.50 KB".
    void setSortValue(int column, double value);

    bool operator<(const QTreeWidgetItem& other) const override;
};

}  // namespace tarvo::window
