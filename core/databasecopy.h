// Copies what a selection picks from one open database into another.
#pragma once

#include "core/shape.h"
#include "qrb/pointcloud.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace tarvo::core {

struct Selection {
    std::string filter;                               // empty: all points
    std::optional<std::vector<std::uint32_t>> nodes;  // none given: all nodes
    // Of the source, in the order that they get. The target's primary attribute must be among them;
    // with "tarvo.id" points keep their ids.
    std::vector<std::string> attributes;
    std::vector<std::string> metaData;  // without their signatures, texts as those of definitions
    // Chooses of the points that filter and nodes leave, in the order of the source; null: all. It
    // goes on where it is, so that several copies with one are shaped as one.
    std::shared_ptr<Shaper> shaper;
};

// A definition of the source as a new database takes it: earlier releases kept texts that are no
// UTF-8, which are read as Latin-1. Throws qrb::Error.
qrb::pointcloud::PointAttribute definitionForCopy(const qrb::Pointcloud& source,
                                                  const std::string& name);
qrb::pointcloud::PointAttribute definitionForCopy(qrb::pointcloud::PointAttribute attribute);

// Adds the attributes that the target lacks, the metadata items and the points to the target's
// pending transaction. Values are written as the target's definitions hold them. Returns the number
// of points. progress gets per cent; what it throws ends the copy, as qrb::Error of either database
// does, and Failure where a shape needs coordinates that the source lacks; rolling back is the
// caller's. Both databases must not be used elsewhere meanwhile.
std::uint64_t copyDatabase(const qrb::Pointcloud& source, qrb::Pointcloud& target,
                           const Selection& selection,
                           const qrb::pointcloud::Progress& progress = {});

}  // namespace tarvo::core
