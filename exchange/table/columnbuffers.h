// The buffers of a batch: one per column, packed values of its type.
#pragma once

#include "exchange/table/pointsource.h"
#include "qrb/visitvalues.h"

#include <algorithm>
#include <cstdint>
#include <type_traits>
#include <vector>

namespace tarvo::exchange {

class ColumnBuffers {
public:
    // Room for as many points as fit into the memory that a batch may take; at least one, and no
    // more than pointCount where that is told.
    void reserve(const std::vector<Column>& columns, std::uint64_t pointCount = batchSize) {
        constexpr std::size_t valuesAtOnce = 8u << 20;
        m_capacity = static_cast<std::uint32_t>(std::clamp<std::uint64_t>(
            std::min<std::uint64_t>(valuesAtOnce / std::max<std::size_t>(columns.size(), 1),
                                    pointCount),
            1, batchSize));
        for (const Column& column : columns) {
            m_types.push_back(column.type);
            m_bytes.emplace_back(m_capacity * dataTypeSize(column.type));
        }
    }
    std::uint32_t capacity() const { return m_capacity; }
    const void* of(std::size_t column) const { return m_bytes[column].data(); }
    // Of the type of the column.
    template <typename T>
    T* typed(std::size_t column) {
        return reinterpret_cast<T*>(m_bytes[column].data());
    }
    // A number that the type of the column holds.
    template <typename Number>
    void set(std::size_t column, std::uint32_t row, Number value) {
        visitValues(m_types[column], m_bytes[column].data(),
                    [&]<typename T>(const T*) { typed<T>(column)[row] = static_cast<T>(value); });
    }

private:
    std::uint32_t m_capacity = 1;
    std::vector<DataType> m_types;
    std::vector<std::vector<std::uint8_t>> m_bytes;
};

}  // namespace tarvo::exchange
