// What the points are that go into a LAS file, found by reading them once: the format and the
// fields are chosen so that they hold every value.
#pragma once

#include "exchange/import/importsteps.h"
#include "exchange/table/summary.h"

#include <cstdint>
#include <optional>
#include <vector>

namespace tarvo::exchange::las {

// Steps of the scan angle in the point formats 6 to 10, in degrees.
inline constexpr double angleStep = 0.006;

// How the values of a coordinate lie on its grid.
struct Spacing {
    double first = 0;
    // The most steps of the grid such that all values lie a multiple of them from the first; 0: all
    // are the same.
    std::uint64_t steps = 0;
    // The axis of the file that was imported, as long as it gives every value to half a step.
    std::optional<Affine> imported;
};

struct Survey {
    std::uint64_t pointCount = 0;
    std::vector<ColumnSummary> columns;  // as those of the source
    std::vector<char> areSingles;        // per column: whether a float holds every value
    std::vector<Spacing> spacings;       // per column; that of coordinates is measured
    bool hasAngleSteps = true;           // all scan angles are whole multiples of angleStep
};

// The item "las.header" of the source tells the axes of the file that was imported. Reads the
// source
Survey surveyPoints(PointSource& source, const ImportProgress& progress);

// Whether the values can be written as whole numbers.
inline bool isWhole(const ColumnSummary& summary) {
    return summary.isInteger() ||
           (summary.decimals() == 0 && !summary.hasNaN() && !summary.hasInfinity());
}

}  // namespace tarvo::exchange::las
