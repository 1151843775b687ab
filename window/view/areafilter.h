// Filter expressions that select what lies within an area, seen from above.
#pragma once

#include "qrb/pointattribute.h"

#include <array>
#include <string>
#include <vector>

namespace tarvo::window {

using PlanePlace = std::array<double, 2>;

// Points whose first two elements lie within the rectangle, edges included, written with the digits
// that the attribute's resolution needs. corners: opposite ones.
std::string rectangleFilter(const qrb::pointcloud::PointAttribute& attribute,
                            const PlanePlace& corner, const PlanePlace& opposite);

// Points within the polygon, by the even-odd rule; its corners are given in turn, at least 3. The
// rectangle around it stands in front, so that the index can leave nodes out.
std::string polygonFilter(const qrb::pointcloud::PointAttribute& attribute,
                          const std::vector<PlanePlace>& corners);

}  // namespace tarvo::window
