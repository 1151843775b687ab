// How the catalogue writes the units that coordinate reference systems are in.
#pragma once

#include <string>
#include <string_view>

namespace tarvo::exchange::las {

// By the factor to metres or radians; where no unit of the table has it, the name that is given.
// Empty for factors that no unit has: 0, negative, infinite, no number.
std::string lengthUnit(double metres, std::string_view name);
std::string angleUnit(double radians, std::string_view name);
// By the code in the EPSG register; empty: not a code of a unit that is known.
std::string lengthUnitOfCode(int code);
std::string angleUnitOfCode(int code);

// A text of a file as a short one for people: UTF-8 without control characters, cut to a length
// in bytes.
std::string shortText(std::string_view text, std::size_t length);
// Adds words to what could not be understood; once, and no more than tells that there is much.
void noteUnread(std::string& unread, const std::string& words);

}  // namespace tarvo::exchange::las
