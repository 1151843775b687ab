// Tells, beside the status of the window, that a transaction is pending, and offers what ends it.
#pragma once

#include <QAction>
#include <QList>
#include <QWidget>

namespace tarvo::window {

class PendingBar : public QWidget {
    Q_OBJECT

public:
    // A button for each action; hidden at first.
    PendingBar(const QList<QAction*>& actions, QWidget* parent);
};

}  // namespace tarvo::window
