// Whether the values of a file can be stored under a definition that a database has, exactly or
// rounded to the nearest value that it holds.
#pragma once

#include "exchange/table/pointsource.h"
#include "numbers/wide.h"

#include <cstddef>
#include <cstdint>
#include <limits>
#include <optional>
#include <string>

namespace tarvo::exchange {

using qrb::pointcloud::PointAttribute;

// What was found in the values of a column.
struct ValueFindings {
    std::uint64_t missing = 0;  // NaN, or the column's own number for "no value"
    std::uint64_t outside = 0;  // beyond the range, infinite ones too
    std::uint64_t between = 0;  // within the range, but none of the values that the attribute holds
    std::string firstBetween;   // the first of them, with all digits
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
    using Wide = numbers::Wide;
    enum class Place : std::uint8_t { Held, Between, Outside };

    Place placeOf(double value) const;
    Place placeOf(Wide value) const;
    template <typename T>
    void count(T value);

    double m_minimum;
    double m_maximum;
    double m_resolution;
    double m_invalidValue;
    bool m_nearest;
    bool m_isInteger;            // stored as whole numbers, exact in 64 bits
    Wide m_largest = 0;          // of these
    double m_slack;              // of the range
    double m_perUnit;            // steps per 1 where that is a whole number, else 0
    bool m_throughZero = false;  // the whole numbers of such steps are what is held
    ValueFindings m_findings;
};

// Whether an attribute stores whole numbers, exact in 64 bits.
bool holdsWholeNumbers(const PointAttribute& definition);

// What a user is told of values of the attribute that are outside or between, in a sentence.
std::string faultText(const PointAttribute& definition, const ValueFindings& findings);
// A line, with its end, on how nearest values are stored; empty if that doesn't help.
std::string adviceToRound(const ValueFindings& findings);
// Lines on how to make the attribute hold the values. fileName: of the database.
std::string adviceToRedefine(const std::string& fileName, const std::string& attribute,
                             const ValueFindings& findings);
// "0 to 255": the values that the attribute holds.
std::string rangeText(const PointAttribute& definition);
// "its resolution is 0.01, from 0.": which values of its range these are.
std::string stepsText(const PointAttribute& definition);

}  // namespace tarvo::exchange
