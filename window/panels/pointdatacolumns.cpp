// How the points tab shows what was read: the choice and order of columns, names of values, and the
// values of one point.
#include "ui_pointdatapanel.h"
#include "window/common/programsettings.h"
#include "window/common/textformat.h"
#include "window/panels/findbar.h"
#include "window/panels/pointdatapanel.h"
#include "window/panels/pointrow.h"
#include "window/panels/valuenames.h"
#include "window/widgets/headermemory.h"

#include <QAbstractItemModel>
#include <QHeaderView>
#include <QScopedValueRollback>

namespace tarvo::window {

namespace {

const char* const namesKey = "ShowValueNames";
const char* const valuesKey = "ShowPointValues";

// The groups whose attributes "Show default" shows.
const QStringList& defaultGroups() {
    static const QStringList groups = {"Coordinates/Vectors", "Time", "Primary Attributes"};
    return groups;
}

}  // namespace

void PointDataPanel::setUpColumns() {
    m_columns = PointColumns(m_ui->listPointAttributes);
    m_ui->listPointAttributes->setDragDropMode(QAbstractItemView::InternalMove);
    m_ui->listPointAttributes->setMovement(QListView::Static);
    m_ui->listPointAttributes->setDragEnabled(true);
    connect(m_ui->listPointAttributes->model(), &QAbstractItemModel::rowsMoved, this, [this] {
        if (!m_columns.isBusy())
            columnsChanged();
    });
}

void PointDataPanel::setUpMemory() {
    auto* tree = m_ui->treePointData;
    m_headerMemory = new HeaderMemory(tree, tree->objectName());
    // The number of the row stays in front.
    tree->header()->setFirstSectionMovable(false);
    connect(tree->header(), &QHeaderView::sectionMoved, this, [this](int column) {
        if (m_isMovingColumns)
            return;
        m_columns.takeOrder(m_ui->treePointData, column);
        columnsChanged();
    });
    const ProgramSettings settings;
    m_ui->actionPointNames->setChecked(settings.value(namesKey, false).toBool());
    m_ui->actionPointValues->setChecked(settings.value(valuesKey, false).toBool());
    m_ui->treePointValues->setVisible(m_ui->actionPointValues->isChecked());
}

void PointDataPanel::on_listPointAttributes_itemChanged(QListWidgetItem*) {
    if (!m_columns.isBusy())
        columnsChanged();
}

void PointDataPanel::on_listPointAttributes_itemSelectionChanged() {
    updateActions();
}

void PointDataPanel::on_editColumnSearch_textChanged(const QString& text) {
    m_columns.search(text);
}

void PointDataPanel::on_actionColumnsShow_triggered() {
    m_columns.setSelectedShown(true);
    columnsChanged();
}

void PointDataPanel::on_actionColumnsHide_triggered() {
    m_columns.setSelectedShown(false);
    columnsChanged();
}

void PointDataPanel::on_actionColumnsShowAll_triggered() {
    m_columns.setAllShown(true);
    columnsChanged();
}

void PointDataPanel::on_actionColumnsHideAll_triggered() {
    m_columns.setAllShown(false);
    columnsChanged();
}

void PointDataPanel::on_actionColumnsShowDefault_triggered() {
    if (!database())
        return;
    guarded([&] {
        const auto& attributes = database()->pointAttributes();
        const std::string id = attributes.pointIdName();
        QStringList names;
        for (const auto& attribute : m_attributes) {
            if (attribute.name == id || defaultGroups().contains(QString::fromStdString(
                                            attributes.group(attribute.name).name)))
                names += QString::fromStdString(attribute.name);
        }
        m_columns.setShown(names);
        columnsChanged();
    });
}

void PointDataPanel::on_actionColumnsSortByName_triggered() {
    m_columns.sortByName();
    columnsChanged();
}

void PointDataPanel::on_actionColumnsSortDefault_triggered() {
    QStringList order;
    for (const auto& attribute : m_attributes)
        order += QString::fromStdString(attribute.name);
    m_columns.sort(order);
    columnsChanged();
}

void PointDataPanel::columnsChanged() {
    m_columns.save();
    QMetaObject::invokeMethod(this, "onUpdatePointDataColumnsLater", Qt::QueuedConnection);
}

void PointDataPanel::onUpdatePointDataColumnsLater() {
    if (m_columns.isBusy())
        return;
    applyColumns();
    m_findBar->refresh();
}

void PointDataPanel::applyColumns() {
    const QScopedValueRollback moving(m_isMovingColumns, true);
    m_columns.apply(m_ui->treePointData);
    for (int column = 1; column < m_ui->treePointData->columnCount(); ++column)
        m_widths.fit(column);
}

void PointDataPanel::on_actionPointNames_toggled(bool on) {
    ProgramSettings().setValue(namesKey, on);
    if (!m_names)
        return;
    m_names->setShown(on);
    QList<QTreeWidgetItem*> rows;
    for (int row = 0; row < m_ui->treePointData->topLevelItemCount(); ++row)
        rows += m_ui->treePointData->topLevelItem(row);
    m_widths.restart();
    m_widths.add(rows);
    m_ui->treePointData->viewport()->update();
    m_findBar->refresh();
}

void PointDataPanel::on_actionPointValues_toggled(bool on) {
    ProgramSettings().setValue(valuesKey, on);
    m_ui->treePointValues->setVisible(on);
    showPoint();
}

void PointDataPanel::showHeaders() {
    auto* tree = m_ui->treePointData;
    tree->setColumnCount(static_cast<int>(m_headers.size()));
    tree->setHeaderLabels(m_headers);
    for (int column = 0; column < m_headers.size(); ++column) {
        tree->headerItem()->setTextAlignment(column, PointRow::alignmentOf(column));
        QString toolTip;
        if (const auto* attribute = attributeOf(column)) {
            toolTip = QString::fromStdString(attribute->title);
            if (!attribute->unitSymbol.empty())
                toolTip += '\n' + tr("Unit: %1").arg(QString::fromStdString(attribute->unitSymbol));
        }
        tree->headerItem()->setToolTip(column, plainToolTip(toolTip));
    }
    m_ui->treePointValues->setColumns(m_headers, m_attributes);
}

void PointDataPanel::showPoint() {
    if (m_names && m_ui->actionPointValues->isChecked())
        m_ui->treePointValues->show(
            static_cast<const PointRow*>(m_ui->treePointData->currentItem()), *m_names);
}

void PointDataPanel::on_treePointData_currentItemChanged(QTreeWidgetItem*, QTreeWidgetItem*) {
    showPoint();
    emit currentPointChanged();
}

}  // namespace tarvo::window
