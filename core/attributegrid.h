// The values that an attribute can hold.
#pragma once

#include "numbers/grid.h"
#include "qrb/pointattribute.h"

#include <optional>

namespace tarvo::core {

// Nothing where the numbers of the definition make no grid.
std::optional<numbers::Grid> gridOf(const qrb::pointcloud::PointAttribute& attribute);

}  // namespace tarvo::core
