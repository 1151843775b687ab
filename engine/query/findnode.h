// The commands that stand where a filter does and find one node of the index:
//   find largest leaf, find largest node    the one with the longest cell edges (the lowest level)
//   find fullest leaf, find fullest node    the one with most points, its own and those below
// Of equals the one with more points counts, then the first. Case and blanks around do not matter.
// Nodes are inner nodes; the root, which is both, only where there is no other.
#pragma once

#include "engine/session/session.h"

#include <cstdint>
#include <optional>
#include <string_view>

namespace tarvo::engine::query {

enum class FindCommand { LargestLeaf, LargestNode, FullestLeaf, FullestNode };

// None for any other text.
std::optional<FindCommand> findCommand(std::string_view text);

// The node's id; 0 where the index has no such node.
std::uint32_t findNode(session::Session& session, const session::State& state, FindCommand command);

}  // namespace tarvo::engine::query
