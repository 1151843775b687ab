#include "engine/report/text.h"

#include "engine/base/utf8.h"
#include "numbers/numbertext.h"

#include <algorithm>
#include <charconv>
#include <cstdio>
#include <optional>

namespace tarvo::engine::report {

namespace {

// Control characters, the separators of lines and paragraphs, what turns the direction of the text
// that follows, and the codes that a rich-text document keeps its own structure in.
bool breaksLine(std::string_view character) {
    const auto lead = static_cast<unsigned char>(character[0]);
    if (character.size() == 1)
        return lead < 0x20 || lead == 0x7f;
    if (lead == 0xc2)
        return static_cast<unsigned char>(character[1]) < 0xa0;
    const bool turns = (character >= "\u202a" && character <= "\u202e") ||
                       (character >= "\u2066" && character <= "\u2069") || character == "\u200e" ||
                       character == "\u200f" || character == "\u061c";
    return turns || character == "\u2028" || character == "\u2029" || character == "\ufdd0" ||
           character == "\ufdd1" || character == "\ufffc";
}

// Of a number without exponent, and nothing else.
std::optional<std::size_t> placesOf(std::string_view number) {
    if (number.empty() || number.find_first_not_of("-0123456789.") != std::string_view::npos)
        return std::nullopt;
    const std::size_t mark = number.find('.');
    return mark == std::string_view::npos ? 0 : number.size() - mark - 1;
}

}  // namespace

std::string oneLine(std::string_view text) {
    std::string out;
    out.reserve(text.size());
    forEachCharacter(text, [&](std::string_view character) {
        out += breaksLine(character) ? std::string_view(" ") : character;
    });
    return out;
}

std::string escaped(std::string_view text) {
    std::string out;
    for (const char c : oneLine(text)) {
        switch (c) {
            case '&':
                out += "&amp;";
                break;
            case '<':
                out += "&lt;";
                break;
            case '>':
                out += "&gt;";
                break;
            case '"':
                out += "&quot;";
                break;
            case '\'':
                out += "&#39;";
                break;
            default:
                out += c;
        }
    }
    return out;
}

std::string csvCell(std::string_view text) {
    const std::string line = oneLine(text);
    const bool plain = line.empty() || (line.find_first_of(",\"") == std::string::npos &&
                                        line.front() != ' ' && line.back() != ' ');
    if (plain)
        return line;
    std::string out = "\"";
    for (const char c : line)
        out += c == '"' ? std::string("\"\"") : std::string(1, c);
    return out + "\"";
}

std::string valueText(const schema::Grid& grid, std::uint64_t code) {
    return grid.hasWholeValues() ? numbers::wholeText(grid.integerValue(code))
                                 : numbers::numberText(grid.value(code));
}

std::size_t mostPlaces(const std::vector<std::string>& numbers) {
    constexpr std::size_t most = 15;
    std::size_t places = 0;
    for (const std::string& number : numbers)
        places = std::max(places, placesOf(number).value_or(0));
    return std::min(places, most);
}

std::string withPlaces(std::string number, std::size_t places) {
    const auto has = placesOf(number);
    if (!has || *has >= places)
        return number;
    if (*has == 0)
        number += '.';
    return number + std::string(places - *has, '0');
}

std::string percentText(std::uint64_t part, std::uint64_t whole) {
    const double value =
        whole == 0 ? 0 : 100 * static_cast<double>(part) / static_cast<double>(whole);
    char text[64];
    const auto end =
        std::to_chars(text, text + sizeof text, value, std::chars_format::fixed, 1).ptr;
    return std::string(text, end) + " %";
}

std::string elementName(const schema::AttributeRecord& record, std::uint32_t element) {
    return record.length > 1 ? record.name + "[" + std::to_string(element) + "]" : record.name;
}

std::string_view typeName(const schema::AttributeRecord& record) {
    constexpr std::string_view names[] = {"NONE",  "UINT8",  "INT8",  "UINT16", "INT16", "UINT32",
                                          "INT32", "UINT64", "INT64", "SINGLE", "DOUBLE"};
    const std::uint32_t type = schema::dataType(record);
    return type < std::size(names) ? names[type] : "unknown";
}

std::string_view storageName(const schema::AttributeRecord& record) {
    constexpr std::string_view names[] = {"constant", "variable", "dynamic"};
    return record.storageClass >= 1 && record.storageClass <= 3 ? names[record.storageClass - 1]
                                                                : "unknown";
}

}  // namespace tarvo::engine::report
