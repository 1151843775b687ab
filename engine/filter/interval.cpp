#include "engine/filter/interval.h"

#include <algorithm>
#include <cmath>
#include <initializer_list>

namespace tarvo::engine::filter {

namespace {

bool fits(Wide value) {
    return value >= -wideLimit && value <= wideLimit;
}

Interval wholeOrReal(bool overflow, Wide low, Wide high, const Interval& real) {
    return overflow || !fits(low) || !fits(high) ? real : Interval::ofWhole(low, high);
}

bool infinite(const Interval& a) {
    return std::isinf(a.realLow) || std::isinf(a.realHigh);
}

// Of numbers without infinities: there inf - inf and 0 * inf make NaN within, not at the corners.
Interval hull(const Interval& a, const Interval& b, std::initializer_list<double> corners) {
    if (a.empty() || b.empty() || infinite(a) || infinite(b))
        return Interval::anything();
    const auto [low, high] = std::minmax(corners);
    if (std::isnan(low) || std::isnan(high))
        return Interval::anything();
    return Interval::ofReal(low, high, a.mayBeNaN || b.mayBeNaN);
}

Interval realAdd(const Interval& x, const Interval& y) {
    const Interval a = x.asReal(), b = y.asReal();
    return hull(a, b, {a.realLow + b.realLow, a.realHigh + b.realHigh});
}

Interval realMultiply(const Interval& x, const Interval& y) {
    const Interval a = x.asReal(), b = y.asReal();
    return hull(a, b,
                {a.realLow * b.realLow, a.realLow * b.realHigh, a.realHigh * b.realLow,
                 a.realHigh * b.realHigh});
}

Wide magnitude(const Interval& a) {
    return std::max(a.high < 0 ? -a.high : a.high, a.low < 0 ? -a.low : a.low);
}

}  // namespace

Interval Interval::ofWhole(Wide low, Wide high) {
    Interval result;
    result.whole = true;
    result.low = low;
    result.high = high;
    result.mayBeNaN = false;
    return result;
}

Interval Interval::ofReal(double low, double high, bool mayBeNaN) {
    Interval result;
    result.realLow = low;
    result.realHigh = high;
    result.mayBeNaN = mayBeNaN;
    return result;
}

Interval Interval::nothing() {
    return ofReal(std::numeric_limits<double>::infinity(), -std::numeric_limits<double>::infinity(),
                  true);
}

Interval Interval::asReal() const {
    if (!whole)
        return *this;
    return ofReal(static_cast<double>(low), static_cast<double>(high), false);
}

void Interval::include(const Interval& other) {
    if (whole && other.whole) {
        low = std::min(low, other.low);
        high = std::max(high, other.high);
        return;
    }
    const Interval a = asReal(), b = other.asReal();
    *this = ofReal(std::min(a.realLow, b.realLow), std::max(a.realHigh, b.realHigh),
                   a.mayBeNaN || b.mayBeNaN);
}

Type typeFor(const Interval& interval) {
    if (!interval.whole)
        return Type::Real;
    return interval.low >= INT64_MIN && interval.high <= INT64_MAX ? Type::Integer : Type::Wide;
}

Interval negate(const Interval& a) {
    if (a.whole)
        return Interval::ofWhole(-a.high, -a.low);
    return Interval::ofReal(-a.realHigh, -a.realLow, a.mayBeNaN);
}

Interval add(const Interval& a, const Interval& b) {
    if (!a.whole || !b.whole)
        return realAdd(a, b);
    return wholeOrReal(false, a.low + b.low, a.high + b.high, realAdd(a, b));
}

Interval subtract(const Interval& a, const Interval& b) {
    return add(a, negate(b));
}

Interval multiply(const Interval& a, const Interval& b) {
    if (!a.whole || !b.whole)
        return realMultiply(a, b);
    Wide corners[4] = {};
    const bool overflow = __builtin_mul_overflow(a.low, b.low, &corners[0]) ||
                          __builtin_mul_overflow(a.low, b.high, &corners[1]) ||
                          __builtin_mul_overflow(a.high, b.low, &corners[2]) ||
                          __builtin_mul_overflow(a.high, b.high, &corners[3]);
    if (overflow)
        return realMultiply(a, b);
    return wholeOrReal(false, *std::min_element(corners, corners + 4),
                       *std::max_element(corners, corners + 4), realMultiply(a, b));
}

Interval divide(const Interval& x, const Interval& y) {
    const Interval a = x.asReal(), b = y.asReal();
    if (b.realLow <= 0 && b.realHigh >= 0)
        return Interval::anything();
    return hull(a, b,
                {a.realLow / b.realLow, a.realLow / b.realHigh, a.realHigh / b.realLow,
                 a.realHigh / b.realHigh});
}

Interval modulo(const Interval& a, const Interval& b) {
    if (a.whole && b.whole) {
        const Wide divisor = magnitude(b);
        if (divisor == 0)
            return Interval::nothing();
        const Wide most = std::min(divisor - 1, magnitude(a));
        const Interval result = Interval::ofWhole(a.low < 0 ? -most : 0, a.high > 0 ? most : 0);
        if (b.low > 0 || b.high < 0)
            return result;
        // By 0 it is NaN, which only a double can be.
        return Interval::ofReal(static_cast<double>(result.low), static_cast<double>(result.high),
                                true);
    }
    const Interval x = a.asReal(), y = b.asReal();
    if (x.empty() || y.empty() || infinite(x) || infinite(y) || (y.realLow <= 0 && y.realHigh >= 0))
        return Interval::anything();
    const double most = std::min(std::max(std::abs(x.realLow), std::abs(x.realHigh)),
                                 std::max(std::abs(y.realLow), std::abs(y.realHigh)));
    return Interval::ofReal(x.realLow < 0 ? -most : 0, x.realHigh > 0 ? most : 0,
                            x.mayBeNaN || y.mayBeNaN);
}

Interval combine(Operator operation, const Interval& a, const Interval& b) {
    switch (operation) {
        case Operator::Add:
            return add(a, b);
        case Operator::Subtract:
            return subtract(a, b);
        case Operator::Multiply:
            return multiply(a, b);
        case Operator::Divide:
            return divide(a, b);
        default:
            return modulo(a, b);
    }
}

Truth isLess(const Interval& a, const Interval& b) {
    if (a.whole && b.whole)
        return {a.low < b.high, a.high >= b.low};
    const Interval x = a.asReal(), y = b.asReal();
    const bool some = !x.empty() && !y.empty();
    return {some && x.realLow < y.realHigh,
            x.mayBeNaN || y.mayBeNaN || (some && x.realHigh >= y.realLow)};
}

Truth isLessOrEqual(const Interval& a, const Interval& b) {
    if (a.whole && b.whole)
        return {a.low <= b.high, a.high > b.low};
    const Interval x = a.asReal(), y = b.asReal();
    const bool some = !x.empty() && !y.empty();
    return {some && x.realLow <= y.realHigh,
            x.mayBeNaN || y.mayBeNaN || (some && x.realHigh > y.realLow)};
}

Truth isEqual(const Interval& a, const Interval& b) {
    if (a.whole && b.whole)
        return {a.low <= b.high && b.low <= a.high,
                a.low != a.high || b.low != b.high || a.low != b.low};
    const Interval x = a.asReal(), y = b.asReal();
    const bool some = !x.empty() && !y.empty();
    return {some && x.realLow <= y.realHigh && y.realLow <= x.realHigh,
            x.mayBeNaN || y.mayBeNaN ||
                (some &&
                 (x.realLow != x.realHigh || y.realLow != y.realHigh || x.realLow != y.realLow))};
}

Truth isTrue(const Interval& a) {
    if (a.whole)
        return {a.low != 0 || a.high != 0, a.low <= 0 && a.high >= 0};
    return {!a.empty() && (a.realLow != 0 || a.realHigh != 0),
            a.mayBeNaN || (a.realLow <= 0 && a.realHigh >= 0)};
}

}  // namespace tarvo::engine::filter
