// Interval arithmetic over the numbers of a filter: what values an expression can take, given what
// its elements can take. Sound for the rounded operations of the evaluation, because rounding to
// nearest keeps order: the rounded bound bounds the rounded values.
#pragma once

#include "engine/filter/syntax.h"

#include <limits>

namespace tarvo::engine::filter {

using Wide = schema::Grid::Wide;

// The type in which a value is computed. Integers are exact: those that may leave 64 bits are
// computed in 128, those that may leave 2^126 as doubles.
enum class Type : std::uint8_t { Integer, Wide, Real };

inline constexpr Wide wideLimit = Wide(1) << 126;

struct Interval {
    bool whole = false;  // then [low, high], else [realLow, realHigh]
    Wide low = 0;
    Wide high = 0;
    double realLow = -std::numeric_limits<double>::infinity();
    double realHigh = std::numeric_limits<double>::infinity();
    bool mayBeNaN = true;  // only without whole

    static Interval ofWhole(Wide low, Wide high);
    static Interval ofReal(double low, double high, bool mayBeNaN);
    static Interval anything() { return {}; }
    static Interval nothing();  // no number; NaN only

    // Whether no number is in it.
    bool empty() const { return !whole && !(realLow <= realHigh); }
    Interval asReal() const;
    void include(const Interval& other);
};

// The smallest type that holds every value of the interval.
Type typeFor(const Interval& interval);

Interval negate(const Interval& a);
Interval add(const Interval& a, const Interval& b);
Interval subtract(const Interval& a, const Interval& b);
Interval multiply(const Interval& a, const Interval& b);
Interval divide(const Interval& a, const Interval& b);
Interval modulo(const Interval& a, const Interval& b);
// Of one of these operators but negate.
Interval combine(Operator operation, const Interval& a, const Interval& b);

// What a condition can be.
struct Truth {
    bool canBeTrue = true;
    bool canBeFalse = true;
    Truth inverse() const { return {canBeFalse, canBeTrue}; }
};

Truth isLess(const Interval& a, const Interval& b);
Truth isLessOrEqual(const Interval& a, const Interval& b);
Truth isEqual(const Interval& a, const Interval& b);
Truth isTrue(const Interval& a);  // a number other than 0

}  // namespace tarvo::engine::filter
