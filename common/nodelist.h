// Lists of index nodes as the user types them.
#pragma once

#include <QString>
#include <cstdint>
#include <set>

namespace tarvo::common {

// Reads numbers and ranges ("1,4-7"). Empty pieces are skipped; a range that runs backwards is
// empty. Throws std::runtime_error with a text for the user on anything else, also when the list
// names more than nodeListLimit nodes.
std::set<std::uint32_t> parseNodeList(const QString& text);

constexpr std::size_t nodeListLimit = 10'000'000;

}  // namespace tarvo::common
