// The "Point Index" tab: the nodes of the point index and the values that they hold.
#pragma once

#include "window/panels/indexrows.h"
#include "window/panels/panel.h"

#include <QList>
#include <memory>

class QTreeWidgetItem;

namespace tarvo::window {

class FilterHelp;

namespace Ui {
class PointIndexPanel;
}

class PointIndexPanel : public Panel {
    Q_OBJECT

public:
    // Larger indexes are shown in part.
    static constexpr int maximumItems = 10000;

    PointIndexPanel(const DatabaseSession& session, QWidget* parent = nullptr);
    ~PointIndexPanel() override;

    // Reads the index as soon as the panel is seen: a large one takes its time.
    void refresh() override;
    QAction* findAction() const override { return m_findAction; }
    // The list of filters used last changed in another panel.
    void refreshHistory();

signals:
    void historyChanged();
    // The points of these nodes should be shown.
    void nodesChosen(const QString& nodes);
    // Another node is selected; 0: none.
    void nodeSelected(quint32 node);

protected:
    void showEvent(QShowEvent* event) override;

private slots:
    void on_actionPointIndexFilterNodes_triggered();
    void on_actionPointIndexStats_triggered();
    void on_actionPointIndexNodeExpand_triggered();
    void on_actionPointIndexNodeCollapse_triggered();
    void on_treePointIndexNodes_itemSelectionChanged();
    void on_treePointIndexNodes_itemDoubleClicked(QTreeWidgetItem* item, int column);
    void on_treePointIndexNodes_itemExpanded(QTreeWidgetItem* item);
    void on_treePointIndexNodes_itemCollapsed(QTreeWidgetItem* item);
    void on_treePointIndexDetails_itemDoubleClicked(QTreeWidgetItem* item, int column);
    void on_treePointIndexDetails_itemExpanded(QTreeWidgetItem* item);
    void on_treePointIndexDetails_itemCollapsed(QTreeWidgetItem* item);
    void onTreePointIndexDetailsSectionClicked(int section);

private:
    void updateActions();
    void refreshFilterHelp();
    void buildTree(const QString& filter);
    WantedNodes wantedNodes(const QString& filter, const qrb::pointcloud::IndexNode& root) const;
    QList<QTreeWidgetItem*> rowsOf(const IndexRows& shown) const;
    void showDetails();
    void resizeNodeColumns();
    void resizeDetailColumns();

    std::unique_ptr<Ui::PointIndexPanel> m_ui;
    QAction* m_findAction = nullptr;
    FilterHelp* m_filterHelp = nullptr;
    std::weak_ptr<qrb::Pointcloud> m_shownDatabase;
    QString m_appliedFilter;       // what the tree shows
    std::uint32_t m_keptNode = 0;  // current before the tree was built anew; 0: none
    bool m_stale = false;          // the tree was not filled since the last refresh
    bool m_cleaned = false;        // details without invalid values
};

}  // namespace tarvo::window
