// The "Transactions" tab: the kept transactions of the database.
#pragma once

#include "window/panels/panel.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <vector>

class QToolButton;
class QTreeWidgetItem;

namespace tarvo::window {

class FindBar;
class HeaderMemory;

namespace Ui {
class TransactionsPanel;
}

class TransactionsPanel : public Panel {
    Q_OBJECT

public:
    TransactionsPanel(const DatabaseSession& session, QWidget* parent = nullptr);
    ~TransactionsPanel() override;

    void refresh() override;
    QAction* findAction() const override { return m_findAction; }
    // "Commit" and "Rollback", of the pending transaction.
    QList<QAction*> pendingActions() const;

signals:
    // The database can't be changed any more, because its file is not the one that was opened.
    void fileLost();

private slots:
    void on_treeTransactions_itemDoubleClicked(QTreeWidgetItem* item, int column);
    void on_treeTransactions_itemSelectionChanged();
    void on_actionTransactionBegin_triggered();
    void on_actionTransactionCommit_triggered();
    void on_actionTransactionRollback_triggered();
    void on_actionTransactionRestore_triggered();
    void on_actionTransactionDiscard_triggered();
    void on_actionTransactionSize_triggered();
    void on_actionTransactionCompare_triggered();
    void on_actionManagementLevelOfDetail_triggered();
    void on_actionManagementFinalize_triggered();
    void on_actionManagementVacuum_triggered();

private:
    void buildToolBar();
    void addRow(std::uint32_t id, std::uint32_t current);
    void updateActions();
    // Whether changes would reach the file, and its name leads to it; has the window tell where
    // they would not.
    bool canChangeFile();
    // Tells the user when no row is selected.
    std::vector<std::uint32_t> selectedIds();
    // What a question adds on the space of transactions that are to be deleted.
    QString spaceOf(const std::vector<std::uint32_t>& ids);
    // Runs the change under the wait cursor and has everything refreshed.
    void change(const QString& text, const AsideJob& action);

    std::unique_ptr<Ui::TransactionsPanel> m_ui;
    QToolButton* m_deleteButton = nullptr;
    HeaderMemory* m_headerMemory = nullptr;
    FindBar* m_findBar = nullptr;
    QAction* m_findAction = nullptr;
    bool m_pending = false;
};

}  // namespace tarvo::window
