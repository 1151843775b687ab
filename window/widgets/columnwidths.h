// Keeps the columns of a table as wide as their contents. A table that grows page by page would
// measure its rows over and over; here only rows that are new are measured, and of those in each
// column only the cell that looks widest.
#pragma once

#include <QFont>
#include <QList>
#include <array>
#include <vector>

class QTreeWidget;
class QTreeWidgetItem;

namespace tarvo::window {

class ColumnWidths {
public:
    // The tree must outlive this; its rows have no children.
    explicit ColumnWidths(QTreeWidget* tree) : m_tree(tree) {}

    // The table was emptied, or has other columns.
    void restart();
    // Takes note of rows that came into the tree. The first ones fit every column; later ones only
    // widen those in which a value is wider than all before, so that widths of the user stay.
    void add(const QList<QTreeWidgetItem*>& rows);
    // Makes a column as wide as its header, if shown, and all cells so far.
    void fit(int column) const;

private:
    int widest(const QList<QTreeWidgetItem*>& rows, int column);
    qreal estimate(const QString& text) const;
    bool readFont();  // whether it is another one than before
    QList<QTreeWidgetItem*> allRows() const;

    QTreeWidget* m_tree;
    std::vector<int> m_contents;          // per column, in pixels; empty: no rows yet
    QFont m_font;                         // of the advances
    std::array<qreal, 128> m_advances{};  // of single characters
};

}  // namespace tarvo::window
