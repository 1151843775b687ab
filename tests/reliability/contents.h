// What the databases and other files of a folder hold, for comparing.
#pragma once

#include "qrb/pointcloud.h"

#include <string>

namespace tarvo::trial {

// The library's report of a check where it finds a fault in any kept state; empty where all is
// well. Throws qrb::Error.
std::string faultsOf(const qrb::Pointcloud& cloud);

// What the database holds, but for times: transactions, metadata, attributes and points of the
// current state; and the faults. Begins with a line for people. The library must be loaded; throws
// qrb::Error.
std::string contentsOfDatabase(const std::string& file);

// The same of all databases in a folder, and the bytes of its other files; an error's text in place
// of what can't be read. Journals and files that are still being written don't count.
std::string contentsOf(const std::string& folder);

// Adds points and commits them. Throws qrb::Error.
void addPoints(const std::string& file);

}  // namespace tarvo::trial
