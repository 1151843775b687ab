// What two states of one file have in common, so that it need not be read.
//
// A transaction that changes what a leaf stores, or which points it has, gives it its own number as
// revision, and no number is given twice. So a leaf with the same number and the same revision in
// both stores the same (convention 16 of qrb/qrb.h), whatever was restored, discarded or made anew
// between them. What it doesn't store comes from the definition or from the one value for the whole
// file: there is more to look at for those attributes.
#pragma once

#include "qrb/pointcloud.h"

#include <cstdint>
#include <string>
#include <vector>

namespace tarvo::core {

// Node numbers; the leaves of both in the order of the first.
struct LeafPairs {
    std::vector<std::uint32_t> common;
    std::vector<std::uint32_t> before;  // of the first alone
    std::vector<std::uint32_t> after;
    std::uint64_t pointsCommon = 0;
    std::uint64_t pointsBefore = 0;
    std::uint64_t pointsAfter = 0;
};

LeafPairs pairLeaves(const qrb::Pointcloud& before, const qrb::Pointcloud& after);

// Whether an attribute of both has the same values in all common leaves, as far as can be told
// without reading them.
bool sameInCommonLeaves(const qrb::Pointcloud& before, const qrb::Pointcloud& after,
                        const std::string& attribute);

}  // namespace tarvo::core
