#include "engine/validation/jsonvalue.h"

#include "numbers/decimal.h"
#include "numbers/numbertext.h"

#include <cmath>
#include <map>

namespace tarvo::engine::validation {

using numbers::Wide;

namespace {

constexpr double two64 = 18446744073709551616.0;

bool isInteger(const Value& value) {
    return value.IsInt64() || value.IsUint64();
}

Wide integerOf(const Value& value) {
    return value.IsInt64() ? Wide(value.GetInt64()) : Wide(value.GetUint64());
}

int sign(bool less, bool greater) {
    return less ? -1 : greater ? 1 : 0;
}

int compareMixed(Wide integer, double number) {
    if (std::abs(number) >= two64)
        return number > 0 ? -1 : 1;
    const double whole = std::trunc(number);
    const Wide other = static_cast<Wide>(whole);
    return integer != other ? sign(integer < other, true) : sign(whole<number, whole> number);
}

// The magnitude of a number as people read it: digits * 10^exponent.
struct Magnitude {
    Wide digits;
    int exponent;
};

Magnitude magnitudeOf(const Value& value) {
    if (isInteger(value)) {
        const Wide integer = integerOf(value);
        return {integer < 0 ? -integer : integer, 0};
    }
    const numbers::Decimal decimal = numbers::shortestDecimal(std::abs(value.GetDouble()));
    return {decimal.digits, decimal.exponent};
}

}  // namespace

std::string textOf(const Value& text) {
    return {text.GetString(), text.GetStringLength()};
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

std::string shortened(const std::string& text) {
    constexpr std::size_t most = 60;
    if (text.size() <= most)
        return text;
    std::size_t end = most;
    while (end > 0 && (text[end] & 0xc0) == 0x80)
        --end;
    return text.substr(0, end) + "...";
}

bool isWholeNumber(const Value& value) {
    return isInteger(value) ||
           (value.IsDouble() && std::trunc(value.GetDouble()) == value.GetDouble());
}

int compareNumbers(const Value& one, const Value& other) {
    if (isInteger(one))
        return isInteger(other)
                   ? sign(integerOf(one) < integerOf(other), integerOf(one) > integerOf(other))
                   : compareMixed(integerOf(one), other.GetDouble());
    if (isInteger(other))
        return -compareMixed(integerOf(other), one.GetDouble());
    return sign(one.GetDouble() < other.GetDouble(), one.GetDouble() > other.GetDouble());
}

bool isMultiple(const Value& value, const Value& divisor) {
    const Magnitude number = magnitudeOf(value);
    Magnitude part = magnitudeOf(divisor);
    int shift = number.exponent - part.exponent;
    for (; shift < 0 && part.digits <= number.digits; ++shift)
        part.digits *= 10;
    Wide rest = number.digits % part.digits;
    for (; shift > 0 && rest != 0; --shift)
        rest = rest * 10 % part.digits;
    if (rest == 0 || isWholeNumber(value))
        return rest == 0;
    // What was computed may miss the multiple by a few of its last bits.
    const double quotient = value.GetDouble() / divisor.GetDouble();
    return std::abs(quotient) < 0x1p50 &&
           std::abs(quotient - std::round(quotient)) <= 0x1p-50 * std::abs(quotient);
}

std::string canonicalText(const Value& value) {
    if (value.IsNull())
        return "null";
    if (value.IsBool())
        return value.GetBool() ? "true" : "false";
    if (value.IsNumber()) {
        if (isInteger(value))
            return numbers::wholeText(integerOf(value));
        const double number = value.GetDouble();
        const bool isInteger = std::trunc(number) == number && std::abs(number) < two64;
        return isInteger ? numbers::wholeText(static_cast<Wide>(number))
                         : numbers::numberText(number);
    }
    if (value.IsString())
        return quotedText(textOf(value));
    std::string result;
    if (value.IsArray()) {
        for (const Value& element : value.GetArray())
            result += (result.empty() ? "" : ",") + canonicalText(element);
        return "[" + result + "]";
    }
    std::map<std::string, std::string> members;
    for (const auto& member : value.GetObject())
        members.emplace(textOf(member.name), canonicalText(member.value));
    for (const auto& [name, text] : members)
        result += (result.empty() ? "" : ",") + quotedText(name) + ":" + text;
    return "{" + result + "}";
}

std::string typeName(const Value& value) {
    return value.IsNull()     ? "null"
           : value.IsBool()   ? "true or false"
           : value.IsString() ? "a string"
           : value.IsArray()  ? "an array"
           : value.IsObject() ? "an object"
                              : "a number";
}

std::string describe(const Value& value) {
    return value.IsArray() || value.IsObject() ? typeName(value) : shortened(canonicalText(value));
}

std::string childPointer(const std::string& parent, std::string_view name) {
    std::string result = parent + "/";
    for (const char c : name) {
        if (c == '~')
            result += "~0";
        else if (c == '/')
            result += "~1";
        else
            result += c;
    }
    return result;
}

}  // namespace tarvo::engine::validation
