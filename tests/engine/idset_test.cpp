// The set of ids against one that is simple.
#include "engine/base/idset.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <iostream>
#include <random>
#include <set>

namespace {

using tarvo::engine::IdSet;

TEST(IdSet, HoldsWhatASimpleSetHolds) {
    std::uint64_t seed = std::random_device()();
    if (const char* given = std::getenv("QRB_SEED"))
        seed = std::strtoull(given, nullptr, 10);
    std::cout << "QRB_SEED=" << seed << std::endl;
    std::mt19937_64 random(seed);
    IdSet ids;
    std::set<std::uint64_t> right;
    // Dense around the end of a chunk, sparse over all numbers.
    const auto any = [&] {
        return random() % 4 ? (std::uint64_t(7) << 16) - 3000 + random() % 12000
                            : random() % 100 * 0x0123456789abcdef;
    };
    for (int i = 0; i < 60000; ++i) {
        const std::uint64_t id = any();
        ASSERT_EQ(ids.contains(id), right.count(id) > 0) << id;
        if (random() % 3) {
            ASSERT_EQ(ids.insert(id), right.insert(id).second) << id;
        } else {
            ASSERT_EQ(ids.erase(id), right.erase(id) > 0) << id;
        }
        ASSERT_EQ(ids.size(), right.size());
    }
    for (const std::uint64_t id : right)
        ASSERT_TRUE(ids.erase(id)) << id;
    EXPECT_EQ(ids.size(), 0u);
}

}  // namespace
