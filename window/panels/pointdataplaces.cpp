// The points tab and the view: where its rows' points lie, and which row is a point's.
#include "ui_pointdatapanel.h"
#include "window/panels/pointdatapanel.h"
#include "window/panels/pointrow.h"

#include <QItemSelectionModel>

namespace tarvo::window {

namespace {

constexpr int mostPlaces = 50'000;

// None where a text is no number.
std::optional<PointDataPanel::Place> placeOf(const QTreeWidgetItem* row,
                                             const std::vector<int>& columns) {
    PointDataPanel::Place place{};
    for (std::size_t i = 0; i < columns.size(); ++i) {
        bool isNumber = false;
        place[i] = static_cast<const PointRow*>(row)->value(columns[i]).toDouble(&isNumber);
        if (!isNumber)
            return std::nullopt;
    }
    return place;
}

}  // namespace

// Empty where one of them was not read.
std::vector<int> PointDataPanel::placeColumns() const {
    std::vector<int> columns;
    if (!database() || m_headers.isEmpty())
        return columns;
    const auto& attributes = database()->pointAttributes();
    const std::string name = attributes.primaryAttributeName();
    const std::uint32_t length = attributes.get(name).length;
    for (std::uint32_t i = 0; i < std::min<std::uint32_t>(length, 3); ++i) {
        const auto column =
            m_headers.indexOf(QString("%1[%2]").arg(QString::fromStdString(name)).arg(i));
        if (column < 0)
            return {};
        columns.push_back(static_cast<int>(column));
    }
    return columns.size() < 2 ? std::vector<int>() : columns;
}

std::optional<PointDataPanel::Place> PointDataPanel::currentPlace() const {
    const auto* current = m_ui->treePointData->currentItem();
    const auto columns = placeColumns();
    return current && !columns.empty() ? placeOf(current, columns) : std::nullopt;
}

std::vector<PointDataPanel::Place> PointDataPanel::selectedPlaces() const {
    std::vector<Place> places;
    const auto columns = placeColumns();
    if (columns.empty())
        return places;
    const QItemSelection selection = m_ui->treePointData->selectionModel()->selection();
    qint64 rows = 0;
    for (const QItemSelectionRange& range : selection)
        rows += range.height();
    const int every = static_cast<int>(rows / mostPlaces) + 1;
    for (const QItemSelectionRange& range : selection)
        for (int row = range.top(); row <= range.bottom(); row += every)
            if (const auto place = placeOf(m_ui->treePointData->topLevelItem(row), columns))
                places.push_back(*place);
    return places;
}

void PointDataPanel::showPointOf(std::uint64_t id) {
    if (m_idColumn < 0)
        return;
    const QString wanted = QString::number(id);
    auto* tree = m_ui->treePointData;
    for (int i = 0; i < tree->topLevelItemCount(); ++i) {
        QTreeWidgetItem* row = tree->topLevelItem(i);
        if (static_cast<const PointRow*>(row)->value(m_idColumn) != wanted)
            continue;
        tree->setCurrentItem(row);
        tree->scrollToItem(row);
        return;
    }
}

void PointDataPanel::takeFilter(const QString& filter) {
    m_ui->actionQuerySelectCancel->trigger();
    m_ui->PointDataFilter->setEditText(filter);
    m_ui->editPointDataNodes->clear();
    emit shown();
}

}  // namespace tarvo::window
