// The "Inspection" tab: a report about the database, written by the library on demand.
#pragma once

#include "window/panels/panel.h"

#include <memory>

class QComboBox;
class QUrl;

namespace tarvo::window {

namespace Ui {
class InspectionPanel;
}

class InspectionPanel : public Panel {
    Q_OBJECT

public:
    InspectionPanel(const DatabaseSession& session, QWidget* parent = nullptr);
    ~InspectionPanel() override;

    // Drops the report, which may no longer be true.
    void refresh() override;
    QAction* findAction() const override { return m_findAction; }

private slots:
    void on_actionInspectionUpdate_triggered();
    void on_textInspectionResult_anchorClicked(const QUrl& link);

private:
    void buildToolBar();

    std::unique_ptr<Ui::InspectionPanel> m_ui;
    QComboBox* m_format = nullptr;
    QAction* m_findAction = nullptr;
};

}  // namespace tarvo::window
