// How points get into DuckDB: from arrays in memory, by one appender per thread.
#pragma once

#include "benchmarks/columns.h"
#include "benchmarks/duckdb_api.h"

#include <string>

namespace bench {

// Makes the file of a layout and leaves everything on the disk. Returns the number of points.
std::uint64_t importIntoDuckdb(const DuckdbApi& api, const StoredPoints& points,
                               const std::string& target);

}  // namespace bench
