// A bar that finds a text in the cells of a tree's top-level rows: as it is typed, with a count of
// the hits and buttons to go through them.
#pragma once

#include <QString>
#include <QWidget>
#include <vector>

class QLabel;
class QLineEdit;
class QToolButton;
class QTreeWidget;

namespace tarvo::window {

class FoundCell;

class FindBar : public QWidget {
    Q_OBJECT

public:
    // The tree must outlive the bar, which starts hidden.
    FindBar(QTreeWidget* tree, QWidget* parent);

    // Shows the bar and puts the keyboard into it.
    void open();
    // The rows or columns shown changed.
    void refresh();

public slots:
    void next();
    void previous();
    void dismiss();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    struct Hit {
        int row;
        int column;
        bool operator<(const Hit& other) const {
            return row != other.row ? row < other.row : column < other.column;
        }
    };

    QToolButton* addButton(const QString& name, const QString& icon, const QString& toolTip);
    void search();
    Hit current() const;
    void show(std::size_t hit);
    void updateCount();

    void mark(const QModelIndex& hit);

    QTreeWidget* m_tree;
    FoundCell* m_mark;
    QLineEdit* m_text;
    QLabel* m_count;
    std::vector<Hit> m_hits;  // in the order of the rows
};

}  // namespace tarvo::window
