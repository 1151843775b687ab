// The index as a view needs it: counts and boxes of nodes, those below one side by side.
#pragma once

#include "qrb/pointcloud.h"
#include "view/cloudspace.h"

#include <cstdint>
#include <optional>
#include <vector>

namespace tarvo::view {

struct ViewNode {
    std::uint32_t id = 0;        // of the index
    std::uint32_t revision = 0;  // the transaction that changed it last
    std::uint32_t level = 0;     // 0: the root
    std::uint32_t firstChild = 0;
    std::uint32_t children = 0;
    std::uint64_t points = 0;  // stored in the node itself
    std::uint64_t total = 0;   // points of the leaves below, or its own
    std::optional<drawing::Box> box;
};

// Asks the index for boxes when they are wanted, because there may be a million nodes: a tree
// belongs to the thread that works on its database, which must outlive it.
class NodeTree {
public:
    // Throws Failure for a database whose points have no place, and qrb::Error, as box() does.
    explicit NodeTree(const qrb::Pointcloud& database);

    const CloudSpace& space() const { return m_space; }
    // The root first; none in a database without points.
    const std::vector<ViewNode>& nodes() const { return m_nodes; }
    const drawing::Box& box(std::uint32_t node);
    // Whether inner nodes have points that stand for those below.
    bool hasLevelOfDetail() const { return m_hasLevelOfDetail; }
    std::uint64_t points() const { return m_nodes.empty() ? 0 : m_nodes.front().total; }
    std::uint32_t deepestLevel() const { return m_deepest; }

private:
    CloudSpace m_space;
    qrb::pointcloud::QueryStat m_index;
    std::vector<ViewNode> m_nodes;
    bool m_hasLevelOfDetail = false;
    std::uint32_t m_deepest = 0;
};

}  // namespace tarvo::view
