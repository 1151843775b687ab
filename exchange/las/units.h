// How the catalogue writes the units that coordinate reference systems are in.
#pragma once

#include <string>
#include <string_view>

namespace tarvo::exchange::las {

// By the factor to metres or radians; where no usual unit has it, the name that is given.
std::string lengthUnit(double metres, std::string_view name);
std::string angleUnit(double radians, std::string_view name);
// By the code in the EPSG register; empty: not a code of a usual unit.
std::string unitOfCode(int code);

// A text of a file as a short one for people: UTF-8 without control characters, cut to a length
// in bytes.
std::string shortText(std::string_view text, std::size_t length);

}  // namespace tarvo::exchange::las
