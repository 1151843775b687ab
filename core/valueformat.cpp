#include "core/valueformat.h"

#include "numbers/decimal.h"
#include "numbers/numbertext.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <utility>

namespace tarvo::core {

using qrb::pointcloud::DataType;
using qrb::pointcloud::PointAttribute;

namespace {

constexpr int mostPlaces = 16;
constexpr double twoTo63 = 9223372036854775808.0;
constexpr double twoTo64 = 18446744073709551616.0;
constexpr std::size_t shortestTextWidth = 24;

bool isWhole(double value) {
    return std::trunc(value) == value;
}

// What all values of an attribute lie between, the invalid one included.
std::pair<double, double> limitsOf(const PointAttribute& attribute) {
    const double low = attribute.minimumValue;
    const double high = attribute.maximumValue;
    if (std::isnan(attribute.invalidValue))
        return {low, high};
    return {std::min(low, attribute.invalidValue), std::max(high, attribute.invalidValue)};
}

DataType typeOf(const PointAttribute& attribute) {
    const auto [low, high] = limitsOf(attribute);
    const bool whole = attribute.resolution == 1 && isWhole(attribute.minimumValue) &&
                       (std::isnan(attribute.invalidValue) || isWhole(attribute.invalidValue));
    if (!whole || low < -twoTo63 || high > twoTo64)
        return DataType::DOUBLE;
    if (low >= 0)
        return DataType::UINT64;
    // A double can't hold 2^63-1: libraries take 2^63 for it where the range begins at -2^63.
    const bool signedRange =
        attribute.minimumValue == -twoTo63 && attribute.maximumValue == twoTo63 && high == twoTo63;
    return high < twoTo63 || signedRange ? DataType::INT64 : DataType::DOUBLE;
}

// type: the one that typeOf() gives.
DataType narrowTypeOf(const PointAttribute& attribute, DataType type) {
    const auto [low, high] = limitsOf(attribute);
    if (type == DataType::UINT64)
        return high < 0x1p8    ? DataType::UINT8
               : high < 0x1p16 ? DataType::UINT16
               : high < 0x1p32 ? DataType::UINT32
                               : type;
    if (type == DataType::INT64)
        return low >= -0x1p7 && high < 0x1p7     ? DataType::INT8
               : low >= -0x1p15 && high < 0x1p15 ? DataType::INT16
               : low >= -0x1p31 && high < 0x1p31 ? DataType::INT32
                                                 : type;
    return type;
}

int placesOf(const PointAttribute& attribute) {
    const int places = decimalsOfResolution(attribute.resolution);
    const bool shown = places > 0 || isWhole(attribute.resolution);
    if (attribute.resolution == 0 || !shown)
        return -1;
    const int ofMinimum = numbers::shortestDecimal(attribute.minimumValue).places();
    return ofMinimum > mostPlaces ? -1 : std::max(places, ofMinimum);
}

}  // namespace

int decimalsOfResolution(double resolution) {
    std::string text;
    numbers::appendFixed(text, std::fabs(resolution - std::floor(resolution)), mostPlaces);
    const std::size_t last = text.find_last_not_of('0');
    return last < 2 ? 0 : static_cast<int>(last) - 1;
}

ValueFormat::ValueFormat(const PointAttribute& attribute)
    : m_type(typeOf(attribute)),
      m_narrowType(narrowTypeOf(attribute, m_type)),
      m_places(m_type == DataType::DOUBLE ? placesOf(attribute) : 0),
      m_invalid(attribute.invalidValue) {
    if (m_type == DataType::DOUBLE && !std::isnan(m_invalid)) {
        appendDouble(m_invalidText, m_invalid);
        if (numbers::readNumber(m_invalidText) != m_invalid)
            m_invalidText = numbers::numberText(m_invalid);
    }
    if (m_places < 0) {
        m_width = shortestTextWidth;
        return;
    }
    for (const double value : {attribute.minimumValue, attribute.maximumValue,
                               attribute.defaultValue, attribute.invalidValue}) {
        std::string text;
        appendDouble(text, value);
        m_width = std::max(m_width, text.size());
    }
}

char* ValueFormat::writeAnyDouble(char* at, double value) const {
    if (!std::isfinite(value) || m_places < 0)
        return numbers::writePlain(at, value);
    if (value == m_invalid && !m_invalidText.empty())
        return std::copy(m_invalidText.begin(), m_invalidText.end(), at);
    char* const end = numbers::writeFixed(at, value, m_places);
    // Steps such as a third end at no place.
    if (m_places == mostPlaces && numbers::readNumber({at, end}) != value)
        return numbers::writePlain(at, value);
    return end;
}

void ValueFormat::appendDouble(std::string& text, double value) const {
    char buffer[numbers::mostCharacters];
    text.append(buffer, writeDouble(buffer, value));
}

void ValueFormat::append(std::string& text, std::uint64_t bits) const {
    if (m_type == DataType::UINT64)
        text += std::to_string(bits);
    else if (m_type == DataType::INT64)
        text += std::to_string(static_cast<std::int64_t>(bits));
    else
        appendDouble(text, std::bit_cast<double>(bits));
}

std::string ValueFormat::text(std::uint64_t bits) const {
    std::string text;
    append(text, bits);
    return text;
}

std::string ValueFormat::differenceText(std::uint64_t minimum, std::uint64_t maximum) const {
    const auto whole = [this](std::uint64_t bits) {
        return m_type == DataType::UINT64
                   ? static_cast<numbers::Wide>(bits)
                   : static_cast<numbers::Wide>(static_cast<std::int64_t>(bits));
    };
    if (m_type != DataType::DOUBLE)
        return numbers::wholeText(whole(maximum) - whole(minimum));
    const double difference = std::bit_cast<double>(maximum) - std::bit_cast<double>(minimum);
    std::string text;
    if (m_places < 0)
        numbers::appendPlain(text, difference);
    else
        numbers::appendFixed(text, difference, m_places);
    return text;
}

bool ValueFormat::isFinite(std::uint64_t bits) const {
    return m_type != DataType::DOUBLE || std::isfinite(std::bit_cast<double>(bits));
}

std::vector<std::string> elementNames(const std::string& attribute, std::uint32_t length,
                                      std::uint32_t maximum) {
    if (length == 1)
        return {attribute};
    std::vector<std::string> names;
    for (std::uint32_t i = 0; i < std::min(length, maximum); ++i)
        names.push_back(attribute + "[" + std::to_string(i) + "]");
    return names;
}

}  // namespace tarvo::core
