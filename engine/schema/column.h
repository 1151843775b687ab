// The codes of one element of one attribute for a run of points, in the width of the grid.
#pragma once

#include "engine/base/slabs.h"

#include <cstdint>
#include <cstring>
#include <span>
#include <vector>

namespace tarvo::engine::schema {

class Column {
public:
    Column() = default;
    // Zeros. width: 1, 2, 4 or 8 bytes.
    Column(unsigned width, std::size_t count)
        : m_width(width), m_count(count), m_data((count * width + 7) / 8, 0) {}
    // Whatever stands in memory, for who writes every code.
    static Column unfilled(unsigned width, std::size_t count) {
        Column column;
        column.m_width = width;
        column.m_count = count;
        column.m_data.resize((count * width + 7) / 8);
        return column;
    }

    unsigned width() const { return m_width; }
    std::size_t size() const { return m_count; }
    std::size_t bytes() const { return m_data.size() * 8; }

    // T must have the column's width.
    template <typename T>
    std::span<T> as() {
        return {reinterpret_cast<T*>(m_data.data()), m_count};
    }
    template <typename T>
    std::span<const T> as() const {
        return {reinterpret_cast<const T*>(m_data.data()), m_count};
    }

    std::uint64_t operator[](std::size_t index) const {
        switch (m_width) {
            case 1:
                return as<std::uint8_t>()[index];
            case 2:
                return as<std::uint16_t>()[index];
            case 4:
                return as<std::uint32_t>()[index];
            default:
                return as<std::uint64_t>()[index];
        }
    }
    void set(std::size_t index, std::uint64_t code) {
        switch (m_width) {
            case 1:
                as<std::uint8_t>()[index] = static_cast<std::uint8_t>(code);
                break;
            case 2:
                as<std::uint16_t>()[index] = static_cast<std::uint16_t>(code);
                break;
            case 4:
                as<std::uint32_t>()[index] = static_cast<std::uint32_t>(code);
                break;
            default:
                as<std::uint64_t>()[index] = code;
                break;
        }
    }

    // Calls function(span of the column's own type).
    template <typename Function>
    decltype(auto) visit(Function&& function) const {
        switch (m_width) {
            case 1:
                return function(as<std::uint8_t>());
            case 2:
                return function(as<std::uint16_t>());
            case 4:
                return function(as<std::uint32_t>());
            default:
                return function(as<std::uint64_t>());
        }
    }
    template <typename Function>
    decltype(auto) visit(Function&& function) {
        switch (m_width) {
            case 1:
                return function(as<std::uint8_t>());
            case 2:
                return function(as<std::uint16_t>());
            case 4:
                return function(as<std::uint32_t>());
            default:
                return function(as<std::uint64_t>());
        }
    }

private:
    unsigned m_width = 1;
    std::size_t m_count = 0;
    std::vector<std::uint64_t, SlabAllocator<std::uint64_t>>
        m_data;  // 8-byte alignment for every width
};

// What a node knows of one element without reading it. minimum and maximum leave invalid codes
// out; they mean nothing where hasValid is false.
struct ElementStatistics {
    std::uint64_t minimum = 0;
    std::uint64_t maximum = 0;
    bool hasValid = false;
    bool hasInvalid = false;

    void merge(const ElementStatistics& other) {
        if (other.hasValid) {
            minimum =
                hasValid ? (minimum < other.minimum ? minimum : other.minimum) : other.minimum;
            maximum =
                hasValid ? (maximum > other.maximum ? maximum : other.maximum) : other.maximum;
            hasValid = true;
        }
        hasInvalid = hasInvalid || other.hasInvalid;
    }
    bool operator==(const ElementStatistics&) const = default;
};

class Grid;
ElementStatistics statistics(const Column& column, const Grid& grid);

}  // namespace tarvo::engine::schema
