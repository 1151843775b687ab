#include "window/panels/panel.h"

#include "window/common/guard.h"
#include "window/common/messageboxes.h"
#include "window/common/textformat.h"

#include <QAction>

namespace tarvo::window {

bool Panel::guarded(const std::function<void()>& action) {
    return window::guarded(this, action);
}

bool Panel::aside(const QString& text, const AsideJob& job) {
    return guarded([&] { workAside(this, text, m_session.context, job); });
}

QAction* Panel::addFindAction(const QString& name, const QString& toolTip,
                              const std::function<void()>& find) {
    auto* action = new QAction(tr("Find"), this);
    action->setObjectName(name);
    action->setToolTip("<html><body><p>" + toolTip + "</p></body></html>");
    connect(action, &QAction::triggered, this, find);
    addAction(action);
    return action;
}

bool Panel::inTransaction(const QString& title) {
    bool pending = false;
    if (!database() || !guarded([&] { pending = database()->transactions().pending(); }))
        return false;
    if (pending)
        return true;
    if (m_session.readOnly) {
        showWarning(this, tr("The database was opened for reading only.\n"
                             "Open it again with \"Open ...\" to change it."));
        return false;
    }
    if (!confirmed(this, tr("No transaction is pending.\n"
                            "Begin the transaction \"%1\" and go on?")
                             .arg(title)))
        return false;
    const bool began = aside(tr("Beginning a transaction..."), [&](const StepProgress&) {
        database()->transactions().begin(title.toStdString(), transactionAgentText().toStdString(),
                                         "", "");
    });
    if (began)
        emit transactionBegan();
    return began;
}

}  // namespace tarvo::window
