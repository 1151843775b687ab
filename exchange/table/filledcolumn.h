// A column whose missing values are replaced by a number on their way into a database.
#pragma once

#include "exchange/table/pointsource.h"

#include <cstdint>
#include <optional>
#include <vector>

namespace tarvo::exchange {

class FilledColumn {
public:
    // Values of the type that are NaN or equal noValue become the replacement, which may be NaN.
    // largestBatch: of the source.
    FilledColumn(DataType type, std::optional<double> noValue, double replacement,
                 std::uint32_t largestBatch);

    // The type of the values handed out: one that holds the replacement too.
    DataType type() const { return m_type; }
    // 8 bytes each, at most largestBatch of them. The address doesn't change.
    const void* values() const { return m_values.data(); }
    // Takes the next batch of packed values.
    void fill(const void* values, std::uint32_t count);

private:
    template <typename To>
    void fillAs(const void* values, std::uint32_t count);

    DataType m_sourceType;
    DataType m_type;
    std::optional<double> m_noValue;
    double m_replacement;
    std::vector<std::uint64_t> m_values;
};

}  // namespace tarvo::exchange
