#include "exchange/table/fit.h"

#include "core/attributegrid.h"
#include "core/defaultattribute.h"
#include "core/error.h"
#include "numbers/numbertext.h"

#include <algorithm>
#include <cmath>
#include <optional>

namespace tarvo::exchange {

namespace {

constexpr double countableSteps = 4503599627370496.0;  // 2^52
// Up to here a range is widened to the next power of ten.
constexpr double widestRoom = 1e15;

// The last step of a grid may fall short of the maximum by the rounding of its limits: by all of a
// step where they have many more digits than what lies between them.
void reachMaximum(PointAttribute& definition) {
    const auto grid = core::gridOf(definition);
    if (grid && grid->kind() == numbers::Grid::Kind::Scaled &&
        definition.maximumValue - grid->value(grid->maximumCode()) > definition.resolution / 2) {
        definition.maximumValue += definition.resolution;
    }
}

// Files that are added to a database later hold values beyond those of its first file: the number,
// or the next power of ten above it; 0 for negative numbers.
double roomAbove(double highest) {
    if (highest < 0) {
        return 0;
    }
    double power = 1;
    while (power < highest && power < widestRoom) {
        power *= 10;
    }
    return std::max(power, highest);
}

double roomBelow(double lowest) {
    return lowest >= 0 ? 0 : -roomAbove(-lowest);
}

PointAttribute ownDefinition(const Column& column) {
    PointAttribute definition;
    definition.name = column.attribute;
    definition.title = column.title.empty() ? column.attribute : column.title;
    definition.description = column.description;
    definition.length = column.length;
    definition.storageClass = PointAttribute::VARIABLE;
    if (column.hasInvalid) {
        definition.invalidValue = column.invalidValue;
    }
    return definition;
}

// The range that is there already, with room for the values and for others like them.
double roomyMinimum(const PointAttribute& definition, const ColumnSummary& summary) {
    return summary.minimum() < definition.minimumValue
               ? std::min(definition.minimumValue, roomBelow(summary.minimum()))
               : definition.minimumValue;
}

double roomyMaximum(const PointAttribute& definition, const ColumnSummary& summary) {
    return summary.maximum() > definition.maximumValue
               ? std::max(definition.maximumValue, roomAbove(summary.maximum()))
               : definition.maximumValue;
}

void setUnrounded(PointAttribute& definition, const ColumnSummary& summary) {
    definition.resolution = 0;
    definition.minimumValue = roomyMinimum(definition, summary);
    definition.maximumValue = roomyMaximum(definition, summary);
}

// The resolution of the values themselves, over the range that is there already with room for
// them where that stays countable.
void setRange(PointAttribute& definition, const ColumnSummary& summary) {
    const int decimals = summary.decimals();
    if (decimals < 0 || summary.hasNaN()) {
        setUnrounded(definition, summary);
        return;
    }
    const double unit = static_cast<double>(powerOfTen(decimals));
    const auto countable = [&](double low, double high) {
        return high - low <= countableSteps / unit &&
               std::max(std::abs(low), std::abs(high)) <= countableSteps / unit;
    };
    const double low = roomyMinimum(definition, summary);
    const double high = roomyMaximum(definition, summary);
    if (summary.isInteger() && decimals == 0) {
        definition.resolution = 1;
        definition.minimumValue = std::floor(low);
        definition.maximumValue = std::ceil(high);
        // No double is 2^63-1; a range from -2^63 to 2^63 is that of the type.
        if (definition.minimumValue < 0 && definition.maximumValue == 0x1p63) {
            definition.minimumValue = -0x1p63;
        }
        return;
    }
    definition.resolution = 1 / unit;
    if (countable(low, high)) {
        definition.minimumValue = std::floor(low * unit) / unit;
        definition.maximumValue = std::ceil(high * unit) / unit;
    } else if (countable(summary.minimum(), summary.maximum())) {
        definition.minimumValue = summary.minimum();
        definition.maximumValue = summary.maximum();
    } else {
        setUnrounded(definition, summary);
    }
    reachMaximum(definition);
}

void settleDefault(PointAttribute& definition, const ColumnSummary& summary, DefaultFor use) {
    double& value = definition.defaultValue;
    if (value == definition.invalidValue ||
        (value >= definition.minimumValue && value <= definition.maximumValue &&
         !(use == DefaultFor::PointsThatAreThere && summary.hasNaN()))) {
        return;
    }
    if (use == DefaultFor::Nobody) {
        value = std::clamp(value, definition.minimumValue, definition.maximumValue);
    } else if (!std::isnan(definition.invalidValue) || definition.resolution == 0) {
        value = definition.invalidValue;  // unrounded numbers: NaN is one of them
    } else {
        definition.invalidValue = value;
    }
}

// The grid of coordinates with room for those of other files, since the definition of a primary
// attribute can't change when there are points: all that the file's format can hold; for texts, the
// range of the catalogue. Where that costs precision, the range of the points alone.
std::optional<ValueGrid> coordinateGrid(const Column& column, const ColumnSummary& summary,
                                        std::span<const Affine> axes) {
    double roomyLow = column.lowest;
    double roomyHigh = column.highest;
    double low = summary.hasNumbers() ? summary.minimum() : roomyLow;
    double high = summary.hasNumbers() ? summary.maximum() : roomyHigh;
    if (roomyLow > roomyHigh) {
        for (const char* name : {"tarvo.xyz", "tarvo.xyz_map"}) {
            const auto* const entry = catalogue::findAttribute(name);
            if (entry != nullptr && (roomyLow > roomyHigh || roomyLow > low || roomyHigh < high)) {
                roomyLow = entry->minimumValue;
                roomyHigh = entry->maximumValue;
            }
            if (!summary.hasNumbers()) {
                low = roomyLow;
                high = roomyHigh;
            }
        }
    }
    auto grid = commonGrid(axes, std::min(low, roomyLow), std::max(high, roomyHigh));
    if ((!grid || grid->rounding > 0) && summary.decimals() >= 0) {
        // The axes have no grid in common, but the points that there are have.
        const Affine decimal(1 / static_cast<double>(powerOfTen(summary.decimals())), 0);
        const auto ofPoints = commonGrid({&decimal, 1}, low, high);
        if (ofPoints && ofPoints->rounding == 0) {
            return ofPoints;
        }
    }
    const bool isFine = grid && std::all_of(axes.begin(), axes.end(), [&](const Affine& axis) {
                            return grid->exact || grid->resolution < std::abs(axis.scale());
                        });
    return isFine ? grid : commonGrid(axes, low, high);
}

// Numbers that are the invalid value need not lie within the range.
bool inRange(const PointAttribute& definition, double value) {
    return value == definition.invalidValue ||
           (value >= definition.minimumValue && value <= definition.maximumValue);
}

}  // namespace

bool holdsDecimals(const PointAttribute& definition, int decimals) {
    if (definition.resolution == 0) {
        return true;
    }
    if (decimals < 0) {
        return false;
    }
    // Steps per unit; a whole multiple of the power of ten means that decimals lie on steps.
    const double perUnit = 1 / definition.resolution;
    const double perDecimal = perUnit / static_cast<double>(powerOfTen(decimals));
    const double first = definition.minimumValue * perUnit;
    const auto isWhole = [](double value) {
        return std::abs(value - std::nearbyint(value)) <= 1e-9 * std::max(1.0, std::abs(value));
    };
    return perDecimal >= 0.5 && isWhole(perUnit) && isWhole(perDecimal) && isWhole(first);
}

PointAttribute fitAttribute(const Column& column, const ColumnSummary& summary, DefaultFor use) {
    const auto* const entry = catalogue::findAttribute(column.attribute);
    if (entry == nullptr) {
        PointAttribute definition = ownDefinition(column);
        if (use == DefaultFor::PointsThatAreThere && column.hasInvalid) {
            definition.defaultValue = column.invalidValue;
        }
        if (column.lowest <= column.highest) {
            definition.minimumValue = column.lowest;
            definition.maximumValue = column.highest;
        } else if (summary.count() > 0 && !summary.hasNumbers()) {
            definition.minimumValue = -widestRoom;
            definition.maximumValue = widestRoom;
        } else if (summary.count() > 0) {
            definition.minimumValue = roomBelow(summary.minimum());
            definition.maximumValue = roomAbove(summary.maximum());
        }
        setRange(definition, summary);
        settleDefault(definition, summary, use);
        return definition;
    }
    PointAttribute definition = core::defaultAttribute(*entry);
    definition.length = std::max(definition.length, column.length);
    if (column.hasInvalid && std::isnan(definition.invalidValue)) {
        definition.invalidValue = column.invalidValue;
    }
    if (summary.count() == 0) {
        return definition;
    }
    const bool fits = inRange(definition, summary.minimum()) &&
                      inRange(definition, summary.maximum()) &&
                      (!summary.hasNaN() || definition.resolution == 0) &&
                      holdsDecimals(definition, summary.decimals());
    if (fits) {
        return definition;
    }
    if (!holdsDecimals(definition, summary.decimals()) || summary.hasNaN()) {
        setRange(definition, summary);
    } else {
        // The range alone grows, in steps of the resolution.
        const auto steps = [&](double distance) {
            return std::ceil(distance / definition.resolution - 1e-9);
        };
        PointAttribute wider = definition;
        if (summary.minimum() < definition.minimumValue) {
            wider.minimumValue -=
                steps(definition.minimumValue - roomyMinimum(definition, summary)) *
                definition.resolution;
        }
        if (summary.maximum() > definition.maximumValue) {
            wider.maximumValue +=
                steps(roomyMaximum(definition, summary) - definition.maximumValue) *
                definition.resolution;
        }
        const double count = definition.resolution == 0
                                 ? 0
                                 : (wider.maximumValue - wider.minimumValue) / wider.resolution;
        if (definition.resolution == 0 || (count > countableSteps && definition.resolution != 1)) {
            setRange(definition, summary);
        } else {
            definition = wider;
            reachMaximum(definition);
        }
    }
    // Opaque is the largest value of a channel.
    if (entry->name == "tarvo.rgba" && entry->defaultValue == entry->maximumValue) {
        definition.maximumValue = definition.maximumValue > 255 ? 65535 : 255;
        definition.defaultValue = definition.maximumValue;
    }
    settleDefault(definition, summary, use);
    return definition;
}

FittedAttribute fitCoordinates(const Column& column, const ColumnSummary& summary,
                               std::span<const Affine> axes, DefaultFor use) {
    const auto* const entry = catalogue::findAttribute(column.attribute);
    PointAttribute definition = entry ? core::defaultAttribute(*entry) : ownDefinition(column);
    definition.length = column.length;
    const auto grid = coordinateGrid(column, summary, axes);
    if (!grid) {
        throw core::Failure(
            "The coordinates can't be stored without rounding: from " +
                numbers::numberText(summary.minimum()) + " to " +
                numbers::numberText(summary.maximum()) +
                " there are more steps between values than numbers of 64 bits can tell "
                "apart.",
            axes.size() > 3 ? "Import files of different scales or far offsets one by one."
                            : "Take out the points that lie farthest, or coordinates of needless "
                              "digits.");
    }
    definition.resolution = grid->resolution;
    definition.minimumValue = grid->minimum;
    definition.maximumValue = grid->maximum;
    reachMaximum(definition);
    settleDefault(definition, summary, use);
    return {definition, grid->rounding};
}

std::string roundingNote(double resolution) {
    return "The scale factors and offsets of the files have no decimal grid in common that holds "
           "all "
           "coordinates: they move by up to " +
           numbers::numberText(resolution / 2) + ", to steps of " +
           numbers::numberText(resolution) + ".";
}

}  // namespace tarvo::exchange
