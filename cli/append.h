// The import of files into a database that exists.
#pragma once

#include "cli/database.h"
#include "exchange/import/appendplan.h"

#include <string>

namespace tarvo::cli {

// Adds all points, and what goes with them, in one transaction, and writes how many there were.
// Throws Failure, UsageError and Error; nothing is changed then.
void appendFiles(Database& database, const exchange::PointSources& sources,
                 const exchange::AppendOptions& options, const Change& change);

}  // namespace tarvo::cli
