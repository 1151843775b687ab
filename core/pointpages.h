// Points of a database, page by page, as texts.
#pragma once

#include "core/valueformat.h"
#include "qrb/pointcloud.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace tarvo::core {

// Which points: those that pass a filter expression (empty: all), of some index nodes (none given:
// of all).
struct PointSelection {
    std::string filter;
    std::optional<std::vector<std::uint32_t>> nodes;

    // Throws qrb::Error.
    qrb::pointcloud::QuerySelect query(const qrb::Pointcloud& database) const;
};

// An element of an attribute.
struct PointColumn {
    std::string attribute;
    std::string name;  // "tarvo.xyz[2]"
    ValueFormat format;
};

// The columns of an attribute's first elements. Throws qrb::Error.
std::vector<PointColumn> columnsOf(const qrb::pointcloud::PointAttribute& attribute,
                                   std::uint32_t maximum = UINT32_MAX);

// Owns the query and its buffers; needs the database only while it is made, because queries keep it
// alive.
class PointPages {
public:
    // pageSize: the most points of a page, at least 1. Throws qrb::Error, as next() does.
    PointPages(const qrb::Pointcloud& database, const PointSelection& selection,
               std::vector<PointColumn> columns, std::uint32_t pageSize);
    PointPages(const PointPages&) = delete;
    PointPages& operator=(const PointPages&) = delete;

    const std::vector<PointColumn>& columns() const { return m_columns; }
    // Reads the next page and returns its number of points; 0: none left.
    std::uint32_t next() { return next(m_pageSize); }
    // The same of at most this many points.
    std::uint32_t next(std::uint32_t count);
    // Per cent of the work done.
    std::uint32_t progress() const { return m_query.progress(); }
    // What the way there has cost; none from a library that does not tell.
    auto nodesPassed() const { return m_query.nodesPassed(); }

    // A value of the page read last: 8 bytes of the column's type.
    std::uint64_t value(std::uint32_t row, std::size_t column) const {
        return m_values[column * m_pageSize + row];
    }
    void appendText(std::string& text, std::uint32_t row, std::size_t column) const {
        m_columns[column].format.append(text, value(row, column));
    }

private:
    qrb::pointcloud::QuerySelect m_query;
    std::vector<PointColumn> m_columns;
    std::uint32_t m_pageSize;
    std::vector<std::uint64_t> m_values;  // column by column
};

}  // namespace tarvo::core
