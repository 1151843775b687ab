#include "exchange/table/filledcolumn.h"

#include "qrb/visitvalues.h"

#include <bit>
#include <cmath>

namespace tarvo::exchange {

namespace {

DataType typeToHold(DataType type, double replacement) {
    const bool isWhole = std::trunc(replacement) == replacement;
    if (type == DataType::SINGLE || type == DataType::DOUBLE || !isWhole) {
        return DataType::DOUBLE;
    }
    if (type == DataType::UINT64) {
        return replacement >= 0 && replacement < 0x1p64 ? type : DataType::DOUBLE;
    }
    return std::abs(replacement) < 0x1p63 ? DataType::INT64 : DataType::DOUBLE;
}

}  // namespace

FilledColumn::FilledColumn(DataType type, std::optional<double> noValue, double replacement,
                           std::uint32_t largestBatch)
    : m_sourceType(type),
      m_type(typeToHold(type, replacement)),
      m_noValue(noValue),
      m_replacement(replacement),
      m_values(largestBatch) {}

template <typename To>
void FilledColumn::fillAs(const void* values, std::uint32_t count) {
    visitValues(m_sourceType, values, [&]<typename From>(const From* from) {
        for (std::uint32_t i = 0; i < count; ++i) {
            const auto number = static_cast<double>(from[i]);
            const bool isMissing = std::isnan(number) || (m_noValue && number == *m_noValue);
            const To value = isMissing ? static_cast<To>(m_replacement) : static_cast<To>(from[i]);
            m_values[i] = std::bit_cast<std::uint64_t>(value);
        }
    });
}

void FilledColumn::fill(const void* values, std::uint32_t count) {
    if (m_type == DataType::DOUBLE) {
        fillAs<double>(values, count);
    } else if (m_type == DataType::UINT64) {
        fillAs<std::uint64_t>(values, count);
    } else {
        fillAs<std::int64_t>(values, count);
    }
}

}  // namespace tarvo::exchange
