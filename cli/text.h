// Lists and foreign texts.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace tarvo::cli {

// core::parseNodeList for --nodes: throws UsageError.
std::vector<std::uint32_t> parseNodes(std::string_view text);

// A text from a file as a terminal may show it: control characters but line breaks, which could
// move the cursor or worse, and those that turn the direction of what follows become "?", tabs
// blanks.
std::string printable(std::string_view text);
// The same for what stands on one line: line breaks become blanks.
std::string oneLine(std::string_view text);

}  // namespace tarvo::cli
