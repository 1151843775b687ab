// Names and texts that come from files, made fit for a database.
#pragma once

#include <set>
#include <string>
#include <string_view>

namespace tarvo::cli {

// Letters, digits and underscores only; lower case; never empty.
std::string safeName(std::string_view text);

// The name, or the name with "_2", "_3", ... where it is taken; taken afterwards.
std::string uniqueName(const std::string& name, std::set<std::string>& taken);

bool isUtf8(std::string_view text);

// The text itself, or read as Latin-1 where it is not UTF-8.
std::string validUtf8(std::string_view text);

}  // namespace tarvo::cli
