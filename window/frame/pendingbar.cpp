#include "window/frame/pendingbar.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QToolButton>

namespace tarvo::window {

PendingBar::PendingBar(const QList<QAction*>& actions, QWidget* parent) : QWidget(parent) {
    setObjectName("pendingBar");
    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    auto* label = new QLabel(tr("Transaction pending"), this);
    QFont bold = label->font();
    bold.setBold(true);
    label->setFont(bold);
    layout->addWidget(label);
    for (QAction* action : actions) {
        auto* button = new QToolButton(this);
        button->setDefaultAction(action);
        button->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
        button->setAutoRaise(true);
        button->setFocusPolicy(Qt::TabFocus);
        layout->addWidget(button);
    }
    hide();
}

}  // namespace tarvo::window
