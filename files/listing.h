// What is in a folder.
#pragma once

#include <string>
#include <vector>

namespace tarvo::files {

// The names in a folder, without its path, in no order; none where it can't be read. (The standard
// library's iterator ends the program when there is no memory.)
std::vector<std::string> namesIn(const std::string& folder);

}  // namespace tarvo::files
