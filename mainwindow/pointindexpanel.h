// The "Point Index" tab: the nodes of the point index and the values that they hold.
#pragma once

#include "mainwindow/panel.h"

#include <memory>

namespace Ui {
class PointIndexPanel;
}

class PointIndexPanel : public Panel {
    Q_OBJECT

public:
    PointIndexPanel(const DatabaseSession& session, QWidget* parent = nullptr);
    ~PointIndexPanel() override;

    void refresh() override;

private:
    std::unique_ptr<Ui::PointIndexPanel> m_ui;
};
