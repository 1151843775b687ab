// The files that this run has read: none of its outputs may take the place of one, by whatever
// name.
#pragma once

#include <string>
#include <vector>

namespace tarvo::cli {

// For one thread, as everything here.
void noteInput(const std::string& fileName);
const std::vector<std::string>& inputs();

}  // namespace tarvo::cli
