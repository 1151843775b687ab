// The random numbers of a test: other ones in each run, those of QRB_SEED where it is set.
#pragma once

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <random>

namespace tarvo::engine::testing {

// Prints how to replay the run.
inline std::uint64_t seedOfRun() {
    const char* const given = std::getenv("QRB_SEED");
    const std::uint64_t seed = given ? std::strtoull(given, nullptr, 10) : std::random_device{}();
    std::printf("QRB_SEED=%llu replays this run\n", static_cast<unsigned long long>(seed));
    return seed;
}

}  // namespace tarvo::engine::testing
