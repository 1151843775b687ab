// A run of points on its way into the tree: packed columns in the order in which the points came,
// and their order by key. They are sorted by the highest bits of the keys that differ; what lies
// closer together is put in order where somebody asks for it.
#pragma once

#include "engine/index/key.h"
#include "engine/index/packedcolumn.h"
#include "engine/index/rows.h"

#include <cstdint>
#include <memory>
#include <span>
#include <vector>

namespace tarvo::engine::index {

// Points as columns, one for each field of a layout.
struct PointColumns {
    PointColumns() = default;
    explicit PointColumns(const RowLayout& layout);

    // Appends rows of the layout. Throws std::bad_alloc and then changes nothing.
    void append(const RowLayout& layout, std::span<const std::uint8_t> rows);
    void truncate(std::size_t points);
    std::size_t bytes() const;  // of memory

    std::vector<PackedColumn> columns;
    std::size_t count = 0;
};

class SortedRun {
public:
    // primary: the first column of the primary attribute. At most 2^32 points, at least one.
    SortedRun(PointColumns points, const KeySpace& space, std::size_t primary);

    std::size_t size() const { return m_order.size(); }
    const std::vector<PackedColumn>& columns() const { return m_points.columns; }
    // Bytes of memory of so many points beside their columns.
    static std::size_t bytesBeside(std::size_t points) { return points * 8; }
    Key key(std::uint32_t point) const;
    Key firstKey() { return keyAt(0); }
    Key lastKey() { return keyAt(size() - 1); }

    // Places: 0 is the point of the least key. Until settled, a place has one of the points that
    // are about as near as its own; equal keys are in the order in which the points came.
    std::span<const std::uint32_t> order() const { return m_order; }
    // How many points from a place on, `limit` at most, have keys up to `last`; settles there.
    std::size_t countUpTo(Key last, std::size_t from, std::size_t limit);
    Key keyAt(std::size_t place);
    // Puts the points that are about as near as that of the place into the order of their keys.
    void settle(std::size_t place);
    void settleAll();

private:
    struct Range {
        std::size_t begin;
        std::size_t end;
    };
    // The cells that the points are sorted by: those below one that has all of them.
    struct Frame {
        Key first = 0;        // of the cell that has all
        unsigned level = 0;   // of the cells
        unsigned shift = 0;   // bits of a key below a cell
        bool isPoint = true;  // the cell that has all is one key
    };
    std::size_t dimensions() const { return m_space.dimensions(); }
    Frame frameOf(const std::uint64_t* least, const std::uint64_t* greatest) const;
    Range rangeOf(std::size_t place) const;
    void sortAll();
    void sortRange(Range range);

    PointColumns m_points;
    KeySpace m_space;
    std::size_t m_primary;
    Frame m_frame;
    std::vector<std::uint32_t> m_order;
    std::vector<std::uint32_t> m_cells;  // of each place
    Range m_settled{0, 0};               // the last that was
};

}  // namespace tarvo::engine::index
