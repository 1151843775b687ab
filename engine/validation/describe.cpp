#include "engine/validation/describe.h"

#include "numbers/numbertext.h"

#include <valijson/internal/adapter.hpp>

#include <cmath>
#include <cstdint>
#include <map>

namespace tarvo::engine::validation {

using numbers::numberText;

bool isWholeNumber(const Adapter& value) {
    return value.isInteger() ||
           (value.isDouble() && std::trunc(value.getDouble()) == value.getDouble());
}

double numberOf(const Adapter& value) {
    return value.isInteger() ? static_cast<double>(value.getInteger()) : value.getDouble();
}

std::string quotedText(const std::string& text) {
    std::string result = "\"";
    for (const char c : text) {
        if (c == '"' || c == '\\')
            result += '\\';
        if (static_cast<unsigned char>(c) < 0x20) {
            constexpr const char* digits = "0123456789abcdef";
            result += std::string("\\u00") + digits[c >> 4] + digits[c & 15];
        } else {
            result += c;
        }
    }
    return result + '"';
}

std::string canonicalText(const Adapter& value) {
    if (value.isNull())
        return "null";
    if (value.isBool())
        return value.getBool() ? "true" : "false";
    if (value.isInteger())
        return std::to_string(value.getInteger());
    if (value.isDouble()) {
        const double number = value.getDouble();
        const bool exact = std::trunc(number) == number && std::abs(number) < 9e15;
        return exact ? std::to_string(static_cast<std::int64_t>(number)) : numberText(number);
    }
    if (value.isString())
        return quotedText(value.getString());
    std::string result;
    if (value.isArray()) {
        value.applyToArray([&](const Adapter& element) {
            result += (result.empty() ? "" : ",") + canonicalText(element);
            return true;
        });
        return "[" + result + "]";
    }
    std::map<std::string, std::string> members;
    value.applyToObject([&](const std::string& name, const Adapter& member) {
        members.emplace(name, canonicalText(member));
        return true;
    });
    for (const auto& [name, text] : members)
        result += (result.empty() ? "" : ",") + quotedText(name) + ":" + text;
    return "{" + result + "}";
}

std::string shortened(const std::string& text) {
    constexpr std::size_t most = 60;
    if (text.size() <= most)
        return text;
    std::size_t end = most;
    while (end > 0 && (text[end] & 0xc0) == 0x80)
        --end;
    return text.substr(0, end) + "...";
}

std::string typeName(const Adapter& value) {
    return value.isNull()     ? "null"
           : value.isBool()   ? "true or false"
           : value.isString() ? "a string"
           : value.isArray()  ? "an array"
           : value.isObject() ? "an object"
                              : "a number";
}

std::string describe(const Adapter& value) {
    if (value.isArray() || value.isObject())
        return typeName(value);
    return shortened(canonicalText(value));
}

}  // namespace tarvo::engine::validation
