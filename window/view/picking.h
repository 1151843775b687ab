// Which point is meant by a place on the screen.
#pragma once

#include "drawing/camera.h"
#include "view/stream.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <vector>

namespace tarvo::window {

struct PickedPoint {
    std::uint64_t id = 0;
    drawing::Vector place{};
    double depth = 0;  // as of Projected
};

// Of the points whose middles lie within so many pixels of the place on the screen the one that is
// nearest to it, and of those that lie as near, within a pixel, the one that is nearest to the eye.
// Time is bounded by the points of the blocks that are seen there.
std::optional<PickedPoint> pickPoint(
    const std::vector<std::shared_ptr<const view::PointBlock>>& blocks,
    const drawing::Camera& camera, double x, double y, double radius);

}  // namespace tarvo::window
