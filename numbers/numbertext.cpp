#include "numbers/numbertext.h"

#include "numbers/digits.h"

#include <algorithm>
#include <charconv>
#include <cmath>

namespace tarvo::numbers {

namespace {

char* writeShortest(char* at, double value, double plainFrom, double plainBelow) {
    if (std::isnan(value))
        return std::copy_n("nan", 3, at);
    const double size = std::fabs(value);
    const bool plain = value == 0 || (size >= plainFrom && size < plainBelow);
    const auto form = plain ? std::chars_format::fixed : std::chars_format::scientific;
    return std::to_chars(at, at + mostCharacters, value, form).ptr;
}

}  // namespace

std::string numberText(double value) {
    char buffer[mostCharacters];
    return {buffer, writeShortest(buffer, value, 1e-7, 1e21)};
}

char* writePlain(char* at, double value) {
    return writeShortest(at, value, 1e-30, 1e31);
}

void appendPlain(std::string& text, double value) {
    char buffer[mostCharacters];
    text.append(buffer, writePlain(buffer, value));
}

std::string roundedText(double value, int digits) {
    char buffer[64];
    return {buffer, std::to_chars(buffer, buffer + sizeof buffer, value, std::chars_format::general,
                                  std::clamp(digits, 1, 17))
                        .ptr};
}

char* writeFixed(char* at, double value, int places) {
    if (char* const end = writeExactFixed(at, value, places))
        return end;
    char* const end =
        std::to_chars(at, at + mostCharacters, value, std::chars_format::fixed, places).ptr;
    const auto isZero = [](char c) { return c == '-' || c == '0' || c == '.'; };
    return *at == '-' && std::all_of(at, end, isZero) ? std::copy(at + 1, end, at) : end;
}

void appendFixed(std::string& text, double value, int places) {
    char buffer[mostCharacters];
    text.append(buffer, writeFixed(buffer, value, places));
}

std::string wholeText(Wide value) {
    std::string text;
    const bool negative = value < 0;
    do {
        const int digit = static_cast<int>(value % 10);
        text.push_back(static_cast<char>('0' + (digit < 0 ? -digit : digit)));
        value /= 10;
    } while (value != 0);
    if (negative)
        text.push_back('-');
    std::reverse(text.begin(), text.end());
    return text;
}

std::string groupedText(std::uint64_t value) {
    std::string text = std::to_string(value);
    for (std::size_t at = text.size(); at > 3;) {
        at -= 3;
        text.insert(at, 1, ',');
    }
    return text;
}

std::optional<double> readNumber(std::string_view text) {
    constexpr std::string_view blanks = " \t\r\n";
    text.remove_prefix(std::min(text.find_first_not_of(blanks), text.size()));
    text = text.substr(0, text.find_last_not_of(blanks) + 1);
    const bool positive = text.starts_with('+');
    text.remove_prefix(positive ? 1 : 0);
    // A sign behind the sign would be taken for the number's own.
    if (text.empty() || (positive && text.front() == '-'))
        return std::nullopt;
    double number = 0;
    const auto [last, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (error != std::errc() || last != text.data() + text.size() || !std::isfinite(number))
        return std::nullopt;
    return number;
}

}  // namespace tarvo::numbers
