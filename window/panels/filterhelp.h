// What helps with the filter field of a panel: it completes names and values, fills the menu that
// inserts and keeps filters, and checks what was typed a moment after the last key.
#pragma once

#include "window/panels/databasesession.h"

#include <QObject>
#include <QTimer>
#include <vector>

class QComboBox;
class QLabel;
class QToolButton;

namespace tarvo::window {

class FilterCompletion;
class FilterInsertMenu;

class FilterHelp : public QObject {
    Q_OBJECT

public:
    enum class Kind { POINTS, NODES };  // of nodes: lists of their ids are taken, too

    // The widgets and the session must outlive it. finding: tells what is wrong; hidden where
    // nothing is.
    FilterHelp(const DatabaseSession& session, Kind kind, QComboBox* filter, QToolButton* button,
               QLabel* finding);

    // The database's, which may be another one: the text is checked against them anew.
    void setAttributes(const std::vector<qrb::pointcloud::PointAttribute>& attributes);

signals:
    void historyCleared();

private:
    void setUpField();
    void check();
    void checkText(const QString& text) const;
    void show(const QString& finding, qsizetype begin, qsizetype length);

    const DatabaseSession& m_session;
    const Kind m_kind;
    QComboBox* m_filter;
    QLabel* m_finding;
    FilterInsertMenu* m_menu;
    FilterCompletion* m_completion;
    QTimer m_pause;
};

}  // namespace tarvo::window
