// Drives a main window with real events, as a user would.
#pragma once

#include "tests/window/modalscript.h"
#include "window/frame/mainwindow.h"

#include <QString>
#include <QStringList>
#include <QWidget>
#include <vector>

class QHeaderView;
class QTreeWidgetItem;

// The child of this name; ends the program where there is none.
template <typename Widget>
Widget* in(QObject* parent, const char* name) {
    auto* child = parent->findChild<Widget*>(name);
    if (!child)
        qFatal("no child %s", name);
    return child;
}

class WindowDriver {
public:
    explicit WindowDriver(tarvo::window::MainWindow& window) : m_window(window) {}

    template <typename Widget>
    Widget* child(const char* name) const {
        return in<Widget>(&m_window, name);
    }

    void showTab(const char* name) const;
    // Triggers an action while the steps answer the dialogs that it opens, each of which must come.
    // Returns the texts of those that are message boxes.
    QStringList run(const char* action, std::vector<ModalScript::Step> steps) const;
    // Clicks the row of a tree whose first column is the text; null: there is none.
    QTreeWidgetItem* select(const char* tree, const QString& text, bool add = false) const;

private:
    tarvo::window::MainWindow& m_window;
};

// Clicks in the middle of what is seen of a row, which may be wider than its tree, after scrolling
// to it. The double click presses before: the toolkit counts one only where the same cell was
// pressed last.
void clickRow(QTreeWidgetItem* row, Qt::KeyboardModifiers modifiers = {});
void doubleClickRow(QTreeWidgetItem* row);
// Drags in a header, from one place to another.
void dragInHeader(QHeaderView* header, int from, int to);
// Controls that a screen reader can't name.
QStringList namelessControls(QWidget* parent);
// Alt keys that lead to several of the visible controls.
QStringList keysClaimedTwice(QWidget* parent);
