#include "exchange/table/valuecheck.h"

#include "exchange/table/visit.h"

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

}  // namespace

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
      m_isInteger(m_resolution == 1 && isWholeLimit(m_minimum) && isWholeLimit(m_maximum)),
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
        return value == std::trunc(value) ? Place::Held : Place::Between;
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
        // 2^64 stands for the largest unsigned number, which a double can't hold.
        return value >= static_cast<Wide>(m_minimum) && value <= static_cast<Wide>(m_maximum)
                   ? Place::Held
                   : Place::Outside;
    }
    const auto number = static_cast<double>(value);
    const Place place = placeOf(number);
    return place == Place::Held && static_cast<Wide>(number) != value ? Place::Between : place;
}

void ValueCheck::count(Place place, double value) {
    ValueFindings& f = m_findings;
    f.low = std::min(f.low, value);
    f.high = std::max(f.high, value);
    if (place == Place::Outside) {
        ++f.outside;
    } else if (place == Place::Between) {
        f.firstBetween = f.between == 0 ? value : f.firstBetween;
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
                    this->count(placeOf(static_cast<Wide>(typed[i])), number);
                } else {
                    this->count(placeOf(number), number);
                }
            }
        }
    });
}

}  // namespace tarvo::exchange
