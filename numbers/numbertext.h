// Numbers as texts that don't depend on the user's locale: "." is the decimal mark, no digit that
// tells a number from its neighbours is lost, and whoever writes one writes it like this.
#pragma once

#include "numbers/wide.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace tarvo::numbers {

// That a number has: the greatest has 309 digits before the mark.
inline constexpr std::size_t mostCharacters = 700;

// The shortest text that reads back as the same number; an exponent only below 1e-7 and from 1e21
// on, where digits become very many. "nan", "inf" and "-inf" for what is no finite number.
std::string numberText(double value);

// The same for tables that other programs read: an exponent only below 1e-30 and from 1e31 on.
void appendPlain(std::string& text, double value);
// The same from at on, where there must be room for mostCharacters; returns the end.
char* writePlain(char* at, double value);

// With this many significant digits, 1 to 17; zeros at the end are left out.
std::string roundedText(double value, int digits);

// With this many decimal places, 0 to 300; what rounds to zero has no sign. Any finite number.
void appendFixed(std::string& text, double value, int places);
// The same from at on, where there must be room for mostCharacters; returns the end.
char* writeFixed(char* at, double value, int places);

// All digits of a whole number.
std::string wholeText(Wide value);

// With commas between the thousands.
std::string groupedText(std::uint64_t value);

// The number that the whole text stands for, blanks and one "+" before it aside; nothing for other
// texts and for numbers that no double holds. Only finite numbers.
std::optional<double> readNumber(std::string_view text);

}  // namespace tarvo::numbers
