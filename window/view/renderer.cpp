#include "window/view/renderer.h"

#include <algorithm>

namespace tarvo::window {

namespace {

// Of the distance to the middle: what is nearer to the eye is not shown.
constexpr double nearestPart = 1e-3;

}  // namespace

Depths depthsOf(const DrawingOrder& order) {
    const drawing::Camera& camera = order.camera;
    const double away = camera.distance();
    double nearest = away;
    double farthest = away;
    for (const auto& block : order.blocks)
        for (unsigned corner = 0; corner < 8 && !block->box.isEmpty(); ++corner) {
            const double depth =
                away - dot(block->box.corner(corner) - camera.middle(), camera.back());
            nearest = std::min(nearest, depth);
            farthest = std::max(farthest, depth);
        }
    // Points on the faces of boxes must not be cut off.
    const double slack = (farthest - nearest) * 0.01 + away * nearestPart;
    if (camera.isPerspective())
        return {std::max(nearest - slack, away * nearestPart), farthest + slack};
    return {nearest - slack, farthest + slack};
}

}  // namespace tarvo::window
