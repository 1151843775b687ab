// Answers questions about the index from what the nodes know; reads no points.
#pragma once

#include "engine/session/session.h"

#include <cstdint>
#include <string_view>
#include <vector>

namespace tarvo::engine::query {

struct IndexEntry {
    std::uint32_t id = 0;
    std::uint32_t revision = 0;
    std::uint64_t totalCount = 0;
    std::uint64_t ownCount = 0;
    std::vector<IndexEntry> children;
};

// The index, or of it the nodes that may hold hits of the filter (or the one that a command of
// findnode.h finds) and their ancestors.
IndexEntry readIndex(session::Session& session, std::string_view filter);

enum class Extreme { Minimum, Maximum };

// Writes the extreme value of every element that the descriptor names, one after another. cleaned
// leaves invalid values out. Throws Failure(NotFound) where the node holds no value.
void readExtreme(session::Session& session, std::uint32_t node, std::string_view attribute,
                 Extreme extreme, bool cleaned, std::uint32_t type, void* buffer);

// The transaction that last changed the attribute in the node or below.
std::uint32_t readRevision(session::Session& session, std::uint32_t node,
                           std::string_view attribute);

}  // namespace tarvo::engine::query
