// What the library is asked to do, through the interface layer.
#pragma once

#include <string>
#include <vector>

namespace bench {

// A task in the words of a command line; what was measured goes to the standard output:
//   count FILE FILTER     "first": with opening the file, "again"
//   decode FILE FILTER    "again", with nothing kept in memory from one time to the next
//   page FILE FILTER      as count, of 100 rows with all attributes as text
void runOurs(const std::vector<std::string>& words);

}  // namespace bench
