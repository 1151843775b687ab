// Lists of index nodes as people type them.
#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

namespace tarvo::core {

// The most nodes that a list may name.
inline constexpr std::size_t nodeListLimit = 10'000'000;

// Reads numbers and ranges such as "1,4-7": ids in ascending order, each once. Empty pieces are
// skipped; a range that runs backwards is empty. Throws Failure on anything else, also when the
// list names more than nodeListLimit nodes.
std::vector<std::uint32_t> parseNodeList(std::string_view text);

}  // namespace tarvo::core
