#include "exchange/text/fields.h"

#include "exchange/csv/columntype.h"

#include <algorithm>
#include <cctype>
#include <string>

namespace tarvo::exchange::text {

namespace {

bool isBlank(char c) {
    return c == ' ' || c == '\t' || c == '\r';
}

void splitBlanks(std::string_view line, std::vector<std::string_view>& fields) {
    const char* at = line.data();
    const char* const end = at + line.size();
    while (true) {
        while (at != end && isBlank(*at)) {
            ++at;
        }
        if (at == end) {
            return;
        }
        const char* const begin = at;
        while (at != end && !isBlank(*at)) {
            ++at;
        }
        const std::string_view field(begin, static_cast<std::size_t>(at - begin));
        fields.push_back(field);
    }
}

std::string_view trimmed(std::string_view text) {
    while (!text.empty() && isBlank(text.front())) {
        text.remove_prefix(1);
    }
    while (!text.empty() && isBlank(text.back())) {
        text.remove_suffix(1);
    }
    return text;
}

// "1,5" or "12": a comma at most, between digits.
bool mayHaveDecimalComma(std::string_view field) {
    const std::size_t comma = field.find(',');
    return field.find('.') == std::string_view::npos &&
           (comma == std::string_view::npos ||
            (comma > 0 && comma + 1 < field.size() &&
             field.find(',', comma + 1) == std::string_view::npos));
}

}  // namespace

bool isComment(std::string_view line) {
    line = trimmed(line);
    if (line.starts_with(';')) {
        // Else the first of several values, which there is none of.
        line.remove_prefix(1);
        return line.find(';') == std::string_view::npos &&
               std::ranges::any_of(line, [](unsigned char c) { return std::isalpha(c) != 0; });
    }
    return line.starts_with('#') || line.starts_with('%') || line.starts_with("//");
}

std::string_view withoutRemark(std::string_view line) {
    const std::size_t mark = line.find('#');
    if (mark == std::string_view::npos || mark == 0 || !isBlank(line[mark - 1])) {
        return line;
    }
    std::vector<std::string_view> fields;
    const std::string_view before = line.substr(0, mark);
    splitFields(before, separatorOf(before), fields);
    return !fields.empty() && isNumber(fields.front()) ? before : line;
}

Separator separatorOf(std::string_view line) {
    if (line.find(';') != std::string_view::npos) {
        return Separator::Semicolon;
    }
    if (line.find(',') == std::string_view::npos) {
        return Separator::Blanks;
    }
    std::vector<std::string_view> fields;
    splitBlanks(line, fields);
    return fields.size() > 1 && std::all_of(fields.begin(), fields.end(), mayHaveDecimalComma)
               ? Separator::Blanks
               : Separator::Comma;
}

void splitFields(std::string_view line, Separator separator,
                 std::vector<std::string_view>& fields) {
    fields.clear();
    if (separator == Separator::Blanks) {
        splitBlanks(line, fields);
        return;
    }
    const char character = separator == Separator::Comma ? ',' : ';';
    while (true) {
        const std::size_t end = line.find(character);
        const std::string_view field = trimmed(line.substr(0, end));
        fields.push_back(field);
        if (end == std::string_view::npos) {
            return;
        }
        line.remove_prefix(end + 1);
    }
}

bool isNumber(std::string_view field) {
    double value = 0;
    std::string point(field.substr(0, 400));
    std::replace(point.begin(), point.end(), ',', '.');
    return csv::parseNumber(point, value);
}

}  // namespace tarvo::exchange::text
