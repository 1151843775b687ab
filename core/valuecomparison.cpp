#include "core/valuecomparison.h"

#include "core/attributerules.h"
#include "numbers/wide.h"
#include "qrb/visitvalues.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstring>
#include <limits>
#include <type_traits>

namespace tarvo::core {

namespace {

using numbers::Wide;
using qrb::pointcloud::DataType;
using qrb::pointcloud::PointAttribute;

// In 8 bytes of the format's type. bytes: of any alignment.
std::uint64_t bitsOf(DataType narrow, const std::uint8_t* bytes) {
    std::uint64_t bits = 0;
    visitValues(narrow, nullptr, [&]<typename T>(const T*) {
        T value;
        std::memcpy(&value, bytes, sizeof value);
        if constexpr (std::is_floating_point_v<T>)
            bits = std::bit_cast<std::uint64_t>(static_cast<double>(value));
        else
            bits = static_cast<std::uint64_t>(static_cast<std::int64_t>(value));
    });
    return bits;
}

bool isReal(const ValueFormat& format) {
    return format.type() == DataType::DOUBLE;
}

Wide wholeOf(const ValueFormat& format, std::uint64_t bits) {
    return format.type() == DataType::UINT64 ? static_cast<Wide>(bits)
                                             : static_cast<Wide>(static_cast<std::int64_t>(bits));
}

bool isInvalid(const ValueFormat& format, const PointAttribute& attribute, std::uint64_t bits) {
    const double invalid = attribute.invalidValue;
    if (isReal(format)) {
        const double value = std::bit_cast<double>(bits);
        return std::isnan(value) || value == invalid;
    }
    // All others hold the invalid value, if there is one: it is a whole number of 64 bits.
    return !std::isnan(invalid) && wholeOf(format, bits) == static_cast<Wide>(invalid);
}

// tolerance: 0 where one of them lies on no grid.
bool realsAgree(double a, double b, double tolerance) {
    if (a == b || tolerance == 0)
        return a == b;
    // What the values themselves are rounded by.
    const double rounding =
        2 * std::numeric_limits<double>::epsilon() * std::max(std::fabs(a), std::fabs(b));
    return std::fabs(a - b) <= tolerance + rounding;
}

// Not through a double, which has no room for all whole numbers.
bool wholeAndRealAgree(Wide whole, double real, double tolerance) {
    if (!(std::fabs(real) < 0x1p65))
        return false;
    const double floor = std::floor(real);
    const Wide apart = whole - static_cast<Wide>(floor);
    return realsAgree(static_cast<double>(apart), real - floor, tolerance);
}

}  // namespace

ValueComparison::ValueComparison(const PointAttribute& before, const PointAttribute& after)
    : m_before(before),
      m_after(after),
      m_formatBefore(before),
      m_formatAfter(after),
      m_asNumbers(!sameValues(before, after)),
      m_tolerance(std::min(std::fabs(before.resolution), std::fabs(after.resolution)) / 2) {}

bool ValueComparison::agree(std::uint64_t before, std::uint64_t after) const {
    if (!m_asNumbers)
        return before == after ||
               (isReal(m_formatBefore) && std::isnan(std::bit_cast<double>(before)) &&
                std::isnan(std::bit_cast<double>(after)));
    const bool invalidBefore = isInvalid(m_formatBefore, m_before, before);
    const bool invalidAfter = isInvalid(m_formatAfter, m_after, after);
    if (invalidBefore || invalidAfter)
        return invalidBefore && invalidAfter;
    if (isReal(m_formatBefore) && isReal(m_formatAfter))
        return realsAgree(std::bit_cast<double>(before), std::bit_cast<double>(after), m_tolerance);
    if (isReal(m_formatBefore))
        return wholeAndRealAgree(wholeOf(m_formatAfter, after), std::bit_cast<double>(before),
                                 m_tolerance);
    if (isReal(m_formatAfter))
        return wholeAndRealAgree(wholeOf(m_formatBefore, before), std::bit_cast<double>(after),
                                 m_tolerance);
    return wholeOf(m_formatBefore, before) == wholeOf(m_formatAfter, after);
}

bool ValueComparison::equal(const std::uint8_t* before, const std::uint8_t* after) const {
    if (!m_asNumbers && std::memcmp(before, after, strideBefore()) == 0)
        return true;
    const std::size_t sizeBefore = dataTypeSize(typeBefore());
    const std::size_t sizeAfter = dataTypeSize(typeAfter());
    for (std::uint32_t i = 0; i < m_before.length; ++i)
        if (!agree(bitsOf(typeBefore(), before + i * sizeBefore),
                   bitsOf(typeAfter(), after + i * sizeAfter)))
            return false;
    return true;
}

std::vector<std::string> ValueComparison::textsBefore(const std::uint8_t* values) const {
    return texts(m_formatBefore, m_before, values);
}

std::vector<std::string> ValueComparison::textsAfter(const std::uint8_t* values) const {
    return texts(m_formatAfter, m_after, values);
}

std::vector<std::string> ValueComparison::texts(const ValueFormat& format,
                                                const PointAttribute& attribute,
                                                const std::uint8_t* values) const {
    std::vector<std::string> result = valueTexts(format, attribute.length, values);
    const DataType type = format.narrowType();
    for (std::uint32_t i = 0; m_asNumbers && i < attribute.length; ++i)
        if (isInvalid(format, attribute, bitsOf(type, values + i * dataTypeSize(type))))
            result[i] = "no value";
    return result;
}

std::vector<std::string> valueTexts(const ValueFormat& format, std::uint32_t length,
                                    const std::uint8_t* values) {
    const DataType type = format.narrowType();
    std::vector<std::string> texts;
    for (std::uint32_t i = 0; i < length; ++i)
        texts.push_back(format.text(bitsOf(type, values + i * dataTypeSize(type))));
    return texts;
}

}  // namespace tarvo::core
