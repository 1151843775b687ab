// The entries of a changelog's text.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace tarvo::cli {

// The text of the entry with a number: from the line that begins with "[#NUMBER]" to the next
// entry. Of several the last one, which is the database's own where others were imported; empty if
// there is none.
std::string changelogEntryOf(std::string_view changelog, std::uint32_t number);

}  // namespace tarvo::cli
