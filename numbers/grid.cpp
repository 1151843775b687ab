#include "numbers/grid.h"

#include "numbers/numbertext.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <limits>

namespace tarvo::numbers {

namespace {

constexpr double twoTo50 = 1125899906842624.0;
constexpr double twoTo53 = 9007199254740992.0;
constexpr double twoTo63 = 9223372036854775808.0;
constexpr double twoTo64 = 18446744073709551616.0;
constexpr std::uint64_t topBit = 1ull << 63;

// The one code of all NaNs.
std::uint64_t notANumberCode() {
    return orderedBits(std::numeric_limits<double>::quiet_NaN());
}

// A double can't hold 2^64-1: who writes the largest unsigned number gets 2^64.
Grid::Wide wholeNumber(double value) {
    return value == twoTo64 ? static_cast<Grid::Wide>(~0ull) : static_cast<Grid::Wide>(value);
}

bool isWhole(double value) {
    return std::trunc(value) == value && value >= -twoTo63 && value <= twoTo64;
}

unsigned bytesFor(std::uint64_t code) {
    return code <= 0xff ? 1 : code <= 0xffff ? 2 : code <= 0xffffffff ? 4 : 8;
}

}  // namespace

std::uint64_t orderedBits(double value) {
    const auto bits = std::bit_cast<std::uint64_t>(value);
    return bits & topBit ? ~bits : bits | topBit;
}

double fromOrderedBits(std::uint64_t bits) {
    return std::bit_cast<double>(bits & topBit ? bits & ~topBit : ~bits);
}

Grid::Grid(const Definition& definition)
    : m_hasInvalid(!std::isnan(definition.invalid)),
      m_invalidValue(definition.invalid),
      m_minimum(definition.minimum),
      m_maximum(definition.maximum),
      m_resolution(definition.resolution) {
    if (!std::isfinite(m_minimum) || !std::isfinite(m_maximum))
        throw Fault("has a limit that is not a finite number.", limitsText());
    if (m_minimum > m_maximum)
        throw Fault("has a minimum above its maximum.", limitsText());
    if (!std::isfinite(m_resolution) || m_resolution < 0)
        throw Fault(
            "has a resolution of " + numberText(m_resolution) +
                ", which is neither positive nor 0.",
            "Give the distance of two neighbouring values, or 0 for floating-point numbers.");
    if (m_resolution == 0) {
        makeFloat();
        return;
    }
    if (m_resolution == 1 && isWhole(m_minimum) && isWhole(m_maximum))
        makeInteger();
    else
        makeScaled();
    if (m_hasInvalid)
        placeInvalid();
    m_width = bytesFor(m_hasInvalid ? std::max(m_invalidCode, m_maximumCode) : m_maximumCode);
}

void Grid::makeFloat() {
    m_kind = Kind::Float;
    m_width = 8;
    m_hasInvalid = true;
    m_invalidCode = notANumberCode();
    m_maximumCode = orderedBits(m_maximum + 0.0);
}

void Grid::makeInteger() {
    m_kind = Kind::Integer;
    m_minimumInteger = wholeNumber(m_minimum);
    Wide largest = wholeNumber(m_maximum);
    // A double can't hold 2^63-1 either.
    if (m_minimum == -twoTo63 && m_maximum == twoTo63)
        --largest;
    largest -= m_minimumInteger;
    if (largest > static_cast<Wide>(~0ull))
        throw Fault("has a range that doesn't fit into 64 bits.", limitsText());
    m_maximumCode = static_cast<std::uint64_t>(largest);
}

void Grid::makeScaled() {
    m_kind = Kind::Scaled;
    const double steps = (m_maximum - m_minimum) / m_resolution;
    // Half a step at most; what rounding takes away from a large quotient is given back.
    const double slack = std::min(0.5, std::max(1e-6, steps * 1e-15));
    if (!(steps + slack < twoTo53))
        throw Fault("has a range of more than 2^53 steps.",
                    limitsText() + " Narrow the range, or make the resolution coarser or 0.");
    m_maximumCode = static_cast<std::uint64_t>(steps + slack);

    // A resolution of 0.01 is not one hundredth but the double beside it; dividing by 100 gives the
    // double nearest to the decimal number, multiplying by 0.01 does not.
    const double inverse = std::round(1 / m_resolution);
    const double farthest = std::max(std::abs(m_minimum), std::abs(m_maximum)) / m_resolution;
    const double error = std::abs(inverse * m_resolution - 1);
    m_isFine = farthest >= twoTo50;
    if (inverse >= 1 && inverse < twoTo53 && error <= 1e-9 &&
        (m_resolution == 1 / inverse || error * farthest < 0.1))
        m_inverse = inverse;
    if (m_inverse == 0)
        return;
    const double first = m_minimum * m_inverse;
    const double whole = std::round(first);
    if (std::abs(first - whole) <= std::max(1e-6, std::abs(whole) * 1e-15) &&
        std::abs(whole) <= twoTo53 &&
        std::abs(whole + static_cast<double>(m_maximumCode)) <= twoTo53) {
        m_wholeMinimum = true;
        m_firstStep = static_cast<std::int64_t>(whole);
    }
}

std::optional<std::uint64_t> Grid::codeOnGrid(double value) const {
    if (!(value >= m_minimum && value <= m_maximum))
        return std::nullopt;
    if (m_kind == Kind::Integer) {
        if (!isWhole(value))
            return std::nullopt;
        const Wide offset = wholeNumber(value) - m_minimumInteger;
        return static_cast<std::uint64_t>(std::min(offset, static_cast<Wide>(m_maximumCode)));
    }
    const double step = stepOf(value);
    const auto code = static_cast<std::uint64_t>(step + 0.5);
    const bool onGrid = code <= m_maximumCode &&
                        std::abs(step - std::round(step)) <= std::max(1e-6, std::abs(step) * 1e-15);
    return onGrid ? std::optional(code) : std::nullopt;
}

void Grid::placeInvalid() {
    if (const auto code = codeOnGrid(m_invalidValue)) {
        m_hasInvalid = false;  // what the grid makes of it, so that values keep their order
        m_invalidValue = value(*code);
        m_hasInvalid = true;
        m_invalidCode = *code;
    } else if (m_maximumCode == ~0ull) {
        throw Fault(
            "has no code left for its invalid value " + numberText(m_invalidValue) + ".",
            limitsText() + " Choose an invalid value within the range, or narrow the range.");
    } else {
        m_invalidCode = m_maximumCode + 1;
    }
}

std::string Grid::limitsText() const {
    return "Its range is " + numberText(m_minimum) + " to " + numberText(m_maximum) +
           " with a resolution of " + numberText(m_resolution) + ".";
}

double Grid::stepOf(double value) const {
    if (m_wholeMinimum)
        return value * m_inverse - static_cast<double>(m_firstStep);
    return (value - m_minimum) / m_resolution;
}

double Grid::value(std::uint64_t code) const {
    if (m_hasInvalid && code == m_invalidCode)
        return m_invalidValue;
    if (m_kind == Kind::Float)
        return fromOrderedBits(code);
    if (m_kind == Kind::Integer)
        return static_cast<double>(m_minimumInteger + static_cast<Wide>(code));
    if (m_wholeMinimum)
        return static_cast<double>(
                   static_cast<std::int64_t>(static_cast<std::uint64_t>(m_firstStep) + code)) /
               m_inverse;
    return m_minimum + static_cast<double>(code) * m_resolution;
}

template <typename Code>
void Grid::values(std::span<const Code> codes, double* out) const {
    // One loop per kind, without a branch in it, then the invalid codes.
    if (m_kind == Kind::Scaled && m_wholeMinimum) {
        const auto first = static_cast<std::uint64_t>(m_firstStep);
        const double inverse = m_inverse;
        for (std::size_t i = 0; i < codes.size(); ++i)
            out[i] = static_cast<double>(static_cast<std::int64_t>(first + codes[i])) / inverse;
    } else if (m_kind == Kind::Scaled) {
        for (std::size_t i = 0; i < codes.size(); ++i)
            out[i] = m_minimum + static_cast<double>(codes[i]) * m_resolution;
    } else if (m_kind == Kind::Float) {
        for (std::size_t i = 0; i < codes.size(); ++i)
            out[i] = fromOrderedBits(codes[i]);
    } else {
        for (std::size_t i = 0; i < codes.size(); ++i)
            out[i] = static_cast<double>(m_minimumInteger + static_cast<Wide>(codes[i]));
    }
    if (m_hasInvalid)
        for (std::size_t i = 0; i < codes.size(); ++i)
            out[i] = codes[i] == m_invalidCode ? m_invalidValue : out[i];
}

template void Grid::values<std::uint8_t>(std::span<const std::uint8_t>, double*) const;
template void Grid::values<std::uint16_t>(std::span<const std::uint16_t>, double*) const;
template void Grid::values<std::uint32_t>(std::span<const std::uint32_t>, double*) const;
template void Grid::values<std::uint64_t>(std::span<const std::uint64_t>, double*) const;

void Grid::values(std::span<const std::uint64_t> codes, double* out) const {
    values<std::uint64_t>(codes, out);
}

Grid::Wide Grid::integerValue(std::uint64_t code) const {
    if (invalidIsOffGrid() && code == m_invalidCode && isWhole(m_invalidValue))
        return wholeNumber(m_invalidValue);
    return m_minimumInteger + static_cast<Wide>(code);
}

bool Grid::hasWholeValues() const {
    return m_kind == Kind::Integer && (!m_hasInvalid || isWhole(m_invalidValue));
}

Grid::Wide Grid::leastInteger() const {
    return invalidIsOffGrid() ? std::min(m_minimumInteger, wholeNumber(m_invalidValue))
                              : m_minimumInteger;
}

Grid::Wide Grid::greatestInteger() const {
    const Wide last = m_minimumInteger + static_cast<Wide>(m_maximumCode);
    return invalidIsOffGrid() ? std::max(last, wholeNumber(m_invalidValue)) : last;
}

std::optional<std::uint64_t> Grid::find(double value) const {
    if (m_hasInvalid && value == m_invalidValue)
        return m_invalidCode;
    if (m_kind == Kind::Float) {
        if (std::isnan(value))
            return m_invalidCode;
        if (!(value >= m_minimum && value <= m_maximum))
            return std::nullopt;
        return orderedBits(value + 0.0);  // -0 becomes 0
    }
    // A little more than half a step: who writes exactly that far outside is let in.
    const double tolerance = m_resolution * (0.5 + 1e-6);
    if (!(value >= m_minimum - tolerance && value <= m_maximum + tolerance))
        return std::nullopt;
    if (m_kind == Kind::Integer) {
        const Wide whole = static_cast<Wide>(std::round(value)) - m_minimumInteger;
        return static_cast<std::uint64_t>(
            std::clamp(whole, Wide(0), static_cast<Wide>(m_maximumCode)));
    }
    const double step = stepOf(value);
    const std::uint64_t code =
        step <= 0 ? 0 : std::min(static_cast<std::uint64_t>(step + 0.5), m_maximumCode);
    return m_isFine ? nearestBeside(code, value) : code;
}

bool Grid::findAll(std::span<const double> values, std::uint64_t* codes) const {
    if (m_kind == Kind::Integer || m_isFine)
        return false;
    unsigned special = 0;
    // A loop for each kind, without a branch in it.
    const auto findEach = [&](auto codeOf) {
        for (std::size_t i = 0; i < values.size(); ++i) {
            const double value = values[i];
            const bool isInside = value >= m_minimum && value <= m_maximum;
            special |= !isInside | (value == m_invalidValue);
            codes[i] = codeOf(isInside ? value : m_minimum);
            special |= codes[i] > m_maximumCode;
        }
    };
    const auto rounded = [](double step) {
        return static_cast<std::uint64_t>(static_cast<std::int64_t>(step + 0.5));
    };
    if (m_kind == Kind::Float)
        findEach([](double value) { return orderedBits(value + 0.0); });
    else if (m_wholeMinimum)
        findEach([=, inverse = m_inverse, first = static_cast<double>(m_firstStep)](double value) {
            return rounded(value * inverse - first);
        });
    else
        findEach([=, minimum = m_minimum, resolution = m_resolution](double value) {
            return rounded((value - minimum) / resolution);
        });
    return special == 0;
}

bool Grid::findAll(std::span<const std::int64_t> values, std::uint64_t* codes) const {
    constexpr auto least = static_cast<Wide>(std::numeric_limits<std::int64_t>::min());
    constexpr auto greatest = static_cast<Wide>(std::numeric_limits<std::int64_t>::max());
    if (m_minimumInteger < least || m_minimumInteger > greatest)
        return false;
    // A whole number on the grid has its place there as the invalid value, too.
    const auto minimum = static_cast<std::int64_t>(m_minimumInteger);
    unsigned special = 0;
    for (std::size_t i = 0; i < values.size(); ++i) {
        codes[i] = static_cast<std::uint64_t>(values[i]) - static_cast<std::uint64_t>(minimum);
        special |= (values[i] < minimum) | (codes[i] > m_maximumCode);
    }
    return special == 0;
}

std::uint64_t Grid::nearestBeside(std::uint64_t code, double value) const {
    const auto distance = [&](std::uint64_t at) { return std::abs(this->value(at) - value); };
    std::uint64_t nearest = code;
    if (code > 0 && distance(code - 1) < distance(nearest))
        nearest = code - 1;
    if (code < m_maximumCode && distance(code + 1) < distance(nearest))
        nearest = code + 1;
    return nearest;
}

std::optional<std::uint64_t> Grid::find(Wide value) const {
    if (m_hasInvalid && isWhole(m_invalidValue) && value == wholeNumber(m_invalidValue))
        return m_invalidCode;
    const Wide offset = value - m_minimumInteger;
    if (offset < 0 || offset > static_cast<Wide>(m_maximumCode))
        return std::nullopt;
    return static_cast<std::uint64_t>(offset);
}

template <typename Reached>
Grid::Bound Grid::firstCode(Reached reached) const {
    // Values grow with codes: a binary search over value() itself can't disagree with it.
    std::uint64_t low = m_kind == Kind::Float ? orderedBits(m_minimum) : 0;
    std::uint64_t high = m_maximumCode;
    if (!reached(value(high)))
        return {m_maximumCode == ~0ull ? m_maximumCode : m_maximumCode + 1, true};
    while (low < high) {
        const std::uint64_t middle = low + (high - low) / 2;
        if (reached(value(middle)))
            high = middle;
        else
            low = middle + 1;
    }
    return {low, false};
}

Grid::Bound Grid::firstAtLeast(double bound) const {
    return firstCode([bound](double value) { return value >= bound; });
}

Grid::Bound Grid::firstAbove(double bound) const {
    return firstCode([bound](double value) { return value > bound; });
}

}  // namespace tarvo::numbers
