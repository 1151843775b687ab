// Values of points that stand in a table.
#pragma once

#include "cli/database.h"

#include <cstdint>
#include <string>

namespace tarvo::cli {

struct TableResult {
    std::uint64_t changed = 0;  // points
    std::uint64_t rows = 0;
};

// Gives the points whose ids stand in a CSV file the values beside them; the others of its rows are
// passed over. Needs a pending transaction. Throws Failure before anything changes where ids are
// none or stand twice, and where an attribute can't hold a value, or only rounded without round.
TableResult updateFromTable(const Database& database, const std::string& fileName, bool round);

}  // namespace tarvo::cli
