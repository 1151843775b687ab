#include "core/attributegrid.h"

namespace tarvo::core {

std::optional<numbers::Grid> gridOf(const qrb::pointcloud::PointAttribute& attribute) {
    try {
        return numbers::Grid({attribute.minimumValue, attribute.maximumValue, attribute.resolution,
                              attribute.invalidValue});
    } catch (const numbers::Grid::Fault&) {
        return std::nullopt;
    }
}

}  // namespace tarvo::core
