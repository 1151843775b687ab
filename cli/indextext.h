// The point index as texts.
#pragma once

#include "qrb/queries.h"

#include <cstdint>
#include <string>
#include <vector>

namespace tarvo::cli {

// A line per node, indented by its level; depth: levels below the root that are shown.
std::string indexTree(const qrb::pointcloud::IndexNode& root, std::uint32_t depth);
// The numbers of the leaves, ascending. Take them of the whole index: a filter leaves nodes without
// their children that have some.
using Leaves = std::vector<std::uint32_t>;
Leaves leavesOf(const qrb::pointcloud::IndexNode& whole);
// A line per level.
std::string indexLevels(const qrb::pointcloud::IndexNode& root, const Leaves& leaves);
// The same as JSON: nested objects, or an array of one object per level.
std::string indexTreeJson(const qrb::pointcloud::IndexNode& root, std::uint32_t depth,
                          const Leaves& leaves);
std::string indexLevelsJson(const qrb::pointcloud::IndexNode& root, const Leaves& leaves);

}  // namespace tarvo::cli
