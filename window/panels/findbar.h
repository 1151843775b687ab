// A bar that finds a text in what a panel shows: as it is typed, with a count of the hits and
// buttons to go through them.
#pragma once

#include <QString>
#include <QWidget>
#include <cstddef>
#include <vector>

class QLabel;
class QLineEdit;
class QShortcut;
class QToolButton;

namespace tarvo::window {

class FindBar : public QWidget {
    Q_OBJECT

public:
    // For a panel to which F3 and Esc mean nothing else: while the bar is shown they work in all of
    // the panel, the bar's parent, and what was found is selected when the bar closes.
    void servePanel();

    // Shows the bar and puts the keyboard into it.
    void open();
    // What is shown changed.
    void refresh();

public slots:
    void next();
    void previous();
    void dismiss();

protected:
    // The view that finds must outlive the bar, which starts hidden. hint: where it finds, in the
    // empty line; suffix: of the names of its parts, which are unique in the program.
    FindBar(QWidget* view, const QString& hint, QWidget* parent, const QString& suffix);

    // Looks for the text anew; no hit is marked then, and none is there for an empty text.
    virtual void search(const QString& text) = 0;
    virtual std::size_t hitCount() const = 0;
    // The first hit that does not stand before the current place, and the first behind it; the
    // count where there is none.
    virtual std::size_t firstFromHere() const = 0;
    virtual std::size_t firstBehindHere() const = 0;
    // Makes the hit the current place, marked and seen.
    virtual void show(std::size_t hit) = 0;
    // The bar closes: takes the mark away. select: and leaves what it was on selected.
    virtual void unmark(bool select) = 0;

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    QToolButton* addButton(const QString& name, const QString& icon, const QString& toolTip);
    void searchAgain();
    void showHit(std::size_t hit);
    void updateCount();

    QWidget* m_view;
    const QString m_suffix;
    std::vector<QShortcut*> m_panelKeys;
    QLineEdit* m_text;
    QLabel* m_count;
};

}  // namespace tarvo::window
