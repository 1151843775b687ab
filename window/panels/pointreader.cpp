#include "window/panels/pointreader.h"

#include "window/common/textformat.h"

namespace tarvo::window {

namespace {

std::vector<core::PointColumn> shownColumns(const qrb::Pointcloud& database) {
    std::vector<core::PointColumn> columns;
    for (const std::string& name : database.pointAttributes().list())
        for (core::PointColumn& column :
             core::columnsOf(database.pointAttributes().get(name), mostShownElements))
            columns.push_back(std::move(column));
    return columns;
}

}  // namespace

PointReader::PointReader(const qrb::Pointcloud& database, const core::PointSelection& selection)
    : m_pages(database, selection, shownColumns(database), pageSize) {
    for (const core::PointColumn& column : m_pages.columns())
        m_columns += QString::fromStdString(column.name);
}

QString PointReader::text(std::uint32_t row, int column) const {
    std::string text;
    m_pages.appendText(text, row, static_cast<std::size_t>(column));
    return QString::fromStdString(text);
}

}  // namespace tarvo::window
