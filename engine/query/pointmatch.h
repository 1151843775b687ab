// Finds points by their ids.
#pragma once

#include "engine/codec/block.h"
#include "engine/index/node.h"
#include "engine/schema/attribute.h"

#include <cstdint>
#include <span>
#include <vector>

namespace tarvo::engine::query {

struct PointMatch {
    std::uint32_t point;  // index in the node
    std::size_t id;       // index in the list of ids
};

// The points of a node whose ids (codes) are in the list, which is sorted and has each id once.
std::vector<PointMatch> matchIds(const codec::Block& idsOfNode, std::span<const std::uint64_t> ids);

// Whether the node may hold one of them.
bool mayHold(const index::Node& node, const schema::Attribute& pointId,
             std::span<const std::uint64_t> ids);

}  // namespace tarvo::engine::query
