// Sizes in bytes as people read and write them: 1 KB is 1024 bytes.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace tarvo::numbers {

// "1023 B", "1.50 KB", ... up to TB.
std::string sizeText(std::uint64_t bytes);

// What such a text stands for: a number of bytes, or one with a unit behind it ("64M", "1.5 GB",
// "512KiB"), in any case of letters; blanks may stand around the number. What the unit leaves of a
// byte is cut off. Nothing for other texts, and for 2^53 bytes and more.
std::optional<std::uint64_t> sizeOfText(std::string_view text);

}  // namespace tarvo::numbers
