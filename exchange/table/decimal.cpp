#include "exchange/table/decimal.h"

#include "numbers/decimal.h"
#include "numbers/numbertext.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdlib>
#include <numeric>
#include <vector>

namespace tarvo::exchange {

namespace {

constexpr double maximumSteps = 4503599627370496.0;  // 2^52: leaves a bit for rounding
constexpr std::int64_t exactLimit = 1ll << 53;

// The mantissa with this many digits behind the point; nothing if it leaves 62 bits.
std::optional<std::int64_t> withDigits(const Decimal& value, int digits) {
    std::int64_t mantissa = value.mantissa;
    for (int i = value.digits; i < digits; ++i) {
        if (std::abs(mantissa) > (1ll << 62) / 10) {
            return std::nullopt;
        }
        mantissa *= 10;
    }
    return mantissa;
}

// A grid of step/unit through the multiples of step plus shift, around minimum and maximum.
std::optional<ValueGrid> gridOf(std::int64_t step, std::int64_t shift, std::int64_t unit,
                                double minimum, double maximum) {
    const double scale = static_cast<double>(unit);
    const double low = std::round(minimum * scale);
    const double high = std::round(maximum * scale);
    if (step <= 0 || std::abs(low) > exactLimit || std::abs(high) > exactLimit ||
        (high - low) / static_cast<double>(step) > maximumSteps) {
        return std::nullopt;
    }
    const auto floorTo = [&](double value) {
        const auto n = static_cast<std::int64_t>(value) - shift;
        const std::int64_t rest = ((n % step) + step) % step;
        return n - rest + shift;
    };
    ValueGrid grid;
    grid.resolution = static_cast<double>(step) / scale;
    const std::int64_t first = floorTo(low);
    const std::int64_t last = floorTo(high);
    grid.minimum = static_cast<double>(first) / scale;
    grid.maximum = static_cast<double>(last) / scale;
    return grid;
}

std::optional<ValueGrid> decimalGrid(std::span<const Affine> axes, double minimum, double maximum) {
    std::vector<Decimal> scales;
    std::vector<Decimal> offsets;
    int digits = 0;
    for (const Affine& axis : axes) {
        const auto scale = toDecimal(std::abs(axis.scale()));
        const auto offset = toDecimal(axis.offset());
        if (!scale || !offset) {
            return std::nullopt;
        }
        digits = std::max({digits, scale->digits, offset->digits});
        scales.push_back(*scale);
        offsets.push_back(*offset);
    }
    std::int64_t step = 0;
    std::int64_t first = 0;
    for (std::size_t i = 0; i < scales.size(); ++i) {
        const auto scale = withDigits(scales[i], digits);
        const auto offset = withDigits(offsets[i], digits);
        if (!scale || !offset) {
            return std::nullopt;
        }
        first = i == 0 ? *offset : first;
        step = std::gcd(std::gcd(step, *scale), *offset - first);
    }
    // Through zero in steps of a whole part of 1, a value is one exact division. Where that takes
    // too many steps, the grid starts at the offset.
    const std::int64_t unit = powerOfTen(digits);
    const std::int64_t throughZero = std::gcd(step, first);
    for (const std::int64_t candidate :
         {std::gcd(throughZero, unit), throughZero, std::gcd(step, unit), step}) {
        if (auto grid = gridOf(candidate, first % candidate, unit, minimum, maximum)) {
            return grid;
        }
    }
    return std::nullopt;
}

}  // namespace

std::optional<std::string> changedAsDouble(std::string_view text) {
    const bool isNegative = text.starts_with('-');
    if (isNegative || text.starts_with('+')) {
        text.remove_prefix(1);
    }
    text.remove_prefix(std::min(text.find_first_not_of('0'), text.size()));
    const auto isDigit = [](char c) { return c >= '0' && c <= '9'; };
    double value = 0;
    if (text.size() <= 15 || !std::all_of(text.begin(), text.end(), isDigit) ||
        std::from_chars(text.data(), text.data() + text.size(), value).ec != std::errc()) {
        return std::nullopt;
    }
    std::string digits;
    numbers::appendFixed(digits, value, 0);
    return digits == text ? std::nullopt : std::optional((isNegative ? "-" : "") + digits);
}

std::int64_t powerOfTen(int exponent) {
    std::int64_t power = 1;
    for (int i = 0; i < exponent; ++i) {
        power *= 10;
    }
    return power;
}

std::optional<Decimal> toDecimal(double value) {
    if (!std::isfinite(value)) {
        return std::nullopt;
    }
    const numbers::Decimal shortest = numbers::shortestDecimal(value);
    Decimal decimal{shortest.digits, -shortest.exponent};
    for (; decimal.digits < 0; ++decimal.digits) {
        if (std::abs(decimal.mantissa) > (1ll << 62) / 10) {
            return std::nullopt;
        }
        decimal.mantissa *= 10;
    }
    return decimal.digits > 18 ? std::nullopt : std::optional(decimal);
}

Affine::Affine(double scale, double offset) : m_scale(scale), m_offset(offset) {
    const auto scaleDecimal = toDecimal(scale);
    const auto offsetDecimal = toDecimal(offset);
    if (!scaleDecimal || !offsetDecimal || scaleDecimal->mantissa == 0) {
        return;
    }
    const int digits = std::max(scaleDecimal->digits, offsetDecimal->digits);
    const auto step = withDigits(*scaleDecimal, digits);
    const auto shift = withDigits(*offsetDecimal, digits);
    if (!step || !shift || std::abs(*shift) >= exactLimit) {
        return;
    }
    m_exact = true;
    m_step = *step;
    m_shift = *shift;
    m_limit = (exactLimit - std::abs(*shift)) / std::abs(*step);
    m_unit = static_cast<double>(powerOfTen(digits));
}

std::uint64_t countBlurred(const Affine& axis, std::span<const double> values) {
    const double sharpest = axis.sharpest();
    return static_cast<std::uint64_t>(std::ranges::count_if(
        values, [sharpest](double value) { return std::abs(value) > sharpest; }));
}

std::string blurredNote(std::uint64_t count) {
    return std::to_string(count) + (count == 1 ? " value is" : " values are") +
           " so far from 0 that steps of the file's scale can't be told apart there: what was read "
           "is the nearest number of 64 bits, which several of them may share.";
}

std::optional<ValueGrid> commonGrid(std::span<const Affine> axes, double minimum, double maximum) {
    if (auto grid = decimalGrid(axes, minimum, maximum)) {
        return grid;
    }
    const bool alike = std::all_of(axes.begin(), axes.end(), [&](const Affine& axis) {
        return axis.scale() == axes.front().scale() && axis.offset() == axes.front().offset();
    });
    const double scale = std::abs(axes.front().scale());
    if (alike && (maximum - minimum) / scale <= maximumSteps) {
        return ValueGrid{scale, minimum, maximum, false};
    }
    // The finest decimal step that the range allows. It must be far finer than every scale, so
    // that each raw number can be told from its neighbours.
    double finest = scale;
    for (const Affine& axis : axes) {
        finest = std::min(finest, std::abs(axis.scale()));
    }
    for (int digits = 18; digits >= 0; --digits) {
        const std::int64_t unit = powerOfTen(digits);
        if (finest * static_cast<double>(unit) < 256) {
            return std::nullopt;
        }
        if (auto grid = gridOf(1, 0, unit, minimum, maximum)) {
            grid->exact = false;
            grid->rounding = grid->resolution / 2;
            // One step of room for what is rounded.
            const auto perUnit = static_cast<double>(unit);
            grid->minimum = (std::round(grid->minimum * perUnit) - 1) / perUnit;
            grid->maximum = (std::round(grid->maximum * perUnit) + 1) / perUnit;
            return grid;
        }
    }
    return std::nullopt;
}

}  // namespace tarvo::exchange
