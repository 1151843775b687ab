#include "exchange/table/valuecheck.h"

#include "exchange/advice.h"
#include "qrb/visitvalues.h"
#include "numbers/numbertext.h"

#include <algorithm>
#include <cmath>
#include <type_traits>

namespace tarvo::exchange {

namespace {

// Limits up to which a definition of resolution 1 stores whole numbers.
constexpr double lowestWhole = -9223372036854775808.0;
constexpr double highestWhole = 18446744073709551616.0;

bool isWholeLimit(double value) {
    return std::trunc(value) == value && value >= lowestWhole && value <= highestWhole;
}

std::string textOf(double value) {
    return numbers::numberText(value);
}

std::string textOf(numbers::Wide value) {
    return numbers::wholeText(value);
}

// 2^63 and 2^64 stand for the largest numbers of 64 bits, which a double can't hold.
numbers::Wide largestOf(const PointAttribute& definition) {
    const bool isAbove =
        definition.maximumValue == highestWhole ||
        (definition.minimumValue == lowestWhole && definition.maximumValue == -lowestWhole);
    return static_cast<numbers::Wide>(definition.maximumValue) - (isAbove ? 1 : 0);
}

}  // namespace

bool holdsWholeNumbers(const PointAttribute& definition) {
    return definition.resolution == 1 && isWholeLimit(definition.minimumValue) &&
           isWholeLimit(definition.maximumValue);
}

void ValueFindings::merge(const ValueFindings& other) {
    missing += other.missing;
    outside += other.outside;
    firstBetween = between > 0 ? firstBetween : other.firstBetween;
    between += other.between;
    low = std::min(low, other.low);
    high = std::max(high, other.high);
}

ValueCheck::ValueCheck(const PointAttribute& definition, bool nearest)
    : m_minimum(definition.minimumValue),
      m_maximum(definition.maximumValue),
      m_resolution(definition.resolution),
      m_invalidValue(definition.invalidValue),
      m_nearest(nearest),
      m_isInteger(holdsWholeNumbers(definition)),
      m_largest(m_isInteger ? largestOf(definition) : 0),
      // What a database takes for the ends of its range, and what decimal numbers may lack.
      m_slack(m_resolution * (nearest ? 0.5 + 1e-6 : 1e-6)) {
    const double perUnit = std::round(1 / m_resolution);
    m_perUnit = m_resolution > 0 && perUnit >= 1 && m_resolution == 1 / perUnit ? perUnit : 0;
    m_throughZero = m_perUnit != 0 && std::abs(std::round(m_minimum * m_perUnit) / m_perUnit -
                                               m_minimum) <= std::abs(m_minimum) * 4e-16;
    if (m_resolution > 0) {
        const double farthest = std::max(std::abs(m_minimum), std::abs(m_maximum));
        m_slack = std::max(m_slack, farthest * 4e-16);
    }
}

ValueCheck::Place ValueCheck::placeOf(double value) const {
    if (!(value >= m_minimum - m_slack && value <= m_maximum + m_slack)) {
        return Place::Outside;
    }
    if (m_resolution == 0) {
        return Place::Held;
    }
    if (m_isInteger) {
        return value == std::trunc(value) ? placeOf(static_cast<Wide>(value)) : Place::Between;
    }
    // A resolution of 0.01 stands for one hundredth and not for the double beside it: where its
    // inverse is whole, the number of steps is a product without an error of its own.
    // Where they begin at a whole one, a far minimum adds none.
    const double steps = m_perUnit == 0  ? (value - m_minimum) / m_resolution
                         : m_throughZero ? value * m_perUnit
                                         : value * m_perUnit - m_minimum * m_perUnit;
    const double farthest =
        (m_throughZero ? std::abs(value) : std::max(std::abs(value), std::abs(m_minimum))) /
        m_resolution;
    const double tolerance = std::max(1e-6, farthest * 1e-15);
    return std::abs(steps - std::round(steps)) <= tolerance ? Place::Held : Place::Between;
}

ValueCheck::Place ValueCheck::placeOf(Wide value) const {
    if (m_isInteger) {
        return value >= static_cast<Wide>(m_minimum) && value <= m_largest ? Place::Held
                                                                           : Place::Outside;
    }
    const auto number = static_cast<double>(value);
    const Place place = placeOf(number);
    return place == Place::Held && static_cast<Wide>(number) != value ? Place::Between : place;
}

template <typename T>
void ValueCheck::count(T value) {
    ValueFindings& f = m_findings;
    const Place place = placeOf(value);
    f.low = std::min(f.low, static_cast<double>(value));
    f.high = std::max(f.high, static_cast<double>(value));
    if (place == Place::Outside) {
        ++f.outside;
    } else if (place == Place::Between) {
        if (f.between == 0) {
            f.firstBetween = textOf(value);
        }
        ++f.between;
    }
}

void ValueCheck::add(DataType type, const void* values, std::size_t count,
                     std::optional<double> noValue) {
    visitValues(type, values, [&]<typename T>(const T* typed) {
        for (std::size_t i = 0; i < count; ++i) {
            const auto number = static_cast<double>(typed[i]);
            if (std::isnan(number) || (noValue && number == *noValue)) {
                ++m_findings.missing;
            } else if (number != m_invalidValue) {
                if constexpr (std::is_integral_v<T>) {
                    this->count(static_cast<Wide>(typed[i]));
                } else {
                    this->count(number);
                }
            }
        }
    });
}

std::string rangeText(const PointAttribute& definition) {
    return numbers::numberText(definition.minimumValue) + " to " +
           (holdsWholeNumbers(definition) ? numbers::wholeText(largestOf(definition))
                                          : numbers::numberText(definition.maximumValue));
}

std::string stepsText(const PointAttribute& definition) {
    return definition.resolution == 0
               ? "it holds floating-point numbers."
               : "its resolution is " + numbers::numberText(definition.resolution) + ", from " +
                     numbers::numberText(definition.minimumValue) + ".";
}

std::string faultText(const PointAttribute& definition, const ValueFindings& findings) {
    if (findings.outside > 0) {
        return "The values of \"" + definition.name + "\" go from " +
               numbers::numberText(findings.low) + " to " + numbers::numberText(findings.high) +
               "; the database holds " + rangeText(definition) + " only.";
    }
    return "The attribute \"" + definition.name + "\" can't hold " +
           std::to_string(findings.between) + " of the values, for example " +
           findings.firstBetween + ": " + stepsText(definition);
}

std::string adviceToRound(const ValueFindings& findings) {
    return findings.outside == 0 ? advice().roundValues + "\n" : "";
}

std::string adviceToRedefine(const std::string& fileName, const std::string& attribute,
                             const ValueFindings& findings) {
    return advice().redefine(fileName, attribute, findings.outside != 0);
}

}  // namespace tarvo::exchange
