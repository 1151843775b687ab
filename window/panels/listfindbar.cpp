#include "window/panels/listfindbar.h"

#include <QItemSelectionModel>
#include <QPersistentModelIndex>
#include <QStyledItemDelegate>
#include <QTreeWidget>
#include <QTreeWidgetItemIterator>
#include <algorithm>

namespace tarvo::window {

// Draws the cell that was found as what is selected, and not its whole row.
class FoundCell : public QStyledItemDelegate {
public:
    using QStyledItemDelegate::QStyledItemDelegate;

    QPersistentModelIndex cell;

protected:
    void initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const override {
        QStyledItemDelegate::initStyleOption(option, index);
        if (cell.isValid() && index == cell)
            option->state |= QStyle::State_Selected;
    }
};

namespace {

// Those of collapsed groups, too.
std::vector<QTreeWidgetItem*> rowsOf(QTreeWidget* tree) {
    std::vector<QTreeWidgetItem*> rows;
    for (QTreeWidgetItemIterator row(tree); *row; ++row)
        rows.push_back(*row);
    return rows;
}

}  // namespace

ListFindBar::ListFindBar(QTreeWidget* tree, const QString& hint, QWidget* parent,
                         const QString& suffix)
    : FindBar(tree, hint, parent, suffix), m_tree(tree), m_mark(new FoundCell(tree)) {
    m_tree->setItemDelegate(m_mark);
    // What the user selects himself is marked as ever.
    connect(m_tree->selectionModel(), &QItemSelectionModel::selectionChanged, this,
            [this](const QItemSelection& selected) {
                if (!selected.isEmpty())
                    mark({});
            });
}

void ListFindBar::mark(const QModelIndex& hit) {
    m_mark->cell = hit;
    m_tree->viewport()->update();
}

void ListFindBar::unmark(bool select) {
    if (select && m_mark->cell.isValid())
        m_tree->setCurrentIndex(m_mark->cell);
    mark({});
}

void ListFindBar::search(const QString& text) {
    mark({});
    m_hits.clear();
    if (text.isEmpty())
        return;
    int number = 0;
    for (const QTreeWidgetItem* row : rowsOf(m_tree)) {
        for (int column = 0; column < m_tree->columnCount(); ++column)
            if (!m_tree->isColumnHidden(column) &&
                row->text(column).contains(text, Qt::CaseInsensitive))
                m_hits.push_back({number, column});
        ++number;
    }
}

ListFindBar::Hit ListFindBar::current() const {
    const QTreeWidgetItem* item = m_tree->currentItem();
    if (!item)
        return {-1, 0};
    const auto rows = rowsOf(m_tree);
    const auto at = std::find(rows.begin(), rows.end(), item);
    return {static_cast<int>(at - rows.begin()), std::max(m_tree->currentColumn(), 0)};
}

std::size_t ListFindBar::firstFromHere() const {
    return static_cast<std::size_t>(std::lower_bound(m_hits.begin(), m_hits.end(), current()) -
                                    m_hits.begin());
}

std::size_t ListFindBar::firstBehindHere() const {
    return static_cast<std::size_t>(std::upper_bound(m_hits.begin(), m_hits.end(), current()) -
                                    m_hits.begin());
}

void ListFindBar::show(std::size_t hit) {
    m_tree->clearSelection();
    const auto row = static_cast<std::size_t>(m_hits[hit].row);
    m_tree->setCurrentItem(rowsOf(m_tree).at(row), m_hits[hit].column,
                           QItemSelectionModel::NoUpdate);
    m_tree->scrollTo(m_tree->currentIndex());
    mark(m_tree->currentIndex());
}

}  // namespace tarvo::window
