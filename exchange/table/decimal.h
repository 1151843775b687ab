// Decimal numbers as they stand in files: 0.01 means one hundredth, not the double beside it.
// Coordinates are computed in whole multiples of a power of ten and rounded once, so that a value
// read back is the double nearest to the decimal number.
#pragma once

#include <cmath>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace tarvo::exchange {

// mantissa / 10^digits
struct Decimal {
    std::int64_t mantissa = 0;
    int digits = 0;  // 0 to 18
};

// The shortest decimal number that reads back as this double; nothing for numbers that have none
// within 18 digits before and after the point.
std::optional<Decimal> toDecimal(double value);

// The number that a text of a sign at most and digits becomes as a double, with all its digits,
// where that is another one; nothing for numbers that a double holds, and for other texts.
std::optional<std::string> changedAsDouble(std::string_view text);

// 10^exponent for 0 to 18.
std::int64_t powerOfTen(int exponent);

// value = raw * scale + offset for whole raw numbers, correctly rounded where the decimal
// meanings of scale and offset allow it.
class Affine {
public:
    Affine() = default;
    Affine(double scale, double offset);

    double scale() const { return m_scale; }
    double offset() const { return m_offset; }

    // Beyond that doubles lie farther apart than the scale: neighbouring raw numbers may have the
    // same value.
    double sharpest() const { return std::abs(m_scale) * 0x1p53; }

    // One value; raw is any 64-bit number.
    double operator()(std::int64_t raw) const {
        if (m_exact && raw >= -m_limit && raw <= m_limit) {
            return static_cast<double>(raw * m_step + m_shift) / m_unit;
        }
        return static_cast<double>(raw) * m_scale + m_offset;
    }

private:
    double m_scale = 1;
    double m_offset = 0;
    bool m_exact = false;
    std::int64_t m_step = 1;   // scale in units
    std::int64_t m_shift = 0;  // offset in units
    std::int64_t m_limit = 0;  // up to here raw * step + shift stays below 2^53
    double m_unit = 1;         // units per 1
};

// How many of the values lie beyond the sharpest of their axis.
std::uint64_t countBlurred(const Affine& axis, std::span<const double> values);
// What a user has to know of them; count: 1 at least.
std::string blurredNote(std::uint64_t count);

// The grid of stored values: minimum + n * resolution.
struct ValueGrid {
    double resolution = 1;
    double minimum = 0;
    double maximum = 0;
    bool exact = true;    // false: values keep their raw number, but not their last binary digit
    double rounding = 0;  // so far values move at most, besides that digit
};

// The coarsest grid that holds every value raw * scale + offset of all these axes and reaches
// from minimum to maximum, two values of the axes. Nothing: there is none of less than 2^53 steps.
std::optional<ValueGrid> commonGrid(std::span<const Affine> axes, double minimum, double maximum);

}  // namespace tarvo::exchange
