#include "exchange/table/summary.h"

#include "qrb/visitvalues.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <type_traits>

namespace tarvo::exchange {

namespace {

constexpr int maximumDecimals = 12;
constexpr double powers[] = {1, 1e1, 1e2, 1e3, 1e4, 1e5, 1e6, 1e7, 1e8, 1e9, 1e10, 1e11, 1e12};
constexpr double wholeLimit = 9007199254740992.0;  // 2^53

bool hasDecimals(double value, int decimals) {
    const double scaled = value * powers[decimals];
    return std::abs(scaled) < wholeLimit && std::nearbyint(scaled) / powers[decimals] == value;
}

// Whether all values are finite and have so few decimals; false where one is not clear.
bool haveDecimals(const double* values, std::size_t count, int decimals) {
    // Adding and subtracting it rounds numbers below a quarter of it, as nearbyint does.
    constexpr double rounder = 0x1.8p52;
    const double power = powers[decimals];
    unsigned others = 0;
    for (std::size_t i = 0; i < count; ++i) {
        const double scaled = values[i] * power;
        const double rounded = (scaled + rounder) - rounder;
        others |= !(std::abs(scaled) < 0x1p50) | (rounded / power != values[i]);
    }
    return others == 0;
}

}  // namespace

void ColumnSummary::widen(Wide low, Wide high) {
    m_low = m_hasNumbers ? std::min(m_low, low) : low;
    m_high = m_hasNumbers ? std::max(m_high, high) : high;
    m_hasNumbers = true;
}

template <typename T>
void ColumnSummary::addIntegers(const T* values, std::size_t count) {
    T low = values[0];
    T high = values[0];
    for (std::size_t i = 1; i < count; ++i) {
        low = std::min(low, values[i]);
        high = std::max(high, values[i]);
    }
    widen(low, high);
    const auto isBeyond = [](T value) {
        return static_cast<Wide>(static_cast<double>(value)) != static_cast<Wide>(value);
    };
    if (!m_beyondDouble && std::max(-Wide(low), Wide(high)) > Wide(wholeLimit)) {
        const T* const found = std::find_if(values, values + count, isBeyond);
        if (found != values + count) {
            m_beyondDouble = *found;
        }
    }
}

template <typename T>
void ColumnSummary::addNumbers(const T* values, std::size_t count) {
    m_integer = false;
    double low = m_hasNumbers ? m_minimum : std::numeric_limits<double>::infinity();
    double high = m_hasNumbers ? m_maximum : -std::numeric_limits<double>::infinity();
    constexpr std::size_t pieceSize = 512;
    double piece[pieceSize];
    for (std::size_t begin = 0; begin < count; begin += pieceSize) {
        const std::size_t size = std::min(pieceSize, count - begin);
        std::copy(values + begin, values + begin + size, piece);
        const bool isUsual = m_decimals >= 0 && haveDecimals(piece, size, m_decimals);
        for (std::size_t i = 0; i < size; ++i) {
            const double value = piece[i];
            if (!isUsual && !std::isfinite(value)) {
                (std::isnan(value) ? m_hasNaN : m_hasInfinity) = true;
                continue;
            }
            low = value < low ? value : low;
            high = value > high ? value : high;
            while (!isUsual && m_decimals >= 0 && !hasDecimals(value, m_decimals)) {
                m_decimals = m_decimals == maximumDecimals ? -1 : m_decimals + 1;
            }
        }
    }
    if (low <= high) {
        m_hasNumbers = true;
        m_minimum = low;
        m_maximum = high;
    }
}

void ColumnSummary::add(const void* values, std::size_t count) {
    if (count == 0) {
        return;
    }
    m_count += count;
    visitValues(m_type, values, [&]<typename T>(const T* typed) {
        if constexpr (std::is_integral_v<T>) {
            addIntegers(typed, count);
        } else {
            addNumbers(typed, count);
        }
    });
}

void ColumnSummary::merge(const ColumnSummary& other) {
    if (other.m_count == 0) {
        return;
    }
    if (m_count == 0) {
        *this = other;
        return;
    }
    m_count += other.m_count;
    m_hasNaN |= other.m_hasNaN;
    m_hasInfinity |= other.m_hasInfinity;
    m_beyondDouble = m_beyondDouble ? m_beyondDouble : other.m_beyondDouble;
    m_decimals =
        m_decimals < 0 || other.m_decimals < 0 ? -1 : std::max(m_decimals, other.m_decimals);
    if (m_integer && other.m_integer) {
        widen(other.m_low, other.m_high);
        return;
    }
    const double low = std::min(minimum(), other.minimum());
    const double high = std::max(maximum(), other.maximum());
    m_integer = false;
    m_hasNumbers |= other.m_hasNumbers;
    m_minimum = low;
    m_maximum = high;
}

double ColumnSummary::minimum() const {
    if (!m_integer) {
        return m_minimum;
    }
    const auto value = static_cast<double>(m_low);
    return static_cast<Wide>(value) > m_low
               ? std::nextafter(value, -std::numeric_limits<double>::infinity())
               : value;
}

double ColumnSummary::maximum() const {
    if (!m_integer) {
        return m_maximum;
    }
    const auto value = static_cast<double>(m_high);
    return static_cast<Wide>(value) < m_high
               ? std::nextafter(value, std::numeric_limits<double>::infinity())
               : value;
}

}  // namespace tarvo::exchange
