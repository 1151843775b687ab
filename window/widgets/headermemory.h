// Keeps what the user does to a header for the next start, in the program settings: the widths that
// were dragged, by the columns' titles, the places that columns were dragged to, and the order that
// was clicked. Widths that nobody dragged
// are the view's to say; a double click on a border gives one back to it.
#pragma once

#include <QObject>
#include <QString>
#include <QVariantMap>

class QHeaderView;
class QTreeView;

namespace tarvo::window {

class HeaderMemory : public QObject {
    Q_OBJECT

public:
    // Belongs to the view. key: the view's, unique in the program.
    HeaderMemory(QTreeView* view, const QString& key);

    // Sorts the view as the user did last, once after the start; returns whether that is known and
    // the column there.
    bool restoreSort();
    // Has the columns stand where the user dragged them last, and remembers where he drags them; for
    // views whose columns are all there and which nobody else moves.
    void keepColumnOrder();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    QString title(int column) const;
    bool isRest(int column) const;
    void resized(int column, int size);
    void keep() const;
    void restoreColumnOrder();

    QTreeView* m_view;
    QHeaderView* m_header;
    const QString m_key;
    QVariantMap m_widths;
    bool m_isPressed = false;
    bool m_isRestoring = false;
    bool m_isChanged = false;
    bool m_isSorted = false;
};

}  // namespace tarvo::window
