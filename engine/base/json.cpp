#include "engine/base/json.h"

#include <rapidjson/error/en.h>

#include <cmath>
#include <limits>

namespace tarvo::engine {

namespace {

constexpr int maximumJsonDepth = 100;

// Values are written and compared recursively: nesting is bounded before anything is built.
bool nestsTooDeep(std::string_view text) {
    int depth = 0;
    bool inString = false;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const char c = text[i];
        if (inString) {
            if (c == '\\')
                ++i;
            else if (c == '"')
                inString = false;
        } else if (c == '"') {
            inString = true;
        } else if (c == '{' || c == '[') {
            if (++depth > maximumJsonDepth)
                return true;
        } else if (c == '}' || c == ']') {
            --depth;
        }
    }
    return false;
}

std::string quoted(std::string_view name) {
    return "\"" + std::string(name) + "\"";
}

}  // namespace

rapidjson::Document parseJson(std::string_view text, std::string_view what, ErrorCode code) {
    rapidjson::Document document;
    if (text.size() > maximumJsonSize)
        throw Failure(code, std::string(what) + " is too large.");
    if (nestsTooDeep(text))
        throw Failure(code, std::string(what) + " nests more than " +
                                std::to_string(maximumJsonDepth) + " levels.");
    // The iterative parser keeps deep nesting off the stack.
    document.Parse<rapidjson::kParseIterativeFlag | rapidjson::kParseFullPrecisionFlag>(
        text.data(), text.size());
    if (document.HasParseError())
        throw Failure(code, std::string(what) + " is not valid JSON.",
                      std::string(rapidjson::GetParseError_En(document.GetParseError())) +
                          " At byte " + std::to_string(document.GetErrorOffset() + 1) + ".");
    return document;
}

JsonObject::JsonObject(const rapidjson::Value& value, std::string_view what, ErrorCode code)
    : m_value(value), m_what(what), m_code(code) {
    if (!value.IsObject())
        throw Failure(code, m_what + " is not a JSON object.");
}

void JsonObject::fail(const char* name, const char* expected) const {
    throw Failure(m_code, m_what + " has no valid member " + quoted(name) + ".",
                  std::string("Expected ") + expected + ".");
}

bool JsonObject::has(const char* name) const {
    return m_value.HasMember(name);
}

const rapidjson::Value& JsonObject::get(const char* name) const {
    const auto member = m_value.FindMember(name);
    if (member == m_value.MemberEnd())
        fail(name, "a value");
    return member->value;
}

std::string JsonObject::text(const char* name) const {
    const rapidjson::Value& value = get(name);
    if (!value.IsString())
        fail(name, "a text");
    return {value.GetString(), value.GetStringLength()};
}

std::uint64_t JsonObject::number(const char* name, std::uint64_t limit) const {
    const rapidjson::Value& value = get(name);
    if (!value.IsUint64() || value.GetUint64() > limit)
        fail(name, ("a whole number of at most " + std::to_string(limit)).c_str());
    return value.GetUint64();
}

JsonObject JsonObject::object(const char* name) const {
    const rapidjson::Value& value = get(name);
    if (!value.IsObject())
        fail(name, "an object");
    return {value, m_what + ", member " + quoted(name), m_code};
}

const rapidjson::Value& JsonObject::array(const char* name) const {
    const rapidjson::Value& value = get(name);
    if (!value.IsArray())
        fail(name, "an array");
    return value;
}

void JsonObject::read(const char* name, std::string& value) const {
    if (has(name))
        value = text(name);
}

void JsonObject::read(const char* name, double& value) const {
    if (!has(name))
        return;
    const rapidjson::Value& member = get(name);
    if (member.IsNull())
        value = std::numeric_limits<double>::quiet_NaN();
    else if (member.IsNumber())
        value = member.GetDouble();
    else
        fail(name, "a number or null");
}

void JsonObject::read(const char* name, bool& value) const {
    if (!has(name))
        return;
    const rapidjson::Value& member = get(name);
    if (!member.IsBool())
        fail(name, "true or false");
    value = member.GetBool();
}

void JsonObject::read(const char* name, std::uint8_t& value) const {
    if (has(name))
        value = static_cast<std::uint8_t>(number(name, UINT8_MAX));
}

void JsonObject::read(const char* name, std::uint32_t& value) const {
    if (has(name))
        value = static_cast<std::uint32_t>(number(name, UINT32_MAX));
}

void JsonObject::read(const char* name, std::uint64_t& value) const {
    if (has(name))
        value = number(name);
}

void writeMember(JsonWriter& writer, const char* name, double value) {
    writer.Key(name);
    if (std::isnan(value))
        writer.Null();
    else
        writer.Double(value);
}

}  // namespace tarvo::engine
