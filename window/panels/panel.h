// Base of the tabs' contents. A panel owns its form, its actions and the slots behind them. It gets
// the window's session and knows neither the window nor the other panels: state comes down with
// refresh(), wishes go up as signals.
//
// Actions are children of the panel's form, so the form's automatic connection finds their slots
// in the panel. Their names are unique in the program; the window must not have slots for them.
#pragma once

#include "window/common/aside.h"
#include "window/panels/databasesession.h"

#include <QWidget>
#include <functional>

class QAction;

namespace tarvo::window {

class Panel : public QWidget {
    Q_OBJECT

public:
    Panel(const DatabaseSession& session, QWidget* parent) : QWidget(parent), m_session(session) {}

    // Shows the session's database anew; clears the panel while none is open. Throws
    // qrb::Error.
    virtual void refresh() = 0;
    // Puts the keyboard where the panel finds: its search or filter field, or its find bar; null:
    // it has none. The key is the window's to give.
    virtual QAction* findAction() const { return nullptr; }

signals:
    // The panel changed the database, so that every panel has to be refreshed.
    void databaseChanged();
    // A transaction began, and nothing else changed.
    void transactionBegan();
    // What was done, in a line, for a moment.
    void told(const QString& text);

protected:
    // Null: none is open.
    qrb::Pointcloud* database() const { return m_session.database.get(); }
    // Runs the action and shows what it throws; returns whether it threw nothing.
    bool guarded(const std::function<void()>& action);
    // The same for what works with the database and may take its time: on another thread, with a
    // dialog that says what is being done and can cancel it (window/common/aside).
    bool aside(const QString& text, const AsideJob& job);

    // Whether the user may change the database: one is open, and not for reading only.
    bool isChangeable() const { return database() && !m_session.readOnly; }
    // An action of this name for findAction(), which works while the panel is shown. The panel's.
    // toolTip: what it does, in words.
    QAction* addFindAction(const QString& name, const QString& toolTip,
                           const std::function<void()>& find);

    // Whether a transaction is pending in the end. Where none is, one of this title is offered, and
    // its errors are shown.
    bool inTransaction(const QString& title);

    const DatabaseSession& m_session;
};

}  // namespace tarvo::window
