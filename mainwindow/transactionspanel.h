// The "Transactions" tab: the kept transactions of the database.
#pragma once

#include "mainwindow/panel.h"

#include <memory>

namespace Ui {
class TransactionsPanel;
}

class TransactionsPanel : public Panel {
    Q_OBJECT

public:
    TransactionsPanel(const DatabaseSession& session, QWidget* parent = nullptr);
    ~TransactionsPanel() override;

    void refresh() override;

private:
    void buildToolBar();
    void addRow(std::uint32_t id, std::uint32_t current);

    std::unique_ptr<Ui::TransactionsPanel> m_ui;
};
