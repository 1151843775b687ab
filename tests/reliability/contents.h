// What the databases and other files of a folder hold, for comparing.
#pragma once

#include <string>

namespace tarvo::trial {

// What the database holds, but for times: transactions, metadata, attributes and points of the
// current state. Begins with a line for people. The library must be loaded; throws qrb::Error.
std::string contentsOfDatabase(const std::string& file);

// The same of all databases in a folder, and the bytes of its other files; an error's text in place
// of what can't be read. Journals and files that are still being written don't count.
std::string contentsOf(const std::string& folder);

// Adds points and commits them. Throws qrb::Error.
void addPoints(const std::string& file);

}  // namespace tarvo::trial
