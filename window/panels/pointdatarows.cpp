// The rows of the points tab: how they come and go, which stay selected, and what is told of them.
#include "ui_pointdatapanel.h"
#include "window/common/messageboxes.h"
#include "window/common/textformat.h"
#include "window/panels/findbar.h"
#include "window/panels/pointdatapanel.h"
#include "window/panels/pointrow.h"
#include "window/widgets/headermemory.h"

#include <QScopedValueRollback>
#include <QThreadPool>

namespace tarvo::window {

namespace {

// What a query's way through the index was.
QString wayOf(const qrb::pointcloud::NodesPassed& nodes) {
    return QObject::tr(
               "Nodes of the index so far: %1 skipped, %2 taken whole, %3 read point by "
               "point")
        .arg(grouped(nodes.skipped), grouped(nodes.whole), grouped(nodes.read));
}

}  // namespace

// Many rows take long to be deleted, which nobody has to wait for.
void PointDataPanel::dropRows() {
    const QScopedValueRollback filling(m_isFilling, true);
    const auto rows = m_ui->treePointData->invisibleRootItem()->takeChildren();
    if (!rows.isEmpty())
        QThreadPool::globalInstance()->start([rows] { qDeleteAll(rows); });
}

// For rows that come again, later: what is selected then is selected beside them.
void PointDataPanel::keepSelection() {
    const auto selected = m_ui->treePointData->selectedItems();
    if (m_idColumn < 0 || selected.isEmpty())
        return;
    m_keptIds.clear();
    for (const QTreeWidgetItem* row : selected)
        m_keptIds += static_cast<const PointRow*>(row)->value(m_idColumn);
}

void PointDataPanel::showRows(const Rows& rows) {
    if (rows.texts.empty()) {
        tellRows(rows, 0);
        m_ui->actionQuerySelectCancel->setEnabled(true);
        m_ui->actionQuerySelectCancel->trigger();
        showInformation(this, tr("No data received."));
        return;
    }
    appendRows(rows.texts);
    tellRows(rows, rows.texts.size());
}

// shown: how many of them are in the table now.
void PointDataPanel::tellRows(const Rows& rows, std::size_t shown) {
    m_ui->labelPointData->setText(tr("%0 ms").arg(rows.milliseconds));
    m_ui->labelPointRows->setToolTip(rows.nodes ? wayOf(*rows.nodes) : QString());
    if (shown == 0)
        return;
    m_rowCounter += shown;
    m_ui->progressPointData->setValue(static_cast<int>(m_reader->progress()));
    m_findBar->refresh();
    if (rows.isEnd && shown == rows.texts.size())
        m_counted = {m_runningFilter, m_runningNodes, m_rowCounter};
    else if (rows.total)
        m_counted = {m_runningFilter, m_runningNodes, *rows.total};
    showCounter();
}

bool PointDataPanel::isOfSelection(const Counted& counted) const {
    return counted.points && counted.filter == filterText() && counted.nodes == nodesText();
}

// Which points are shown, and of how many, where that is known.
void PointDataPanel::showCounter() {
    QString text;
    if (m_rowCounter > 0) {
        text = QString("1\u2013%1").arg(grouped(m_rowCounter));
        const bool isKnown = m_counted.points && m_counted.filter == m_runningFilter &&
                             m_counted.nodes == m_runningNodes;
        if (isKnown)
            text = tr("%1 of %2").arg(text, grouped(*m_counted.points));
        if (m_reader && !(isKnown && *m_counted.points == m_rowCounter))
            text = tr("%1 (more with F3, 1,000 more with Shift+F3, all with Ctrl+F3)").arg(text);
    }
    m_ui->labelPointRows->setText(text);
    if (text.isEmpty())
        m_ui->labelPointRows->setToolTip({});
}

void PointDataPanel::appendRows(const std::vector<QStringList>& texts) {
    QTreeWidget* tree = m_ui->treePointData;
    const bool isFirst = tree->topLevelItemCount() == 0;
    // Sorted once, not row by row.
    tree->setSortingEnabled(false);
    const auto rows = addRows(texts);
    tree->setSortingEnabled(true);
    // Headers have room for the mark of sorting only now.
    {
        const QScopedValueRollback moving(m_isMovingColumns, true);
        m_columns.apply(tree);
    }
    m_widths.add(rows);
    m_headerMemory->restoreSort();
    selectKept(rows);
    if (!isFirst)
        tree->scrollToItem(rows.first(), QAbstractItemView::PositionAtTop);
}

QList<QTreeWidgetItem*> PointDataPanel::addRows(std::span<const QStringList> texts) {
    QList<QTreeWidgetItem*> rows;
    for (const QStringList& row : texts)
        rows += new PointRow(row, m_headers, m_names);
    m_ui->treePointData->addTopLevelItems(rows);
    return rows;
}

void PointDataPanel::selectKept(const QList<QTreeWidgetItem*>& rows) {
    if (m_keptIds.isEmpty() || m_idColumn < 0)
        return;
    const QScopedValueRollback filling(m_isFilling, true);
    for (QTreeWidgetItem* row : rows)
        if (m_keptIds.contains(static_cast<const PointRow*>(row)->value(m_idColumn)))
            row->setSelected(true);
}

void PointDataPanel::on_treePointData_itemSelectionChanged() {
    // What the user selects himself is all that he wants.
    if (!m_isFilling)
        m_keptIds.clear();
}

}  // namespace tarvo::window
