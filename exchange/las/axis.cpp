#include "exchange/las/axis.h"

#include "exchange/advice.h"
#include "numbers/numbertext.h"

#include <algorithm>
#include <cmath>
#include <string>
#include <vector>

namespace tarvo::exchange::las {

namespace {

constexpr double leastNumber = -2147483648.0;
constexpr double greatestNumber = 2147483647.0;
constexpr int mostAxisDecimals = 9;
constexpr double exactAxisLimit = 9007199254740992.0;  // 2^53
// So far from its place on a grid a double lies by its own rounding, and that of the grid's begin.
constexpr double relativeTolerance = 1e-14;

// size: of the numbers that the value is the difference of.
bool isMultiple(double value, double step, double size) {
    const double steps = value / step;
    return std::abs(steps - std::round(steps)) * step <= relativeTolerance * size;
}

// A scale and the begin of its grid.
struct Grid {
    double step;
    double begin;
};

// The double nearest to the decimal number, where it is one.
double multiple(double step, std::uint64_t count) {
    const auto decimal = toDecimal(step);
    const double product = step * static_cast<double>(count);
    const double digits = decimal
                              ? static_cast<double>(decimal->mantissa) * static_cast<double>(count)
                              : exactAxisLimit;
    return digits < exactAxisLimit ? digits / static_cast<double>(powerOfTen(decimal->digits))
                                   : product;
}

// The decimal number that a sum of multiples of the step stands for, without the rounding of
// doubles.
double asDecimal(double value, const Grid& grid) {
    const auto step = toDecimal(grid.step);
    const auto begin = toDecimal(grid.begin);
    if (!step || !begin) {
        return value;
    }
    const auto unit = static_cast<double>(powerOfTen(std::max(step->digits, begin->digits)));
    const double digits = std::round(value * unit);
    return std::abs(digits) < exactAxisLimit ? digits / unit : value;
}

std::vector<Grid> grids(const Column& column, const ColumnSummary& values, const Spacing& spacing,
                        std::optional<double> scale) {
    if (scale) {
        return {{*scale, 0}};
    }
    std::vector<Grid> found;
    if (column.resolution > 0) {
        found.push_back({column.resolution, column.gridBegin});
    }
    if (values.decimals() >= 0 && values.decimals() <= mostAxisDecimals) {
        found.push_back({1 / static_cast<double>(powerOfTen(values.decimals())), 0});
    }
    if (spacing.steps > 1) {
        found.push_back({multiple(column.resolution, spacing.steps), spacing.first});
    }
    return found;
}

// Round numbers first.
std::optional<Affine> axisThrough(const Grid& grid, double low, double high) {
    const double middle = low + (high - low) / 2;
    const double onGrid =
        asDecimal(grid.begin + std::round((middle - grid.begin) / grid.step) * grid.step, grid);
    for (const double offset :
         {0.0, std::round(middle / 1000) * 1000, std::round(middle), onGrid}) {
        const double size = std::max({std::abs(low), std::abs(high), std::abs(grid.begin)});
        if (isMultiple(offset - grid.begin, grid.step, size) &&
            std::round((low - offset) / grid.step) >= leastNumber &&
            std::round((high - offset) / grid.step) <= greatestNumber) {
            return Affine(grid.step, offset);
        }
    }
    return std::nullopt;
}

}  // namespace

Axis axisFor(const Column& column, const Survey& survey, std::size_t index,
             std::optional<double> scale) {
    const ColumnSummary& values = survey.columns[index];
    if (values.hasNaN() || values.hasInfinity()) {
        throw core::Failure(
            "Some points have no " + column.descriptor() + ", which a LAS file can't say.",
            "Leave them out by a filter.");
    }
    const double low = values.count() > 0 ? values.minimum() : 0;
    const double high = values.count() > 0 ? values.maximum() : 0;
    const std::vector<Grid> candidates = grids(column, values, survey.spacings[index], scale);
    for (const Grid& grid : candidates) {
        if (const auto axis = axisThrough(grid, low, high)) {
            return {*axis, scale.has_value()};
        }
    }
    const auto& imported = survey.spacings[index].imported;
    if (!scale && imported && values.count() > 0) {
        return {*imported, true};
    }
    const std::string span = numbers::numberText(low) + " to " + numbers::numberText(high);
    if (candidates.empty()) {
        throw core::Failure("The values of " + column.descriptor() +
                                " lie on no grid, but LAS holds whole numbers of a step.",
                            advice().coordinateStep);
    }
    throw core::Failure("The values of " + column.descriptor() + ", " + span +
                            ", span more steps of " + numbers::numberText(candidates.front().step) +
                            " than a LAS file can number.",
                        advice().greaterStep);
}

}  // namespace tarvo::exchange::las
