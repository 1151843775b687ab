// The measurements at one number of points: import, counts, first pages and a CSV file, each beside
// the same work in the other engine.
#pragma once

#include "benchmarks/condition.h"
#include "benchmarks/measurement.h"

#include <string>
#include <vector>

namespace bench {

// Where things are.
struct Places {
    std::string folder;  // for everything that is made
    std::string tool;    // qrbtool
    std::string duckdb;  // its shared library; empty: only ours is measured
};

// What was made and measured at a size.
struct Size {
    std::string lasFile;
    std::string database;  // ours, which stays in the folder
    std::uint64_t points = 0;
    std::vector<Condition> conditions;
    Measurement import;  // the whole
    Measurement csv;
};

// Prints the table. The other engine's files are gone afterwards. Throws std::runtime_error if
// anything fails or the engines disagree.
Size compareAt(const Places& places, const std::string& lasFile);

}  // namespace bench
