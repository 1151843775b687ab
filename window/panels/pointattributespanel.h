// The "Point Attributes" tab: the attribute definitions of the database in their groups.
#pragma once

#include "qrb/pointattribute.h"
#include "window/panels/panel.h"

#include <QMap>
#include <memory>
#include <string>
#include <vector>

class QTreeWidgetItem;

namespace tarvo::window {

class FindBar;
class HeaderMemory;

namespace Ui {
class PointAttributesPanel;
}

class PointAttributesPanel : public Panel {
    Q_OBJECT

public:
    PointAttributesPanel(const DatabaseSession& session, QWidget* parent = nullptr);
    ~PointAttributesPanel() override;

    void refresh() override;
    QAction* findAction() const override;

private slots:
    void on_treePointAttributes_itemExpanded(QTreeWidgetItem* item);
    void on_treePointAttributes_itemCollapsed(QTreeWidgetItem* item);
    void on_treePointAttributes_itemSelectionChanged();
    void on_treePointAttributes_itemDoubleClicked(QTreeWidgetItem* item, int column);
    void on_actionPointAttributeAdd_triggered();
    void on_actionPointAttributeEdit_triggered();
    void on_actionPointAttributeRemove_triggered();
    void on_actionPointAttributeFind_triggered();
    void onTreePointAttributesColumnClicked(int column);

private:
    QTreeWidgetItem* groupRow(const QString& name);
    std::vector<std::string> selectedAttributes() const;
    void selectAttribute(const std::string& name);
    void selectAttributes(const std::vector<std::string>& names);
    void addAttribute();
    void editAttribute(const std::string& name);
    // Whether the values that points have may change as the new definition demands; asks only where
    // some do.
    bool mayWriteOver(const qrb::pointcloud::PointAttribute& read);
    bool conversionAgreed(const qrb::pointcloud::PointAttribute& stored,
                          const qrb::pointcloud::PointAttribute& attribute);
    // Writes the record, tells the others and shows it; false where the library refused it and the
    // user was told so.
    bool write(const qrb::pointcloud::PointAttribute& attribute, bool isNew);
    void readGroupStates();
    void keepGroupState(const QTreeWidgetItem* item, bool expanded);

    std::unique_ptr<Ui::PointAttributesPanel> m_ui;
    HeaderMemory* m_headerMemory = nullptr;
    FindBar* m_findBar = nullptr;
    QMap<QString, bool> m_groupExpanded;  // by group name; without an entry: expanded
};

}  // namespace tarvo::window
