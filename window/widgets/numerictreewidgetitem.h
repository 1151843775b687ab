// A tree row that sorts its columns by number where both cells are numbers, else by text.
#pragma once

#include <QTreeWidgetItem>
#include <optional>

namespace tarvo::window {

class NumericTreeWidgetItem : public QTreeWidgetItem {
public:
    explicit NumericTreeWidgetItem(QTreeWidget* tree, const QStringList& texts = {})
        : QTreeWidgetItem(tree, texts, kind) {}
    explicit NumericTreeWidgetItem(QTreeWidgetItem* parent) : QTreeWidgetItem(parent, kind) {}
    explicit NumericTreeWidgetItem(const QStringList& texts = {}) : QTreeWidgetItem(texts, kind) {}

    // A number to sort a column by in place of its text, such as the bytes behind "1.50 KB"; rows
    // that know it otherwise tell it under the role.
    static constexpr int sortValueRole = Qt::UserRole + 1000;
    void setSortValue(int column, double value);

    void setData(int column, int role, const QVariant& value) override;
    bool operator<(const QTreeWidgetItem& other) const override;

private:
    // Tells rows of this kind from others without a look at their class, which sorting had to wait
    // for.
    static constexpr int kind = QTreeWidgetItem::UserType + 1;

    std::optional<double> numberOf(int column) const;

    // What was read of a column, for the many comparisons of one sorting.
    mutable int m_readColumn = -1;
    mutable std::optional<double> m_number;
};

// Puts the titles of columns that hold numbers above them, to the right.
void alignNumberHeaders(QTreeWidget* tree, const QList<int>& columns);

}  // namespace tarvo::window
