// The "Point Data" tab: points read page by page through a filter expression and a list of nodes.
#pragma once

#include "window/panels/panel.h"
#include "window/panels/pointcolumns.h"
#include "window/panels/pointreader.h"
#include "window/widgets/columnwidths.h"

#include <QSet>
#include <QStringList>
#include <array>
#include <memory>
#include <optional>
#include <span>

class QListWidgetItem;
class QTreeWidgetItem;

namespace tarvo::window {

class FilterHelp;
class FindBar;
class HeaderMemory;
class ValueNames;

namespace Ui {
class PointDataPanel;
}

class PointDataPanel : public Panel {
    Q_OBJECT

public:
    PointDataPanel(const DatabaseSession& session, QWidget* parent = nullptr);
    ~PointDataPanel() override;

    // Fills the column chooser and the insert menu anew. The rows stay unless another database
    // was opened or none is open.
    void refresh() override;
    bool isQueryRunning() const { return m_reader != nullptr; }
    // Ends the running query and shows the points of these nodes.
    void showNodes(const QString& nodes);
    // The list of filters used last changed in another panel.
    void refreshHistory();

    // What the user typed, whether or not it makes sense.
    QString filterText() const;
    QString nodesText() const;
    // Ends the running query and takes the filter, for all nodes; it is not run yet.
    void takeFilter(const QString& filter);

    // The first three elements of a point's primary attribute; of two the third is 0.
    using Place = std::array<double, 3>;
    // Of the current row; none where there is none, or its columns were not read.
    std::optional<Place> currentPlace() const;
    // Of the rows that are selected; of very many an even part.
    std::vector<Place> selectedPlaces() const;
    // Makes the point's row the current one, if it is shown.
    void showPointOf(std::uint64_t id);

    QAction* findAction() const override;
    QAction* runAction() const;
    QAction* cancelAction() const;

signals:
    void historyChanged();
    // A query began.
    void filterRun(const QString& filter);
    // Another row is the current one, or none.
    void currentPointChanged();
    // The tab should come to the front.
    void shown();

private slots:
    void on_actionQuerySelectNext_triggered();
    void on_actionQuerySelectMore_triggered();
    void on_actionQuerySelectAll_triggered();
    void on_actionQuerySelectCancel_triggered();
    void on_actionQuerySelectCopy_triggered();
    void on_actionQuerySelectCopyCsv_triggered();
    void on_actionQuerySelectCopyFilter_triggered();
    void on_actionQuerySelectCopyColumn_triggered();
    void on_actionQuerySelectCopyCellFilter_triggered();
    void on_actionPointNames_toggled(bool on);
    void on_actionPointValues_toggled(bool on);
    void on_editColumnSearch_textChanged(const QString& text);
    void on_treePointData_currentItemChanged(QTreeWidgetItem* current, QTreeWidgetItem* previous);
    void on_treePointData_itemSelectionChanged();
    void on_actionQuerySelectCount_triggered();
    void on_actionQuerySelectFind_triggered();
    void on_actionQuerySelectExport_triggered();
    void on_actionQuerySelectExportPoints_triggered();
    void on_treePointData_itemDoubleClicked(QTreeWidgetItem* item, int column);
    void on_listPointAttributes_itemChanged(QListWidgetItem* item);
    void on_listPointAttributes_itemSelectionChanged();
    void on_actionColumnsShow_triggered();
    void on_actionColumnsHide_triggered();
    void on_actionColumnsShowAll_triggered();
    void on_actionColumnsHideAll_triggered();
    void on_actionColumnsShowDefault_triggered();
    void on_actionColumnsSortByName_triggered();
    void on_actionColumnsSortDefault_triggered();
    void onPointDataSelectionEdited();
    void onUpdatePointDataColumnsLater();

private:
    void setUpFilter();
    void setUpColumns();
    void setUpMemory();
    void clear();
    void dropRows();
    void refreshAttributes();
    void updateActions();
    void columnsChanged();
    void applyColumns();
    void showHeaders();
    void showPoint();
    std::vector<int> placeColumns() const;
    void keepSelection();
    const qrb::pointcloud::PointAttribute* attributeOf(int column) const;

    // What a reading brought.
    struct Rows {
        std::vector<QStringList> texts;      // with the row's number
        bool isEnd = false;                  // nothing is left
        std::optional<std::uint64_t> total;  // of the selection, where it was asked for
        std::optional<qrb::pointcloud::NodesPassed> nodes;
        qint64 milliseconds = 0;
    };
    // How many points a selection has.
    struct Counted {
        QString filter, nodes;
        std::optional<std::uint64_t> points;
    };

    core::PointSelection selection();
    void read(int pages);
    Rows firstRows(int pages);  // starts a query
    Rows nextRows(int pages);
    // before: rows that are there already. What throws leaves what was read until then.
    static void readRows(Rows& rows, PointReader& reader, int pages, std::uint64_t before,
                         const StepProgress& progress);
    void showRows(const Rows& rows);
    void tellRows(const Rows& rows, std::size_t shown);
    void appendRows(const std::vector<QStringList>& texts);
    QList<QTreeWidgetItem*> addRows(std::span<const QStringList> texts);
    void selectKept(const QList<QTreeWidgetItem*>& rows);
    std::uint64_t countPoints();
    void readAll();
    void readRest(std::uint64_t points);
    // Returns whether all are shown: Esc leaves those that are.
    bool showInSteps(const Rows& rows);
    bool isOfSelection(const Counted& counted) const;
    void showCounter();
    void copyRows(const QString& text, const QString& message);

    std::unique_ptr<Ui::PointDataPanel> m_ui;
    FilterHelp* m_filterHelp = nullptr;
    FindBar* m_findBar = nullptr;
    PointColumns m_columns;
    ColumnWidths m_widths;
    std::vector<qrb::pointcloud::PointAttribute> m_attributes;
    std::weak_ptr<qrb::Pointcloud> m_shownDatabase;

    std::unique_ptr<PointReader> m_reader;  // null: no query is running
    QStringList m_headers;                  // of its table
    std::shared_ptr<ValueNames> m_names;    // of its values
    int m_idColumn = -1;                    // of its ids; -1: none
    QString m_runningFilter;
    QString m_runningNodes;
    Counted m_counted;               // what was counted last
    std::uint64_t m_rowCounter = 0;  // points shown so far

    HeaderMemory* m_headerMemory = nullptr;
    bool m_isMovingColumns = false;  // by the program
    bool m_isFilling = false;        // rows come and go by the program
    QSet<QString> m_keptIds;         // of the points that were selected before
    QString m_shownFile;
};

}  // namespace tarvo::window
