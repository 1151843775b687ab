// Databases with a simulated scan, for everybody who has no points at hand.
#pragma once

#include "core/newdatabase.h"

#include <cstdint>
#include <functional>
#include <string>

namespace tarvo::simulation {

// The same seed gives the same points.
struct SampleScan {
    std::uint64_t points = 1'000'000;
    std::uint64_t seed = 1;
};

// The most points of a scan: what timestamps of a year and 32 bits for the lines hold with ease.
inline constexpr std::uint64_t mostSamplePoints = 1'000'000'000'000;

// Learns of a step, in words, and of how much of it is done, 0 to 1; many times a second. What it
// throws ends the work.
using SampleProgress = std::function<void(const std::string& step, double fraction)>;

// Creates the database and fills it in one transaction; publishing is up to the caller. fileName:
// of the database, for messages. agent: for the changelog. Throws qrb::Error, core::Failure.
void makeSample(core::NewDatabase& database, const std::string& fileName, const SampleScan& scan,
                const std::string& agent, const SampleProgress& progress);

}  // namespace tarvo::simulation
