// What a column holds, found by looking at every value once: what a definition must be able to
// store.
#pragma once

#include "numbers/wide.h"
#include "qrb/pointattribute.h"

#include <cstddef>
#include <cstdint>
#include <optional>

namespace tarvo::exchange {

using qrb::pointcloud::DataType;

class ColumnSummary {
public:
    explicit ColumnSummary(DataType type = DataType::DOUBLE) : m_type(type) {}

    // Looks at count packed values of the type.
    void add(const void* values, std::size_t count);
    // Takes what another column of the same attribute holds.
    void merge(const ColumnSummary& other);

    std::uint64_t count() const { return m_count; }
    // All values are whole numbers of an integer type.
    bool isInteger() const { return m_integer; }
    bool hasNumbers() const { return m_hasNumbers; }  // besides NaN and infinity
    bool hasNaN() const { return m_hasNaN; }
    bool hasInfinity() const { return m_hasInfinity; }
    bool isConstant() const { return m_count > 0 && !m_hasNaN && minimum() == maximum(); }
    // The smallest and largest number; rounded outwards where a double can't hold the integer.
    double minimum() const;
    double maximum() const;
    // Digits behind the point that all values have in decimal, 0 to 12; -1 where they are not
    // decimal numbers of so few digits.
    int decimals() const { return m_decimals; }
    // A value of an integer type that no double holds.
    std::optional<numbers::Wide> beyondDouble() const { return m_beyondDouble; }

private:
    using Wide = numbers::Wide;
    template <typename T>
    void addIntegers(const T* values, std::size_t count);
    template <typename T>
    void addNumbers(const T* values, std::size_t count);
    void widen(Wide low, Wide high);

    DataType m_type;
    std::uint64_t m_count = 0;
    bool m_integer = true;
    bool m_hasNaN = false;
    bool m_hasInfinity = false;
    Wide m_low = 0;
    Wide m_high = 0;
    bool m_hasNumbers = false;
    double m_minimum = 0;
    double m_maximum = 0;
    int m_decimals = 0;
    std::optional<Wide> m_beyondDouble;
};

}  // namespace tarvo::exchange
