#include "view/nodechoice.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <queue>

namespace tarvo::view {

namespace {

struct Candidate {
    double size;  // pixels between its points, roughly; infinite: they can't stand for those below
    std::uint32_t node;

    // The coarsest first; of several alike the one that comes first in the tree, so that the choice
    // is the same on every machine.
    friend bool operator<(const Candidate& a, const Candidate& b) {
        return a.size != b.size ? a.size < b.size : a.node > b.node;
    }
};

// Points lie on surfaces rather than in volumes: as dense as if the two longest sides of the box
// were filled with them.
double spacingOf(const ViewNode& node, const drawing::Box& box, const drawing::Camera& camera) {
    if (node.points == 0)
        return std::numeric_limits<double>::infinity();
    drawing::Vector size = box.size();
    std::sort(size.begin(), size.end());
    const double area = size[2] * std::max(size[1], size[2] / static_cast<double>(node.points));
    return std::sqrt(area / static_cast<double>(node.points)) * camera.pixelsPerUnit(box);
}

class Choice {
public:
    Choice(NodeTree& tree, const drawing::Camera& camera, const ChoiceLimits& limits)
        : m_tree(tree), m_camera(camera), m_limits(limits) {}

    std::vector<ChosenNode> make() {
        consider(0);
        while (!m_open.empty()) {
            const Candidate coarsest = m_open.top();
            m_open.pop();
            const ViewNode& node = m_tree.nodes()[coarsest.node];
            const bool isFine = coarsest.size <= m_limits.spacing;
            if (node.children == 0 || isFine || !mayRefine(node))
                m_chosen.push_back(coarsest);
            else
                refine(node);
        }
        std::sort(m_chosen.begin(), m_chosen.end(),
                  [](const Candidate& a, const Candidate& b) { return b < a; });
        // Without a level of detail there may be more than the limit.
        const std::uint64_t every = m_points / std::max<std::uint64_t>(m_limits.points, 1) + 1;
        std::vector<ChosenNode> chosen;
        chosen.reserve(m_chosen.size());
        for (const Candidate& one : m_chosen)
            if (m_tree.nodes()[one.node].points > 0)
                chosen.push_back({one.node, m_points > m_limits.points ? every : 1});
        return chosen;
    }

private:
    void consider(std::uint32_t node) {
        const drawing::Box& box = m_tree.box(node);
        if (!m_camera.mayShow(box))
            return;
        m_points += m_tree.nodes()[node].points;
        m_open.push({spacingOf(m_tree.nodes()[node], box, m_camera), node});
    }
    bool mayRefine(const ViewNode& node) const {
        if (node.points == 0)
            return true;
        std::uint64_t below = 0;
        for (std::uint32_t i = 0; i < node.children; ++i)
            below += m_tree.nodes()[node.firstChild + i].points;
        return m_points - node.points + below <= m_limits.points;
    }
    void refine(const ViewNode& node) {
        m_points -= node.points;
        for (std::uint32_t i = 0; i < node.children; ++i)
            consider(node.firstChild + i);
    }

    NodeTree& m_tree;
    const drawing::Camera& m_camera;
    const ChoiceLimits& m_limits;
    std::uint64_t m_points = 0;  // of what is open or chosen
    std::priority_queue<Candidate> m_open;
    std::vector<Candidate> m_chosen;
};

}  // namespace

std::vector<ChosenNode> chooseNodes(NodeTree& tree, const drawing::Camera& camera,
                                    const ChoiceLimits& limits) {
    if (tree.nodes().empty())
        return {};
    return Choice(tree, camera, limits).make();
}

}  // namespace tarvo::view
