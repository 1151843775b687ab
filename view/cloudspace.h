// Where the points of a database lie in space.
#pragma once

#include "drawing/geometry.h"
#include "qrb/pointcloud.h"

#include <array>
#include <cstdint>
#include <string>

namespace tarvo::view {

// The first three elements of the primary attribute; of two the third is 0.
struct CloudSpace {
    std::string attribute;
    std::uint32_t dimensions = 3;  // 2 or 3
    std::string unit;              // may be empty
    drawing::Box extent;           // empty where there are no points

    // Throws Failure for a database whose points have no place in a plane, and qrb::Error.
    static CloudSpace of(const qrb::Pointcloud& database);
    // What the index knows of a node and everything below. Throws qrb::Error.
    drawing::Box boxOf(const qrb::pointcloud::QueryStat& index, std::uint32_t node) const;
};

}  // namespace tarvo::view
