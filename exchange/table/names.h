// Names and texts that come from files, made fit for a database.
#pragma once

#include "core/utf8.h"

#include <cstdint>
#include <set>
#include <string>
#include <string_view>

namespace tarvo::exchange {

// Letters, digits and underscores only; lower case; never empty.
std::string safeName(std::string_view text);

// Whether a database can have an attribute of this name: letters, digits, underscores and dots.
bool isAttributeName(std::string_view name);
// The same with a dot: what an export of a database wrote, rather than a title of somebody else's.
bool isFullName(std::string_view name);

// Elements of an attribute that names can tell.
inline constexpr std::uint32_t mostElements = 4096;
// Takes "NAME[I]" apart; other names stay as they are.
bool splitElement(std::string& name, std::uint32_t& element);

// The name, or the name with "_2", "_3", ... where it is taken; taken afterwards.
std::string uniqueName(const std::string& name, std::set<std::string>& taken);

using core::isUtf8;
using core::validUtf8;

}  // namespace tarvo::exchange
