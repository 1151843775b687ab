#include "view/nodetree.h"

#include <algorithm>
#include <deque>
#include <utility>

namespace tarvo::view {

NodeTree::NodeTree(const qrb::Pointcloud& database)
    : m_space(CloudSpace::of(database)), m_index(database.stat()) {
    qrb::pointcloud::IndexNode root;
    m_index.index(root);
    if (root.id == 0 || root.pointCountTotal == 0)
        return;
    // Level by level, so that the children of a node stand side by side.
    std::deque<std::pair<qrb::pointcloud::IndexNode, std::uint32_t>> waiting;
    waiting.emplace_back(std::move(root), 0);
    std::uint32_t next = 1;
    while (!waiting.empty()) {
        auto [node, level] = std::move(waiting.front());
        waiting.pop_front();
        ViewNode view;
        view.id = node.id;
        view.revision = node.revision;
        view.level = level;
        view.points = static_cast<std::uint64_t>(node.pointCountNode);
        view.total = static_cast<std::uint64_t>(node.pointCountTotal);
        view.firstChild = next;
        for (qrb::pointcloud::IndexNode& child : node.children)
            if (child.id != 0) {
                ++view.children;
                waiting.emplace_back(std::move(child), level + 1);
            }
        next += view.children;
        m_hasLevelOfDetail = m_hasLevelOfDetail || (view.children > 0 && view.points > 0);
        m_deepest = std::max(m_deepest, level);
        m_nodes.push_back(view);
    }
}

const drawing::Box& NodeTree::box(std::uint32_t node) {
    ViewNode& asked = m_nodes[node];
    if (!asked.box)
        asked.box = m_space.boxOf(m_index, asked.id);
    return *asked.box;
}

}  // namespace tarvo::view
