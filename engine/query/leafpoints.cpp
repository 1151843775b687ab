#include "engine/query/leafpoints.h"

#include "engine/base/radixsort.h"

#include <algorithm>
#include <bit>
#include <numeric>

namespace tarvo::engine::query {

LeafPoints::LeafPoints(index::RunParts parts, std::size_t count, const index::RowLayout& layout,
                       const index::KeySpace& space, std::uint64_t newIds)
    : m_parts(std::move(parts)), m_count(count), m_layout(layout) {
    // The order in which they came is mostly that of their ids.
    std::vector<std::uint32_t> scratch;
    for (index::RunPart& part : m_parts)
        radixSort(part.points, 0, scratch);
    m_ids = gather(layout.idField());
    if (newIds != UINT64_MAX)
        renumber(space, newIds);
    orderById();
}

std::optional<std::uint64_t> LeafPoints::constant(std::size_t field) const {
    if (field == m_layout.idField())
        return std::nullopt;
    const std::uint64_t code = m_parts[0].run->columns()[field].minimum();
    for (const index::RunPart& part : m_parts) {
        const index::PackedColumn& column = part.run->columns()[field];
        if (!column.isConstant() || column.minimum() != code)
            return std::nullopt;
    }
    return code;
}

schema::Column LeafPoints::gather(std::size_t field) const {
    schema::Column column(m_layout.fields()[field].width, m_count);
    std::size_t at = 0;
    for (const index::RunPart& part : m_parts) {
        part.run->columns()[field].gather(part.points, column, at);
        at += part.points.size();
    }
    return column;
}

schema::Column LeafPoints::column(std::size_t field) const {
    const bool isId = field == m_layout.idField();
    if (m_order.empty())
        return isId ? m_ids : gather(field);
    const schema::Column column = isId ? m_ids : gather(field);
    schema::Column ordered(column.width(), m_count);
    ordered.visit([&]<typename T>(std::span<T> codes) {
        const auto from = column.as<T>();
        for (std::size_t i = 0; i < m_count; ++i)
            codes[i] = from[m_order[i]];
    });
    return ordered;
}

// Each new point is written once, in key order: counting gives every one an id of its own among
// those that the points had before.
void LeafPoints::renumber(const index::KeySpace& space, std::uint64_t newIds) {
    struct Entry {
        index::Key key;
        std::uint32_t place;
    };
    std::vector<schema::Column> primary;
    for (unsigned d = 0; d < space.dimensions(); ++d)
        primary.push_back(gather(m_layout.fieldOf(0) + d));
    std::vector<Entry> entries;
    std::uint32_t place = 0;
    for (const index::RunPart& part : m_parts)
        for (std::size_t i = 0; i < part.points.size(); ++i, ++place) {
            if (part.isStored)
                continue;
            std::uint64_t codes[index::maximumDimensions] = {};
            for (unsigned d = 0; d < space.dimensions(); ++d)
                codes[d] = primary[d][place];
            entries.push_back({space.key(codes), place});
        }
    std::sort(entries.begin(), entries.end(), [](const Entry& a, const Entry& b) {
        return a.key != b.key ? a.key < b.key : a.place < b.place;
    });
    for (const Entry& entry : entries)
        m_ids.set(entry.place, newIds++);
}

void LeafPoints::orderById() {
    const bool inOrder =
        m_ids.visit([](auto ids) { return std::is_sorted(ids.begin(), ids.end()); });
    if (inOrder)
        return;
    m_order.resize(m_count);
    const auto [least, greatest] = m_ids.visit([](auto ids) {
        const auto [low, high] = std::minmax_element(ids.begin(), ids.end());
        return std::pair<std::uint64_t, std::uint64_t>(*low, *high);
    });
    if (greatest - least > UINT32_MAX) {
        std::iota(m_order.begin(), m_order.end(), 0u);
        std::stable_sort(m_order.begin(), m_order.end(),
                         [this](std::uint32_t a, std::uint32_t b) { return m_ids[a] < m_ids[b]; });
        return;
    }
    std::vector<std::uint64_t> entries(m_count);
    for (std::size_t i = 0; i < m_count; ++i)
        entries[i] = (m_ids[i] - least) << 32 | i;
    std::vector<std::uint64_t> scratch;
    radixSort(entries, 32, scratch);
    std::transform(entries.begin(), entries.end(), m_order.begin(),
                   [](std::uint64_t entry) { return static_cast<std::uint32_t>(entry); });
}

}  // namespace tarvo::engine::query
