// Lists of index nodes as people type them.
#pragma once

#include "qrb/queries.h"

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

// The same without the nodes that only ranges name.
std::vector<std::uint32_t> parseSingleNodes(std::string_view text);

// The same as parseNodeList, but of ranges only the nodes of the index with this root: its numbers
// have gaps. A node that is named by itself stays, so that a mistake is told.
std::vector<std::uint32_t> existingNodes(std::string_view text,
                                         const qrb::pointcloud::IndexNode& root);

}  // namespace tarvo::core
