// Keys of signatures as people write them.
#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

namespace tarvo::core {

// The bytes of pairs of hexadecimal digits; blanks, line breaks, commas, colons and hyphens may
// stand between pairs. Throws Failure for any other character and for half a pair, with its place
// but never with the text.
std::vector<std::uint8_t> keyOfText(std::string_view text);

// The key that a file holds: the bytes of its text where it is pairs of hexadecimal digits as
// above, else the file's bytes as they are.
std::vector<std::uint8_t> keyOfFile(std::string_view contents);

}  // namespace tarvo::core
