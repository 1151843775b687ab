// Lines of numbers: comments, what separates the numbers, the numbers one by one.
#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

namespace tarvo::exchange::text {

enum class Separator : std::uint8_t { Blanks, Comma, Semicolon };

// Whether the line begins with #, % or //, or is words behind a semicolon.
bool isComment(std::string_view line);
// A line of numbers without what stands behind them and a blank from a # on.
std::string_view withoutRemark(std::string_view line);

// Of a line of numbers: a semicolon wherever one stands; a comma where it does not stand within
// numbers that are separated by blanks ("1,5 2,5"); else blanks and tabs, any number of them.
Separator separatorOf(std::string_view line);

// Takes a line apart; blanks around a field do not belong to it.
void splitFields(std::string_view line, Separator separator, std::vector<std::string_view>& fields);

// A decimal number, with a comma or a point; "nan" and "inf" too.
bool isNumber(std::string_view field);

}  // namespace tarvo::exchange::text
