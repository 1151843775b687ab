// A bar that finds a text in the cells of a tree.
#pragma once

#include "window/panels/findbar.h"

class QModelIndex;
class QTreeWidget;

namespace tarvo::window {

class FoundCell;

class ListFindBar : public FindBar {
public:
    // As FindBar's. Finds in columns that are shown, and in the rows of collapsed groups, too.
    ListFindBar(QTreeWidget* tree, const QString& hint, QWidget* parent,
                const QString& suffix = {});

protected:
    void search(const QString& text) override;
    std::size_t hitCount() const override { return m_hits.size(); }
    std::size_t firstFromHere() const override;
    std::size_t firstBehindHere() const override;
    void show(std::size_t hit) override;
    void unmark(bool select) override;

private:
    struct Hit {
        int row;  // of all rows, from top to bottom
        int column;
        bool operator<(const Hit& other) const {
            return row != other.row ? row < other.row : column < other.column;
        }
    };

    Hit current() const;
    void mark(const QModelIndex& hit);

    QTreeWidget* m_tree;
    FoundCell* m_mark;
    std::vector<Hit> m_hits;  // in the order of the rows
};

}  // namespace tarvo::window
