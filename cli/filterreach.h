// What the index tells of a filter before any point is read.
#pragma once

#include "cli/indextext.h"
#include "qrb/pointcloud.h"

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

namespace tarvo::cli {

// Leaves, and the points in them.
struct LeafCount {
    std::uint64_t leaves = 0;
    std::uint64_t points = 0;
};

// By what the nodes of the index know: no point of a leaf passes, all do, or it must be read.
struct FilterReach {
    LeafCount skipped;
    LeafCount whole;
    LeafCount lookedAt;
};

class IndexReach {
public:
    // Reads the whole index. Throws qrb::Error, as of() does.
    explicit IndexReach(const qrb::Pointcloud& cloud);

    // expression: one that the library takes, and no search for a node. Walks the index twice. What
    // the library tells of an index of one leaf has no answer: that one counts as looked at.
    FilterReach of(const std::string& expression) const;
    LeafCount all() const;

private:
    // The leaves that are left, ascending.
    Leaves left(const std::string& expression) const;

    qrb::pointcloud::QueryStat m_stat;
    std::vector<std::pair<std::uint32_t, std::uint64_t>> m_leaves;  // ids, ascending, and points
};

}  // namespace tarvo::cli
