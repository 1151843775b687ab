// The files that an import is told to read.
#pragma once

#include "cli/errors.h"
#include "exchange/import/importsteps.h"

#include <string>
#include <vector>

namespace tarvo::cli {

// Throws UsageError if one of the files is the database, by whatever name.
void refuseAsInput(const std::string& database, const std::vector<std::string>& fileNames);

// Opens the files; format: "las", "csv" or empty for what their extensions tell. Throws Failure if
// one can't be read.
exchange::PointSources openSources(const std::vector<std::string>& fileNames,
                                   const std::string& format);

// A progress line for each step of an import; the last one is gone with the function and its
// copies.
exchange::ImportProgress importProgress();

}  // namespace tarvo::cli
