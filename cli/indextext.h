// The point index as texts.
#pragma once

#include "qrb/queries.h"

#include <cstdint>
#include <string>

namespace tarvo::cli {

// A line per node, indented by its level; depth: levels below the root that are shown.
std::string indexTree(const qrb::pointcloud::IndexNode& root, std::uint32_t depth);
// A line per level.
std::string indexLevels(const qrb::pointcloud::IndexNode& root);
// The same as JSON: nested objects, or an array of one object per level.
std::string indexTreeJson(const qrb::pointcloud::IndexNode& root, std::uint32_t depth);
std::string indexLevelsJson(const qrb::pointcloud::IndexNode& root);

}  // namespace tarvo::cli
