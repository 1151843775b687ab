#include "engine/schema/attribute.h"

#include "engine/base/error.h"
#include "engine/base/json.h"
#include "engine/base/utf8.h"
#include "numbers/numbertext.h"

#include <charconv>
#include <cmath>

namespace tarvo::engine::schema {

namespace {

constexpr double twoTo63 = 9223372036854775808.0;
constexpr double twoTo64 = 18446744073709551616.0;

[[noreturn]] void refuse(const AttributeRecord& record, const std::string& reason) {
    throw Failure(ErrorCode::Argument,
                  "The point attribute \"" + record.name + "\" is not valid: " + reason);
}

bool isNameStart(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_';
}

bool isNameCharacter(char c) {
    return isNameStart(c) || (c >= '0' && c <= '9') || c == '.';
}

std::string_view trimmed(std::string_view text) {
    while (!text.empty() && (text.front() == ' ' || text.front() == '\t'))
        text.remove_prefix(1);
    while (!text.empty() && (text.back() == ' ' || text.back() == '\t'))
        text.remove_suffix(1);
    return text;
}

// Whether the invalid value can't be mixed up with a value, nor be lost, where both are rounded.
bool isTakenBackFromSingle(const AttributeRecord& record) {
    const double value = record.invalidValue;
    if (std::isnan(value))
        return true;
    const bool isSingle = static_cast<double>(static_cast<float>(value)) == value;
    if (value < record.minimumValue || value > record.maximumValue)
        return isSingle;
    const double step = (value - record.minimumValue) / record.resolution;
    const double toStep = std::fabs(step - std::round(step));
    const double largest = std::max(std::fabs(record.minimumValue), std::fabs(record.maximumValue));
    return toStep < 1e-6 || (isSingle && toStep * record.resolution > largest * 0x1p-23);
}

}  // namespace

void validate(const AttributeRecord& record) {
    if (record.name.empty() || record.name.size() > 255 || !isNameStart(record.name[0]))
        refuse(record, "its name must begin with a letter and have at most 255 characters.");
    for (char c : record.name)
        if (!isNameCharacter(c))
            refuse(record, "its name may hold letters, digits, \".\" and \"_\" only.");
    if (record.length < 1 || record.length > maximumLength)
        refuse(record, "its length is " + std::to_string(record.length) + ", 1 to " +
                           std::to_string(maximumLength) + " is possible.");
    if (record.storageClass < 1 || record.storageClass > 3)
        refuse(record, "its storage class is " + std::to_string(record.storageClass) +
                           ", 1 (constant), 2 (variable) and 3 (dynamic) are possible.");
    if (record.compressionOptions > 3)
        refuse(record, "its compression options are " + std::to_string(record.compressionOptions) +
                           ", 0 to 3 are possible.");
    // The text of the definition has no way to write them.
    if (std::isinf(record.invalidValue))
        refuse(record, "its invalid value is infinite.");
    if (!std::isfinite(record.scaleFactor))
        refuse(record, "its scale factor is not a number.");
    const Grid grid(record);
    if (grid.hasWholeValues() && dataType(record) == QRB_DATA_TYPE_DOUBLE)
        throw Failure(ErrorCode::Argument,
                      "The attribute \"" + record.name +
                          "\" has whole numbers that no data type can hold together.",
                      "Its values and its invalid value go from " +
                          numbers::wholeText(grid.leastInteger()) + " to " +
                          numbers::wholeText(grid.greatestInteger()) +
                          "; INT64 holds -9223372036854775808 to 9223372036854775807, UINT64 0 to "
                          "18446744073709551615. Choose another invalid value, or narrow the "
                          "range.");
    try {
        (void)grid.code(record.defaultValue);
    } catch (const Failure&) {
        refuse(record, "its default value is neither in its range nor the invalid value.");
    }
}

void requireTexts(const AttributeRecord& record) {
    const auto require = [&](const char* what, const std::string& text) {
        requireUtf8("The " + std::string(what) + " of the point attribute \"" + record.name + "\"",
                    text);
    };
    require("title", record.title);
    require("tag list", record.tags);
    require("description", record.description);
    require("unit", record.unitSymbol);
    require("list of named values", record.namedValues);
    require("level-of-detail setting", record.lodSettings);
}

std::uint32_t dataType(const AttributeRecord& record) {
    if (record.length == 0)
        return QRB_DATA_TYPE_NONE;
    if (record.resolution == 0)
        return QRB_DATA_TYPE_DOUBLE;
    double low = record.minimumValue;
    double high = record.maximumValue;
    bool whole = record.resolution == std::floor(record.resolution) && low == std::floor(low) &&
                 high == std::floor(high);
    if (!std::isnan(record.invalidValue)) {
        low = std::min(low, record.invalidValue);
        high = std::max(high, record.invalidValue);
        whole = whole && record.invalidValue == std::floor(record.invalidValue);
    }
    if (!whole) {
        // A SINGLE holds 24 bits of mantissa: what it rounds comes back to its step, but an invalid
        // value on no step would not.
        const double steps = std::max(std::fabs(low), std::fabs(high)) / record.resolution;
        const bool isSingle = steps < 16777216.0 && isTakenBackFromSingle(record);
        return isSingle ? QRB_DATA_TYPE_SINGLE : QRB_DATA_TYPE_DOUBLE;
    }
    if (low >= 0) {
        if (high <= UINT8_MAX)
            return QRB_DATA_TYPE_UINT8;
        if (high <= UINT16_MAX)
            return QRB_DATA_TYPE_UINT16;
        if (high <= UINT32_MAX)
            return QRB_DATA_TYPE_UINT32;
        return high <= twoTo64 ? QRB_DATA_TYPE_UINT64 : QRB_DATA_TYPE_DOUBLE;
    }
    if (low >= INT8_MIN && high <= INT8_MAX)
        return QRB_DATA_TYPE_INT8;
    if (low >= INT16_MIN && high <= INT16_MAX)
        return QRB_DATA_TYPE_INT16;
    if (low >= INT32_MIN && high <= INT32_MAX)
        return QRB_DATA_TYPE_INT32;
    // From -2^63 on, the grid takes 2^63 for 2^63-1, which no double is.
    const bool isWholeRange =
        record.minimumValue == -twoTo63 && record.maximumValue == twoTo63 && high == twoTo63;
    if (low >= -twoTo63 && (high < twoTo63 || isWholeRange))
        return QRB_DATA_TYPE_INT64;
    return QRB_DATA_TYPE_DOUBLE;
}

std::string toJson(const AttributeRecord& record) {
    rapidjson::StringBuffer buffer;
    JsonWriter writer(buffer);
    writer.StartObject();
    writeMember(writer, "name", record.name);
    writeMember(writer, "title", record.title);
    writeMember(writer, "tags", record.tags);
    writeMember(writer, "description", record.description);
    writeMember(writer, "unit_symbol", record.unitSymbol);
    writeMember(writer, "length", std::uint64_t(record.length));
    writeMember(writer, "resolution", record.resolution);
    writeMember(writer, "minimum_value", record.minimumValue);
    writeMember(writer, "maximum_value", record.maximumValue);
    writeMember(writer, "default_value", record.defaultValue);
    writeMember(writer, "invalid_value", record.invalidValue);
    writeMember(writer, "named_values", record.namedValues);
    writeMember(writer, "storage_class", std::uint64_t(record.storageClass));
    writeMember(writer, "compression_options", std::uint64_t(record.compressionOptions));
    writeMember(writer, "lod_settings", record.lodSettings);
    writeMember(writer, "scale_factor", record.scaleFactor);
    writer.EndObject();
    return {buffer.GetString(), buffer.GetSize()};
}

void recordFromJson(std::string_view json, AttributeRecord& record) {
    const rapidjson::Document document = parseJson(json, "The point attribute text");
    const JsonObject object(document, "The point attribute text", ErrorCode::Argument);
    AttributeRecord result = record;
    object.read("name", result.name);
    object.read("title", result.title);
    object.read("tags", result.tags);
    object.read("description", result.description);
    object.read("unit_symbol", result.unitSymbol);
    object.read("length", result.length);
    object.read("resolution", result.resolution);
    object.read("minimum_value", result.minimumValue);
    object.read("maximum_value", result.maximumValue);
    object.read("default_value", result.defaultValue);
    object.read("invalid_value", result.invalidValue);
    object.read("named_values", result.namedValues);
    object.read("storage_class", result.storageClass);
    object.read("compression_options", result.compressionOptions);
    object.read("lod_settings", result.lodSettings);
    object.read("scale_factor", result.scaleFactor);
    record = std::move(result);
}

int AttributeTable::find(std::string_view name) const {
    for (std::size_t i = 0; i < m_attributes.size(); ++i)
        if (m_attributes[i].record.name == name)
            return static_cast<int>(i);
    return -1;
}

int AttributeTable::findUid(std::uint32_t uid) const {
    for (std::size_t i = 0; i < m_attributes.size(); ++i)
        if (m_attributes[i].uid == uid)
            return static_cast<int>(i);
    return -1;
}

Descriptor decodeDescriptor(std::string_view text) {
    const std::string_view whole = trimmed(text);
    const auto fail = [&](const std::string& reason) -> Failure {
        return {ErrorCode::Argument,
                "\"" + std::string(whole) + "\" does not name a point attribute: " + reason};
    };
    Descriptor result;
    std::size_t at = 0;
    while (at < whole.size() && isNameCharacter(whole[at]))
        ++at;
    result.name = whole.substr(0, at);
    if (result.name.empty() || !isNameStart(result.name[0]))
        throw fail("expected a name that begins with a letter.");
    std::string_view rest = trimmed(whole.substr(at));
    if (!rest.empty() && rest[0] == '[') {
        const std::size_t close = rest.find(']');
        if (close == std::string_view::npos)
            throw fail("expected \"]\" behind the element.");
        const std::string_view number = trimmed(rest.substr(1, close - 1));
        std::uint32_t element = 0;
        const auto [end, error] =
            std::from_chars(number.data(), number.data() + number.size(), element);
        if (error != std::errc() || end != number.data() + number.size())
            throw fail("expected a number between \"[\" and \"]\".");
        result.element = element;
        rest = trimmed(rest.substr(close + 1));
    }
    if (!rest.empty() && rest[0] == ':') {
        result.property = trimmed(rest.substr(1));
        if (result.property != "minimum" && result.property != "maximum" &&
            result.property != "default" && result.property != "invalid")
            throw fail("expected minimum, maximum, default or invalid behind \":\".");
    } else if (!rest.empty()) {
        throw fail("found \"" + std::string(rest) + "\" behind the name.");
    }
    return result;
}

ElementRange resolveElements(const AttributeTable& table, std::string_view descriptor) {
    const Descriptor parts = decodeDescriptor(descriptor);
    const int index = table.find(parts.name);
    if (index < 0)
        throw Failure(ErrorCode::NotFound,
                      "The database has no point attribute \"" + parts.name + "\".");
    const std::uint32_t length = table[index].record.length;
    if (!parts.property.empty())
        throw Failure(ErrorCode::Argument, "Values of \"" + parts.name + ":" + parts.property +
                                               "\" can't be bound, only those of an attribute.");
    if (parts.element >= length)
        throw Failure(ErrorCode::Argument, "The point attribute \"" + parts.name +
                                               "\" has the elements 0 to " +
                                               std::to_string(length - 1) + ", not " +
                                               std::to_string(parts.element) + ".");
    if (parts.element >= 0)
        return {static_cast<std::size_t>(index), static_cast<std::uint32_t>(parts.element), 1};
    return {static_cast<std::size_t>(index), 0, length};
}

}  // namespace tarvo::engine::schema
