#include "cli/filterreach.h"

#include <algorithm>

namespace tarvo::cli {

using qrb::pointcloud::IndexNode;

namespace {

// The recursion is as deep as the index.
void addLeafPoints(std::vector<std::pair<std::uint32_t, std::uint64_t>>& leaves,
                   const IndexNode& node) {
    if (node.children.empty()) {
        leaves.emplace_back(node.id, static_cast<std::uint64_t>(node.pointCountTotal));
    }
    for (const IndexNode& child : node.children) {
        addLeafPoints(leaves, child);
    }
}

}  // namespace

IndexReach::IndexReach(const qrb::Pointcloud& cloud) : m_stat(cloud.stat()) {
    IndexNode root;
    m_stat.index(root);
    addLeafPoints(m_leaves, root);
    std::ranges::sort(m_leaves);
}

Leaves IndexReach::left(const std::string& expression) const {
    IndexNode root;
    m_stat.index(root, expression);
    return leavesOf(root);
}

FilterReach IndexReach::of(const std::string& expression) const {
    const Leaves passing = left(expression);
    // Of a leaf without a point that fails all points pass.
    const Leaves failing = left("!(" + expression + ")");
    FilterReach reach;
    for (const auto& [id, points] : m_leaves) {
        LeafCount& count = !std::ranges::binary_search(passing, id)   ? reach.skipped
                           : !std::ranges::binary_search(failing, id) ? reach.whole
                                                                      : reach.lookedAt;
        count.leaves += 1;
        count.points += points;
    }
    return reach;
}

LeafCount IndexReach::all() const {
    LeafCount count{m_leaves.size(), 0};
    for (const auto& [id, points] : m_leaves) {
        count.points += points;
    }
    return count;
}

}  // namespace tarvo::cli
