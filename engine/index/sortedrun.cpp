#include "engine/index/sortedrun.h"

#include "engine/base/radixsort.h"

#include <algorithm>
#include <array>
#include <bit>
#include <numeric>

namespace tarvo::engine::index {

namespace {

// Points of one cell are put in order at once where they are many, else where that is asked for.
constexpr std::size_t mostUnsettled = 1024;
// So few points are sorted by comparing keys.
constexpr std::size_t fewPoints = 256;

template <typename T>
void takeColumn(std::span<const std::uint8_t> rows, std::size_t stride, std::size_t offset,
                std::span<T> codes) {
    for (std::size_t i = 0; i < codes.size(); ++i)
        std::memcpy(&codes[i], rows.data() + i * stride + offset, sizeof(T));
}

}  // namespace

PointColumns::PointColumns(const RowLayout& layout) {
    for (const RowLayout::Field& field : layout.fields())
        columns.emplace_back(field.width);
}

void PointColumns::append(const RowLayout& layout, std::span<const std::uint8_t> rows) {
    const std::size_t added = rows.size() / layout.stride();
    try {
        for (std::size_t f = 0; f < columns.size(); ++f) {
            const RowLayout::Field& field = layout.fields()[f];
            schema::Column codes(field.width, added);
            codes.visit(
                [&](auto typed) { takeColumn(rows, layout.stride(), field.offset, typed); });
            columns[f].append(codes);
        }
    } catch (...) {
        truncate(count);
        throw;
    }
    count += added;
}

void PointColumns::truncate(std::size_t points) {
    for (PackedColumn& column : columns)
        column.truncate(std::min(points, column.size()));
    count = points;
}

std::size_t PointColumns::bytes() const {
    return std::accumulate(columns.begin(), columns.end(), std::size_t(0),
                           [](std::size_t sum, const PackedColumn& column) {
                               return sum + column.bytes() + sizeof column;
                           });
}

SortedRun::SortedRun(PointColumns points, const KeySpace& space, std::size_t primary)
    : m_points(std::move(points)), m_space(space), m_primary(primary) {
    for (PackedColumn& column : m_points.columns)
        column.shrink();
    sortAll();
}

Key SortedRun::key(std::uint32_t point) const {
    std::uint64_t codes[maximumDimensions];
    for (std::size_t d = 0; d < dimensions(); ++d)
        codes[d] = columns()[m_primary + d][point];
    return m_space.key(codes);
}

// least and greatest: codes that bound those of the points.
SortedRun::Frame SortedRun::frameOf(const std::uint64_t* least,
                                    const std::uint64_t* greatest) const {
    const unsigned lost = m_space.bits() - m_space.depth();
    std::uint64_t differing = 0;
    for (std::size_t d = 0; d < dimensions(); ++d)
        differing |= (least[d] ^ greatest[d]) >> lost;
    const auto levels = static_cast<unsigned>(std::bit_width(differing));
    const unsigned above = m_space.depth() - levels;
    Frame frame;
    frame.first = m_space.first(m_space.key(least), above);
    frame.level = above + std::min(levels, 32 / m_space.dimensions());
    frame.shift = (m_space.depth() - frame.level) * m_space.dimensions();
    frame.isPoint = levels == 0;
    return frame;
}

void SortedRun::sortAll() {
    const std::size_t count = m_points.count;
    const PackedColumn* const primary = &m_points.columns[m_primary];
    std::uint64_t least[maximumDimensions];
    std::uint64_t greatest[maximumDimensions];
    for (std::size_t d = 0; d < dimensions(); ++d) {
        least[d] = primary[d].minimum();
        greatest[d] = primary[d].maximum();
    }
    m_frame = frameOf(least, greatest);
    std::vector<std::uint64_t> entries(count);
    constexpr std::size_t piece = 1024;
    std::array<std::uint64_t, piece * maximumDimensions> codes;
    std::array<std::uint32_t, piece> cells;
    for (std::size_t begin = 0; begin < count; begin += piece) {
        const std::size_t size = std::min(piece, count - begin);
        for (std::size_t d = 0; d < dimensions(); ++d)
            primary[d].unpack(begin, {codes.data() + d * size, size});
        m_space.cells({codes.data(), dimensions() * size}, m_frame.level, 32 / m_space.dimensions(),
                      {cells.data(), size});
        for (std::size_t i = 0; i < size; ++i)
            entries[begin + i] = std::uint64_t(cells[i]) << 32 | (begin + i);
    }
    {
        std::vector<std::uint64_t> scratch;
        radixSort(entries, 32, scratch);
    }
    // Those of the cell that has all are the same in the bits above.
    const unsigned cellBits = 32 / m_space.dimensions() * m_space.dimensions();
    const std::uint32_t first =
        static_cast<std::uint32_t>(m_frame.first >> m_frame.shift) & (~0u >> (32 - cellBits));
    m_order.resize(count);
    m_cells.resize(count);
    for (std::size_t i = 0; i < count; ++i) {
        m_order[i] = static_cast<std::uint32_t>(entries[i]);
        m_cells[i] = static_cast<std::uint32_t>(entries[i] >> 32) - first;
    }
    entries = {};
    if (m_frame.shift == 0)
        return;
    for (std::size_t begin = 0; begin < count;) {
        const Range range{begin, rangeOf(begin).end};
        if (range.end - range.begin > mostUnsettled)
            sortRange(range);
        begin = range.end;
    }
}

// The places around one whose points are in the same cell.
SortedRun::Range SortedRun::rangeOf(std::size_t place) const {
    const std::uint32_t cell = m_cells[place];
    // Mostly few.
    std::size_t begin = place;
    std::size_t step = 1;
    while (begin > 0 && m_cells[begin - 1] == cell) {
        begin -= std::min(begin, step);
        step *= 2;
    }
    std::size_t end = place + 1;
    step = 1;
    while (end < m_cells.size() && m_cells[end] == cell) {
        end = std::min(m_cells.size(), end + step);
        step *= 2;
    }
    const auto at = [this](std::size_t i) {
        return m_cells.begin() + static_cast<std::ptrdiff_t>(i);
    };
    return {static_cast<std::size_t>(std::lower_bound(at(begin), at(place), cell) - at(0)),
            static_cast<std::size_t>(std::upper_bound(at(place), at(end), cell) - at(0))};
}

// Sorts points by the whole keys.
void SortedRun::sortRange(Range range) {
    const std::size_t count = range.end - range.begin;
    const std::span<std::uint32_t> order = std::span(m_order).subspan(range.begin, count);
    if (count <= fewPoints) {
        struct Entry {
            Key key;
            std::uint32_t point;
        };
        std::array<Entry, fewPoints> entries;
        for (std::size_t i = 0; i < count; ++i)
            entries[i] = {key(order[i]), order[i]};
        std::sort(entries.begin(), entries.begin() + static_cast<std::ptrdiff_t>(count),
                  [](const Entry& a, const Entry& b) {
                      return a.key != b.key ? a.key < b.key : a.point < b.point;
                  });
        for (std::size_t i = 0; i < count; ++i)
            order[i] = entries[i].point;
        return;
    }
    // By the highest bits that differ among these, then each of the cells that this gives.
    std::uint64_t least[maximumDimensions];
    std::uint64_t greatest[maximumDimensions];
    std::vector<std::uint64_t> codes(count * dimensions());
    for (std::size_t d = 0; d < dimensions(); ++d) {
        const PackedColumn& column = m_points.columns[m_primary + d];
        const auto at = codes.begin() + static_cast<std::ptrdiff_t>(d * count);
        std::transform(order.begin(), order.end(), at,
                       [&column](std::uint32_t point) { return column[point]; });
        const auto [low, high] = std::minmax_element(at, at + static_cast<std::ptrdiff_t>(count));
        least[d] = *low;
        greatest[d] = *high;
    }
    const Frame frame = frameOf(least, greatest);
    if (frame.isPoint) {
        std::sort(order.begin(), order.end());
        return;
    }
    std::vector<std::uint32_t> cells(count);
    m_space.cells(codes, frame.level, 32 / m_space.dimensions(), cells);
    codes = {};
    std::vector<std::uint64_t> entries(count);
    for (std::size_t i = 0; i < count; ++i)
        entries[i] = std::uint64_t(cells[i]) << 32 | order[i];
    cells = {};
    {
        std::vector<std::uint64_t> scratch;
        radixSort(entries, 32, scratch);
    }
    for (std::size_t i = 0; i < count; ++i)
        order[i] = static_cast<std::uint32_t>(entries[i]);
    for (std::size_t begin = 0; begin < count;) {
        std::size_t end = begin + 1;
        while (end < count && entries[end] >> 32 == entries[begin] >> 32)
            ++end;
        if (end - begin > 1)
            sortRange({range.begin + begin, range.begin + end});
        begin = end;
    }
}

Key SortedRun::keyAt(std::size_t place) {
    settle(place);
    return key(m_order[place]);
}

void SortedRun::settle(std::size_t place) {
    if (m_frame.shift == 0 || (place >= m_settled.begin && place < m_settled.end))
        return;
    const Range range = rangeOf(place);
    const std::size_t count = range.end - range.begin;
    if (count > 1 && count <= mostUnsettled)
        sortRange(range);
    m_settled = range;
}

void SortedRun::settleAll() {
    for (std::size_t place = 0; place < size(); place = m_settled.end) {
        if (m_frame.shift == 0)
            return;
        settle(place);
    }
}

std::size_t SortedRun::countUpTo(Key last, std::size_t from, std::size_t limit) {
    if (last < m_frame.first)
        return 0;
    const std::size_t end = std::min(size(), from + std::min(limit, size()));
    const Key cell = (last - m_frame.first) >> m_frame.shift;
    if (cell > UINT32_MAX)
        return end - from;
    const auto at = [this](std::size_t i) {
        return m_cells.begin() + static_cast<std::ptrdiff_t>(i);
    };
    const auto wanted = static_cast<std::uint32_t>(cell);
    // Mostly few: in steps that grow, then between the last two.
    std::size_t low = from;
    std::size_t step = 16;
    std::size_t high = from;
    while (high < end && m_cells[high] <= wanted) {
        low = high;
        high = std::min(end, high + step);
        step *= 4;
    }
    const auto behind =
        static_cast<std::size_t>(std::upper_bound(at(low), at(high), wanted) - at(0));
    const Key below = (Key(1) << m_frame.shift) - 1;
    if ((last & below) == below || behind == from || m_cells[behind - 1] < wanted)
        return behind - from;
    // Within a cell.
    settle(behind - 1);
    std::size_t first = std::max(from, m_settled.begin);
    std::size_t past = behind;
    while (first < past) {
        const std::size_t middle = (first + past) / 2;
        if (key(m_order[middle]) <= last)
            first = middle + 1;
        else
            past = middle;
    }
    return first - from;
}

}  // namespace tarvo::engine::index
