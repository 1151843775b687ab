// Whether the values of a file can be stored under a definition that a database has, exactly or
// rounded to the nearest value that it holds.
#pragma once

#include "exchange/table/pointsource.h"

#include <cstddef>
#include <cstdint>
#include <limits>
#include <optional>

namespace tarvo::exchange {

using qrb::pointcloud::PointAttribute;

// What was found in the values of a column.
struct ValueFindings {
    std::uint64_t missing = 0;  // NaN, or the column's own number for "no value"
    std::uint64_t outside = 0;  // beyond the range, infinite ones too
    std::uint64_t between = 0;  // within the range, but none of the values that the attribute holds
    double firstBetween = 0;
    // Of all numbers but the invalid value; low > high: there are none.
    double low = std::numeric_limits<double>::infinity();
    double high = -std::numeric_limits<double>::infinity();

    void merge(const ValueFindings& other);
};

class ValueCheck {
public:
    // nearest: values up to half a step beyond the range count as those at its ends.
    ValueCheck(const PointAttribute& definition, bool nearest);

    // Looks at count packed values; those equal to noValue are missing.
    void add(DataType type, const void* values, std::size_t count, std::optional<double> noValue);
    const ValueFindings& findings() const { return m_findings; }

private:
    __extension__ typedef __int128 Wide;
    enum class Place : std::uint8_t { Held, Between, Outside };

    Place placeOf(double value) const;
    Place placeOf(Wide value) const;
    void count(Place place, double value);

    double m_minimum;
    double m_maximum;
    double m_resolution;
    double m_invalidValue;
    bool m_nearest;
    bool m_isInteger;            // stored as whole numbers, exact in 64 bits
    double m_slack;              // of the range
    double m_perUnit;            // steps per 1 where that is a whole number, else 0
    bool m_throughZero = false;  // the whole numbers of such steps are what is held
    ValueFindings m_findings;
};

}  // namespace tarvo::exchange
