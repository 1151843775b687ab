#include "view/cloudspace.h"

#include "core/error.h"

#include <cmath>
#include <vector>

namespace tarvo::view {

namespace {

constexpr double farthest = 1e100;

}  // namespace

CloudSpace CloudSpace::of(const qrb::Pointcloud& database) {
    CloudSpace space;
    const auto& attributes = database.pointAttributes();
    space.attribute = attributes.primaryAttributeName();
    const qrb::pointcloud::PointAttribute attribute = attributes.get(space.attribute);
    if (attribute.length < 2)
        throw core::Failure("The points of the database have no place to be seen at.",
                            "Its primary attribute \"" + space.attribute +
                                "\" has one element; two or three are shown.");
    space.dimensions = attribute.length == 2 ? 2 : 3;
    space.unit = attribute.unitSymbol;
    const qrb::pointcloud::QueryStat index = database.stat();
    if (const qrb::pointcloud::IndexNode root = index.root(); root.pointCountTotal > 0)
        space.extent = space.boxOf(index, root.id);
    return space;
}

drawing::Box CloudSpace::boxOf(const qrb::pointcloud::QueryStat& index, std::uint32_t node) const {
    using qrb::pointcloud::DataType;
    drawing::Box box{{0, 0, 0}, {0, 0, 0}};
    // An element by its name, as attributes may have more of them.
    for (std::uint32_t i = 0; i < dimensions; ++i) {
        const std::string element = attribute + "[" + std::to_string(i) + "]";
        index.minimum(node, element, DataType::DOUBLE, &box.least[i], true);
        index.maximum(node, element, DataType::DOUBLE, &box.most[i], true);
        // Farther out the squares of distances are no numbers any more.
        if (!(std::abs(box.least[i]) <= farthest && std::abs(box.most[i]) <= farthest))
            return {};
    }
    return box;
}

}  // namespace tarvo::view
