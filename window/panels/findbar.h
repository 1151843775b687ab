// A bar that finds a text in the cells of a tree: as it is typed, with a count of the hits and
// buttons to go through them.
#pragma once

#include <QString>
#include <QWidget>
#include <vector>

class QLabel;
class QLineEdit;
class QShortcut;
class QToolButton;
class QTreeWidget;

namespace tarvo::window {

class FoundCell;

class FindBar : public QWidget {
    Q_OBJECT

public:
    // The tree must outlive the bar, which starts hidden. hint: where it finds, in the empty line;
    // suffix: of the names of its parts, which are unique in the program.
    FindBar(QTreeWidget* tree, const QString& hint, QWidget* parent, const QString& suffix = {});

    // For a list to whose panel F3 and Esc mean nothing else: while the bar is shown they work in all
    // of the panel, the bar's parent, and the row that was found is selected when the bar closes.
    void serveList();

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
        int row;  // of all rows, from top to bottom
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
    const QString m_suffix;
    std::vector<QShortcut*> m_listKeys;
    FoundCell* m_mark;
    QLineEdit* m_text;
    QLabel* m_count;
    std::vector<Hit> m_hits;  // in the order of the rows
};

}  // namespace tarvo::window
