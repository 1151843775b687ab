#include "window/panels/indexrows.h"

#include <algorithm>
#include <utility>

namespace tarvo::window {

namespace {

using qrb::pointcloud::IndexNode;

class Collector {
public:
    Collector(const WantedNodes& wanted, int maximum) : m_wanted(wanted), m_maximum(maximum) {}

    // Adds the node with what is wanted below; tells whether anything of it was.
    bool add(const IndexNode& node, int level, std::ptrdiff_t parent) {
        if (node.id == 0)
            return false;
        if (m_result.items() > m_maximum) {
            m_result.truncated = true;
            return false;
        }
        const int nodes = m_result.nodes, leaves = m_result.leaves, depth = m_result.depth;
        const std::size_t at = m_result.rows.size();
        const bool isMatch = !m_wanted.all && m_wanted.ids.contains(node.id);
        m_result.rows.push_back({&node, level, parent, isMatch});
        ++(node.children.empty() ? m_result.leaves : m_result.nodes);
        m_result.depth = std::max(m_result.depth, level);

        bool keep = m_wanted.all || isMatch;
        for (const IndexNode& child : node.children)
            if (add(child, level + 1, static_cast<std::ptrdiff_t>(at)))
                keep = true;
        if (!keep) {
            m_result.rows.resize(at);
            m_result.nodes = nodes;
            m_result.leaves = leaves;
            m_result.depth = depth;
        }
        return keep;
    }

    IndexRows take() { return std::move(m_result); }

private:
    const WantedNodes& m_wanted;
    const int m_maximum;
    IndexRows m_result;
};

}  // namespace

IndexRows indexRows(const IndexNode& root, const WantedNodes& wanted, int maximum) {
    Collector collector(wanted, maximum);
    // A root without id only holds the nodes together.
    if (root.id != 0) {
        collector.add(root, 0, -1);
    } else {
        for (const IndexNode& child : root.children)
            collector.add(child, 0, -1);
    }
    return collector.take();
}

}  // namespace tarvo::window
