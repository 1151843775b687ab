// Which nodes are drawn, so that the picture is as fine as the screen and no finer.
#pragma once

#include "drawing/camera.h"
#include "view/nodetree.h"

#include <cstdint>
#include <vector>

namespace tarvo::view {

struct ChosenNode {
    std::uint32_t node = 0;   // its place in the tree
    std::uint64_t every = 1;  // of its points, the first and each n-th after it
};

// What limits a picture.
struct ChoiceLimits {
    std::uint64_t points = UINT64_MAX;
    // A node whose points lie as dense as this on the screen needs nothing finer, pixels.
    double spacing = 0.7;
};

// A node stands for all below it; where it has no points of its own, the nodes below do. The
// largest on the screen come first. Where a database has no level of detail, and more points than
// the limit, an even part of all leaves that may be seen. Throws qrb::Error.
std::vector<ChosenNode> chooseNodes(NodeTree& tree, const drawing::Camera& camera,
                                    const ChoiceLimits& limits);

}  // namespace tarvo::view
