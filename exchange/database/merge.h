// The points of several databases as those of one.
#pragma once

#include "core/shape.h"
#include "exchange/import/commonorigin.h"
#include "exchange/import/importsteps.h"

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace tarvo::exchange::database {

struct MergeInput {
    const qrb::Pointcloud* cloud = nullptr;  // open, not used elsewhere meanwhile
    std::string fileName;
};

// What the points of all can be stored as.
struct MergePlan {
    qrb::pointcloud::PointAttribute primary;
    std::vector<qrb::pointcloud::PointAttribute> attributes;  // but for ids; the primary one, too
    CommonOrigin origin;
};

// inputs: one at least; the definitions are those that the library merges, and the primary
// attribute is that of the first. Throws Failure where one lacks that, or where reference systems
// or time bases differ, unless they are to be taken asTheyAre; qrb::Error for definitions that
// can't be merged.
MergePlan planMerge(const std::vector<MergeInput>& inputs, bool asTheyAre);

struct MergeOptions {
    bool keepIds = false;                  // else points are numbered anew
    std::shared_ptr<core::Shaper> shaper;  // chooses of all points together; null: all
};

// Fills the target, new and with a pending transaction: attributes, points in the order of the
// inputs, metadata of the first, those of the others that it has not, and with numbers those that
// differ. Returns the number of points. Adds notes to plan.origin. progress may be empty; what it
// throws ends the work. Throws Failure where two points have the same id to be kept, and
// qrb::Error.
std::uint64_t mergeInto(qrb::Pointcloud& target, const std::vector<MergeInput>& inputs,
                        MergePlan& plan, const MergeOptions& options,
                        const ImportProgress& progress);

}  // namespace tarvo::exchange::database
