// What the index knows about the points of one node.
#pragma once

#include "qrb/pointcloud.h"

#include <cstdint>
#include <string>
#include <vector>

namespace tarvo::cli {

// Counts of the node, and the smallest and largest values of these attributes (none: all) in it
// and below. Throws Failure for a node or an attribute that there is not.
std::string nodeStatistics(const qrb::Pointcloud& cloud, std::uint32_t node,
                           std::vector<std::string> attributes, bool asJson);

}  // namespace tarvo::cli
