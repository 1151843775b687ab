// Which nodes of the index are shown, and in which order. Needs no widget: a large index is gone
// through on another thread.
#pragma once

#include "qrb/queries.h"

#include <cstddef>
#include <cstdint>
#include <set>
#include <vector>

namespace tarvo::window {

// The nodes that a filter text asks for; empty and unused without a text.
struct WantedNodes {
    bool all = true;
    std::set<std::uint32_t> ids;
};

struct IndexRow {
    const qrb::pointcloud::IndexNode* node = nullptr;
    int level = 0;
    std::ptrdiff_t parent = -1;  // among the rows, before this one; -1: a row of the first level
    bool isMatch = false;        // asked for by itself, not for what is below
};

struct IndexRows {
    std::vector<IndexRow> rows;  // parents before their children
    int nodes = 0;
    int leaves = 0;
    int depth = 0;
    bool truncated = false;  // nodes were passed over, be they wanted or not
    int items() const { return nodes + leaves; }
};

// The nodes that are wanted, with those above them; stops once more than maximum were gone through.
// The rows point into root.
IndexRows indexRows(const qrb::pointcloud::IndexNode& root, const WantedNodes& wanted, int maximum);

}  // namespace tarvo::window
