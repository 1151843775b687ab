// Columns of points as they are read from a query, and points that are kept to be found by id.
#pragma once

#include "core/idranges.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace tarvo::core {

// What is read of an attribute of each point.
struct ReadColumn {
    std::string attribute;
    qrb::pointcloud::DataType type;
    std::size_t stride;  // bytes of a point's elements
};

// The points of a selection, a batch at a time.
class PointBatches {
public:
    // Throws qrb::Error, as next() does.
    PointBatches(const qrb::Pointcloud& database, const PointSelection& selection,
                 const std::vector<ReadColumn>& columns);
    PointBatches(const PointBatches&) = delete;
    PointBatches& operator=(const PointBatches&) = delete;

    // The number of points; 0: none left.
    std::uint32_t next() { return m_query.next(m_size); }
    std::uint32_t progress() const { return m_query.progress(); }  // per cent
    std::uint64_t id(std::uint32_t row) const { return m_ids[row]; }
    const std::uint8_t* values(std::size_t column, std::uint32_t row) const {
        return reinterpret_cast<const std::uint8_t*>(m_buffers[column].data()) +
               m_columns[column].stride * row;
    }

private:
    qrb::pointcloud::QuerySelect m_query;
    std::vector<ReadColumn> m_columns;
    std::uint32_t m_size;
    std::vector<std::uint64_t> m_ids;
    std::vector<std::vector<std::uint64_t>> m_buffers;  // one for each column
};

class HeldPoints {
public:
    // Bytes that a point takes.
    static std::size_t bytesOf(const std::vector<ReadColumn>& columns);

    // points: that will be added.
    HeldPoints(const std::vector<ReadColumn>& columns, std::uint64_t points);

    // Throws Failure for more points than were announced.
    void add(const PointBatches& batch, std::uint32_t count);
    // When all are there. Throws Failure for an id that occurs twice.
    void sort();
    // The row, which counts as found from then on. Throws Failure for one that was found before.
    std::optional<std::uint32_t> find(std::uint64_t id);
    const std::uint8_t* values(std::size_t column, std::uint32_t row) const {
        return m_values[column].data() + m_columns[column].stride * row;
    }
    // Calls function(id, row) for each that was not found, by ascending id.
    template <typename Function>
    void forEachMissed(const Function& function) const {
        for (const Entry& entry : m_entries)
            if (!m_found[entry.row])
                function(entry.id, entry.row);
    }

private:
    struct Entry {
        std::uint64_t id;
        std::uint32_t row;
    };
    std::vector<ReadColumn> m_columns;
    std::vector<Entry> m_entries;
    std::vector<std::vector<std::uint8_t>> m_values;  // one for each column
    std::vector<bool> m_found;                        // by row
    std::size_t m_next = 0;                           // where the next id may well be
};

}  // namespace tarvo::core
