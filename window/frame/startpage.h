// What the window offers while no database is open: to make, open or import one, a sample, and the
// files opened last.
#pragma once

#include <QAction>
#include <QList>
#include <QWidget>

class QVBoxLayout;

namespace tarvo::window {

class StartPage : public QWidget {
    Q_OBJECT

public:
    // A button for each action.
    StartPage(const QList<QAction*>& actions, QWidget* parent);

    // Shows the files opened last anew. Those that are not there can't be chosen.
    void refresh();

signals:
    void chosen(const QString& fileName);

private:
    QVBoxLayout* m_recent;
};

}  // namespace tarvo::window
