#include "exchange/table/pose.h"

#include <cmath>

namespace tarvo::exchange {

namespace {

double rounded(double value) {
    constexpr double perUnit = 1 / posedResolution;
    const double steps = value * perUnit;
    return std::abs(steps) < 0x1p52 ? std::nearbyint(steps) / perUnit : value;
}

}  // namespace

std::array<double, 3> roundedAsPosed(const std::array<double, 3>& point) {
    return {rounded(point[0]), rounded(point[1]), rounded(point[2])};
}

bool Pose::isFinite() const {
    bool finite = true;
    for (std::size_t i = 0; i < 3; ++i) {
        finite &= std::isfinite(translation[i]);
        for (const double value : rotation[i]) {
            finite &= std::isfinite(value);
        }
    }
    return finite;
}

bool Pose::keepsApart() const {
    const auto& [x, y, z] = rotation;
    return x[0] * (y[1] * z[2] - y[2] * z[1]) - x[1] * (y[0] * z[2] - y[2] * z[0]) +
               x[2] * (y[0] * z[1] - y[1] * z[0]) !=
           0;
}

std::array<double, 3> Pose::operator()(const std::array<double, 3>& point) const {
    if (isIdentity()) {
        return point;
    }
    std::array<double, 3> moved{};
    for (std::size_t i = 0; i < 3; ++i) {
        moved[i] = rotation[i][0] * point[0] + rotation[i][1] * point[1] +
                   rotation[i][2] * point[2] + translation[i];
    }
    return roundedAsPosed(moved);
}

}  // namespace tarvo::exchange
