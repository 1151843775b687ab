#include "numbers/sizetext.h"

#include "numbers/numbertext.h"

#include <algorithm>
#include <cmath>

namespace tarvo::numbers {

namespace {

constexpr const char* units[] = {"B", "KB", "MB", "GB", "TB"};
constexpr int mostUnit = 4;
constexpr std::string_view unitLetters = "BKMGT";

std::string_view trimmed(std::string_view text) {
    constexpr std::string_view blanks = " \t\r\n";
    text.remove_prefix(std::min(text.find_first_not_of(blanks), text.size()));
    return text.substr(0, text.find_last_not_of(blanks) + 1);
}

}  // namespace

std::string sizeText(std::uint64_t bytes) {
    double value = static_cast<double>(bytes);
    int unit = 0;
    for (; value >= 1024.0 && unit < mostUnit; ++unit)
        value /= 1024.0;
    std::string text;
    numbers::appendFixed(text, value, unit == 0 ? 0 : 2);
    return text + ' ' + units[unit];
}

std::optional<std::uint64_t> sizeOfText(std::string_view text) {
    constexpr double exactLimit = 9007199254740992.0;  // 2^53
    text = trimmed(text);
    const std::size_t end = std::min(text.find_first_not_of("0123456789."), text.size());
    std::string unit;
    for (const char c : trimmed(text.substr(end)))
        unit += c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
    const std::size_t power = unit.empty() ? 0 : unitLetters.find(unit.front());
    const bool isUnit =
        unit.size() < 2 || (power > 0 && (unit.substr(1) == "B" || unit.substr(1) == "IB"));
    const std::optional<double> number = numbers::readNumber(text.substr(0, end));
    if (end == 0 || !number || power == std::string_view::npos || !isUnit)
        return std::nullopt;
    const double bytes = std::ldexp(*number, 10 * static_cast<int>(power));
    if (bytes >= exactLimit)
        return std::nullopt;
    return static_cast<std::uint64_t>(bytes);
}

}  // namespace tarvo::numbers
