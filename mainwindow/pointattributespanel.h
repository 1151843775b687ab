// The "Point Attributes" tab: the attribute definitions of the database in their groups.
#pragma once

#include "mainwindow/panel.h"

#include <QMap>
#include <memory>
#include <string>
#include <vector>

class QTreeWidgetItem;

namespace Ui {
class PointAttributesPanel;
}

class PointAttributesPanel : public Panel {
    Q_OBJECT

public:
    PointAttributesPanel(const DatabaseSession& session, QWidget* parent = nullptr);
    ~PointAttributesPanel() override;

    void refresh() override;

private slots:
    void on_treePointAttributes_itemExpanded(QTreeWidgetItem* item);
    void on_treePointAttributes_itemCollapsed(QTreeWidgetItem* item);
    void on_treePointAttributes_itemSelectionChanged();
    void on_actionPointAttributeRemove_triggered();
    void onTreePointAttributesColumnClicked(int column);

private:
    QTreeWidgetItem* groupRow(const QString& name);
    std::vector<std::string> selectedAttributes() const;
    void readGroupStates();
    void keepGroupState(const QTreeWidgetItem* item, bool expanded);

    std::unique_ptr<Ui::PointAttributesPanel> m_ui;
    QMap<QString, bool> m_groupExpanded;  // by group name; without an entry: expanded
};
