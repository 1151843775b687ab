#include "core/pointpages.h"

#include <algorithm>
#include <utility>

namespace tarvo::core {

qrb::pointcloud::QuerySelect PointSelection::query(const qrb::Pointcloud& database) const {
    return nodes ? database.select(*nodes, filter) : database.select(filter);
}

std::vector<PointColumn> columnsOf(const qrb::pointcloud::PointAttribute& attribute,
                                   std::uint32_t maximum) {
    const ValueFormat format(attribute);
    std::vector<PointColumn> columns;
    for (std::string& name : elementNames(attribute.name, attribute.length, maximum))
        columns.push_back({attribute.name, std::move(name), format});
    return columns;
}

PointPages::PointPages(const qrb::Pointcloud& database, const PointSelection& selection,
                       std::vector<PointColumn> columns, std::uint32_t pageSize)
    : m_query(selection.query(database)),
      m_columns(std::move(columns)),
      m_pageSize(pageSize),
      m_values(m_columns.size() * pageSize) {
    for (std::size_t i = 0; i < m_columns.size(); ++i)
        m_query.bind(m_columns[i].name, m_columns[i].format.type(), &m_values[i * pageSize],
                     sizeof(std::uint64_t));
}

std::uint32_t PointPages::next(std::uint32_t count) {
    return m_query.next(std::min(count, m_pageSize));
}

}  // namespace tarvo::core
