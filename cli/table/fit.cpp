#include "cli/table/fit.h"

#include "cli/errors.h"

#include <algorithm>
#include <cmath>

namespace tarvo::cli {

namespace {

constexpr double countableSteps = 4503599627370496.0;  // 2^52

// Whether every number of this many decimals within the range of the definition is one of its
// values.
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

void setUnrounded(PointAttribute& definition, const ColumnSummary& summary) {
    definition.resolution = 0;
    definition.minimumValue = std::min(definition.minimumValue, summary.minimum());
    definition.maximumValue = std::max(definition.maximumValue, summary.maximum());
}

// The range and resolution of the values themselves, widened to the range that is there already
// where that stays countable.
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
    const double low = std::min(definition.minimumValue, summary.minimum());
    const double high = std::max(definition.maximumValue, summary.maximum());
    if (summary.isInteger() && decimals == 0) {
        definition.resolution = 1;
        definition.minimumValue = std::floor(low);
        definition.maximumValue = std::ceil(high);
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
}

void clampDefault(PointAttribute& definition) {
    if (!(definition.defaultValue == definition.invalidValue)) {
        definition.defaultValue =
            std::clamp(definition.defaultValue, definition.minimumValue, definition.maximumValue);
    }
}

void refuseInfinity(const Column& column, const ColumnSummary& summary) {
    if (summary.hasInfinity()) {
        throw Failure("The values of \"" + column.descriptor() + "\" contain infinite numbers.",
                      "A database can't hold them: replace them in the input file.");
    }
}

// Numbers that are the invalid value need not lie within the range.
bool inRange(const PointAttribute& definition, double value) {
    return value == definition.invalidValue ||
           (value >= definition.minimumValue && value <= definition.maximumValue);
}

}  // namespace

PointAttribute fromCatalogue(const qrb::defaults::AttributeEntry& entry) {
    PointAttribute definition;
    definition.name = entry.name;
    definition.title = entry.title;
    definition.tags = entry.tags;
    definition.description = entry.description;
    definition.unitSymbol = entry.unitSymbol;
    definition.length = entry.length;
    definition.resolution = entry.resolution;
    definition.minimumValue = entry.minimumValue;
    definition.maximumValue = entry.maximumValue;
    definition.defaultValue = entry.defaultValue;
    definition.invalidValue = entry.invalidValue;
    definition.namedValues = entry.namedValues;
    definition.storageClass = entry.storageClass;
    definition.compressionOptions = entry.compressionOptions;
    definition.lodSettings = entry.lodSettings;
    definition.scaleFactor = entry.scaleFactor;
    return definition;
}

PointAttribute fitAttribute(const Column& column, const ColumnSummary& summary) {
    refuseInfinity(column, summary);
    const auto* const entry = qrb::defaults::findAttribute(column.attribute);
    if (entry == nullptr) {
        PointAttribute definition = ownDefinition(column);
        if (summary.count() > 0) {
            definition.minimumValue = summary.minimum();
            definition.maximumValue = summary.maximum();
        }
        setRange(definition, summary);
        clampDefault(definition);
        return definition;
    }
    PointAttribute definition = fromCatalogue(*entry);
    definition.length = std::max(definition.length, column.length);
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
                steps(definition.minimumValue - summary.minimum()) * definition.resolution;
        }
        if (summary.maximum() > definition.maximumValue) {
            wider.maximumValue +=
                steps(summary.maximum() - definition.maximumValue) * definition.resolution;
        }
        const double count = definition.resolution == 0
                                 ? 0
                                 : (wider.maximumValue - wider.minimumValue) / wider.resolution;
        if (definition.resolution == 0 || (count > countableSteps && definition.resolution != 1)) {
            setRange(definition, summary);
        } else {
            definition = wider;
        }
    }
    // Opaque is the largest value of a channel.
    if (entry->name == "tarvo.rgba" && entry->defaultValue == entry->maximumValue) {
        definition.maximumValue = definition.maximumValue > 255 ? 65535 : 255;
        definition.defaultValue = definition.maximumValue;
    }
    clampDefault(definition);
    return definition;
}

PointAttribute fitCoordinates(const Column& column, const ColumnSummary& summary,
                              std::span<const Affine> axes) {
    refuseInfinity(column, summary);
    const auto* const entry = qrb::defaults::findAttribute(column.attribute);
    PointAttribute definition = entry ? fromCatalogue(*entry) : ownDefinition(column);
    definition.length = column.length;
    const auto grid = commonGrid(axes, summary.minimum(), summary.maximum());
    if (!grid) {
        throw Failure("The coordinates can't be stored without rounding: from " +
                          std::to_string(summary.minimum()) + " to " +
                          std::to_string(summary.maximum()) +
                          " there are too many steps of the files' scale factors.",
                      "Import files of different scales or far offsets one by one.");
    }
    definition.resolution = grid->resolution;
    definition.minimumValue = grid->minimum;
    definition.maximumValue = grid->maximum;
    clampDefault(definition);
    return definition;
}

}  // namespace tarvo::cli
