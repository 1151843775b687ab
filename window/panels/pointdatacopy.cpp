// What the points tab copies of what it shows.
#include "ui_pointdatapanel.h"
#include "window/common/clipboard.h"
#include "window/common/messageboxes.h"
#include "window/panels/pointcopy.h"
#include "window/panels/pointdatapanel.h"

#include <QLocale>

namespace tarvo::window {

void PointDataPanel::on_actionQuerySelectCopy_triggered() {
    copyRows(selectedRows(m_ui->treePointData, '\t'), tr("Copied rows of %1 points."));
}

void PointDataPanel::on_actionQuerySelectCopyCsv_triggered() {
    copyRows(selectedRows(m_ui->treePointData, ','), tr("Copied rows of %1 points."));
}

void PointDataPanel::on_actionQuerySelectCopyFilter_triggered() {
    guarded([this] {
        const std::string id =
            database() ? database()->pointAttributes().pointIdName() : std::string();
        copyRows(selectedRowsFilter(m_ui->treePointData, QString::fromStdString(id)),
                 tr("Copied a filter of %1 points."));
    });
}

void PointDataPanel::on_actionQuerySelectCopyColumn_triggered() {
    const auto* tree = m_ui->treePointData;
    const int column = tree->currentColumn();
    if (!tree->currentItem() || column <= 0) {
        showInformation(this, tr("No cell of a column chosen."));
        return;
    }
    copyToClipboard(shownColumn(tree, column));
    emit told(tr("Copied %1 of %2 points.")
                  .arg(m_headers[column], QLocale().toString(tree->topLevelItemCount())));
}

void PointDataPanel::on_actionQuerySelectCopyCellFilter_triggered() {
    const auto* tree = m_ui->treePointData;
    const auto* attribute = attributeOf(tree->currentColumn());
    if (!tree->currentItem() || !attribute) {
        showInformation(this, tr("No cell of a column chosen."));
        return;
    }
    const QString filter = cellFilter(tree->currentItem(), tree->currentColumn(), *attribute);
    if (filter.isEmpty()) {
        showInformation(this, tr("The value is no number that a filter can be compared with."));
        return;
    }
    copyToClipboard(filter);
    emit told(tr("Copied: %1").arg(filter));
}

void PointDataPanel::copyRows(const QString& text, const QString& message) {
    if (text.isEmpty()) {
        showInformation(this, tr("No point selected."));
        return;
    }
    copyToClipboard(text);
    emit told(message.arg(QLocale().toString(m_ui->treePointData->selectedItems().size())));
}

void PointDataPanel::on_treePointData_itemDoubleClicked(QTreeWidgetItem* item, int column) {
    const QVariant cell = item->data(column, Qt::UserRole);
    const QString text = cell.isValid() ? cell.toString() : item->text(column);
    copyToClipboard(text);
    emit told(tr("Copied: %1").arg(text));
}

}  // namespace tarvo::window
