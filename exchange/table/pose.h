// Position and orientation of a scan: from its own coordinates to those of all scans.
#pragma once

#include <array>

namespace tarvo::exchange {

// Coordinates that were computed, with a pose or out of angles, are rounded to this, in their unit:
// far finer than any scanner measures, and a grid that a database can store them on.
inline constexpr double posedResolution = 1e-6;
inline constexpr const char* posedNote =
    "coordinates were computed by the poses or angles of scans and rounded to 0.000001.";

// The point on that grid, where doubles resolve it.
std::array<double, 3> roundedAsPosed(const std::array<double, 3>& point);

struct Pose {
    // Applied to a column: rotation[row][column].
    std::array<std::array<double, 3>, 3> rotation{{{1, 0, 0}, {0, 1, 0}, {0, 0, 1}}};
    std::array<double, 3> translation{};

    bool operator==(const Pose&) const = default;
    bool isIdentity() const { return *this == Pose(); }
    bool isFinite() const;
    // Whether different points stay different: the determinant is not 0.
    bool keepsApart() const;

    // Rounded as roundedAsPosed does; the point itself where the pose is the identity.
    std::array<double, 3> operator()(const std::array<double, 3>& point) const;
};

}  // namespace tarvo::exchange
