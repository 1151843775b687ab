// Processes that measure: memory and caches of one measurement are not those of another.
#pragma once

#include "benchmarks/measurement.h"

#include <string>
#include <vector>

namespace bench {

// Runs this program again with these arguments and returns what it wrote to standard output.
// Throws std::runtime_error unless it succeeds.
std::string outputOfSelf(const std::vector<std::string>& arguments);

// Runs a program to its end; what it writes goes into the log file. No answer is measured. The
// memory is at least that of this process. Throws std::runtime_error unless it succeeds.
Measurement runProgram(const std::vector<std::string>& command, const std::string& logFile);

}  // namespace bench
