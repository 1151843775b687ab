#include "window/view/picking.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace tarvo::window {

namespace {

// Whether the box's corners are seen around the place, no farther than the radius; also where one
// of them is not seen.
bool mayLieThere(const drawing::Box& box, const drawing::Camera& camera, double x, double y,
                 double radius) {
    double left = std::numeric_limits<double>::infinity();
    double top = left;
    double right = -left;
    double bottom = -left;
    for (unsigned corner = 0; corner < 8; ++corner) {
        const auto seen = camera.project(box.corner(corner));
        if (!seen)
            return true;
        left = std::min(left, seen->x);
        right = std::max(right, seen->x);
        top = std::min(top, seen->y);
        bottom = std::max(bottom, seen->y);
    }
    return x >= left - radius && x <= right + radius && y >= top - radius && y <= bottom + radius;
}

}  // namespace

std::optional<PickedPoint> pickPoint(
    const std::vector<std::shared_ptr<const view::PointBlock>>& blocks,
    const drawing::Camera& camera, double x, double y, double radius) {
    std::optional<PickedPoint> picked;
    double best = radius;
    for (const auto& block : blocks) {
        if (!mayLieThere(block->box, camera, x, y, radius))
            continue;
        for (std::size_t i = 0; i < block->places.size(); ++i) {
            const auto& local = block->places[i];
            const drawing::Vector place =
                block->origin + drawing::Vector{local[0], local[1], local[2]};
            const auto seen = camera.project(place);
            if (!seen)
                continue;
            const double right = seen->x - x;
            const double down = seen->y - y;
            const double square = right * right + down * down;
            if (square > radius * radius)
                continue;
            const double step = std::floor(std::sqrt(square));
            if (!picked || step < best || (step == best && seen->depth < picked->depth)) {
                picked = {block->ids[i], place, seen->depth};
                best = step;
            }
        }
    }
    return picked;
}

}  // namespace tarvo::window
