// The "Meta Data" tab: the metadata items of the database.
#pragma once

#include "mainwindow/panel.h"

#include <memory>

namespace Ui {
class MetaDataPanel;
}

class MetaDataPanel : public Panel {
    Q_OBJECT

public:
    MetaDataPanel(const DatabaseSession& session, QWidget* parent = nullptr);
    ~MetaDataPanel() override;

    void refresh() override;

private:
    void addRow(const std::string& name);

    std::unique_ptr<Ui::MetaDataPanel> m_ui;
};
