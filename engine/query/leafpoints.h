// The points of a leaf, brought into the order of their ids, that is of acquisition.
#pragma once

#include "engine/index/key.h"
#include "engine/index/pointmerger.h"
#include "engine/index/rows.h"
#include "engine/schema/column.h"

#include <cstdint>
#include <optional>
#include <vector>

namespace tarvo::engine::query {

class LeafPoints {
public:
    // newIds: points that were not stored before get ids (codes) from this one on in the order of
    // their keys; none: UINT64_MAX. layout must outlive this.
    LeafPoints(index::RunParts parts, std::size_t count, const index::RowLayout& layout,
               const index::KeySpace& space, std::uint64_t newIds);

    // The code that all points have for sure; nothing: they may differ.
    std::optional<std::uint64_t> constant(std::size_t field) const;
    schema::Column column(std::size_t field) const;

private:
    schema::Column gather(std::size_t field) const;
    void renumber(const index::KeySpace& space, std::uint64_t newIds);
    void orderById();

    index::RunParts m_parts;
    std::size_t m_count;
    const index::RowLayout& m_layout;
    schema::Column m_ids;
    std::vector<std::uint32_t> m_order;  // of what is gathered; empty: as it is
};

}  // namespace tarvo::engine::query
