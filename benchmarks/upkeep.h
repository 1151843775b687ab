// What a database is asked for besides its points, and what changes it: work whose cost should not
// grow with the size, or no faster than what it changes.
#pragma once

#include <string>
#include <vector>

namespace bench {

// The measurements of the task "panels", in their order.
extern const std::vector<std::string> panelNames;

// A task in the words of a command line; what was measured goes to the standard output:
//   panels FILE            opening, and what each panel of the window asks for
//   update FILE IDS CLASS  evenly spread points get the class
//   fill FILE FILTER       the points get a class
//   remove FILE IDS        evenly spread points go
//   lod FILE               a level of detail of a tenth is built; the answer is all points
//   check FILE             everything is read
//   vacuum FILE            all states but the first and the current one are forgotten
// Each but "panels" tells one measurement of its name; changes are in a transaction of their own.
void runUpkeep(const std::vector<std::string>& words);

}  // namespace bench
