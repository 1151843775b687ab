// What DuckDB is asked to do. It keeps the points in the best of several ways: tables in the order
// of insertion and sorted along a space-filling curve, and a sorted Parquet file.
#pragma once

#include "benchmarks/duckdb_api.h"
#include "benchmarks/measurement.h"

#include <string>
#include <vector>

namespace bench {

// The ways to keep the points, each in a file of its own with this ending.
inline const std::vector<std::string> duckdbLayouts = {"plain.duckdb", "sorted.duckdb", "parquet"};
// Among them.
inline const std::string unsortedLayout = "plain.duckdb";

// A task in the words of a command line; what was measured goes to the standard output:
//   import LASFILE DATABASE TARGET     "import": from arrays in memory to a file on the disk
//   count FILE SQL                     "first": with opening the file, "again"
//   page FILE SQL                      the same of 100 rows as text
//   csv FILE TARGET                    "csv"
void runDuckdb(const std::string& library, const std::vector<std::string>& words);

std::string duckdbVersion(const std::string& library);

}  // namespace bench
