// The tables that are printed, and what they are held against.
#pragma once

#include "benchmarks/measurement.h"

#include <string>
#include <utility>
#include <vector>

namespace bench {

// A unit of a number that is kept in seconds, or as it is.
struct Unit {
    const char* name;
    double factor;
};
inline constexpr Unit milliseconds{"ms", 1e3};
inline constexpr Unit seconds{"s", 1};
inline constexpr Unit bytesPerPoint{"B/pt", 1};
inline constexpr Unit microsecondsPerPoint{"us/pt", 1e6};

// What both engines needed for the same; zeros were not measured. The best of the peer's ways
// counts; none: nothing to compare with.
struct Comparison {
    std::string name;
    Unit unit;
    Measurement ours;
    std::vector<std::pair<std::string, Measurement>> peers;
    double target;  // ours / best of the peer, at most
};

void printComparisonHead();
void printComparison(const Comparison& comparison);

// What the library needed for the same at two sizes.
struct Growth {
    std::string name;
    Unit unit;
    Measurement small;
    Measurement large;
    double target;  // large / small, at most; 0: only memory counts
};

// cache plus what everything else may take.
inline constexpr double memoryLimit = 512 + 256;  // MiB

void printGrowthHead();
void printGrowth(const Growth& growth);
// Work that is held against a rate, in million points per second.
void printRate(const std::string& name, const Measurement& small, const Measurement& large,
               double target);

}  // namespace bench
