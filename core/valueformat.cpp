#include "core/valueformat.h"

#include "numbers/decimal.h"
#include "numbers/numbertext.h"

#include <algorithm>
#include <bit>
#include <cmath>

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

DataType typeOf(const PointAttribute& attribute) {
    double low = attribute.minimumValue;
    double high = attribute.maximumValue;
    if (!std::isnan(attribute.invalidValue)) {
        low = std::min(low, attribute.invalidValue);
        high = std::max(high, attribute.invalidValue);
    }
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

void ValueFormat::appendDouble(std::string& text, double value) const {
    if (!std::isfinite(value) || m_places < 0)
        numbers::appendPlain(text, value);
    else if (value == m_invalid && !m_invalidText.empty())
        text += m_invalidText;
    else
        numbers::appendFixed(text, value, m_places);
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
