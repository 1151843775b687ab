#include "cli/sample/scanner.h"

#include <gtest/gtest.h>

#include <vector>

namespace {

using namespace tarvo::cli;

TEST(Scan, IsTheSameForTheSameSeedHoweverItIsRead) {
    const sample::Scene scene(5);
    const auto scan = [&](std::size_t batch) {
        sample::Scanner scanner(scene, 5, 20000);
        std::vector<double> xyz;
        std::size_t severalTargets = 0;
        std::size_t plantsBehind = 0;  // beyond the seam of the azimuth
        sample::Points points(batch);
        for (std::size_t done = 0; done < 20000;) {
            const std::size_t count = scanner.next(points, 20000 - done);
            EXPECT_GT(count, 0u);
            done += count;
            for (std::size_t i = 0; i < count; ++i) {
                xyz.insert(xyz.end(),
                           {points.xyz[3 * i], points.xyz[3 * i + 1], points.xyz[3 * i + 2]});
                EXPECT_GE(points.targetIndex[i], 1);
                EXPECT_LE(points.targetIndex[i], points.targetCount[i]);
                severalTargets += points.targetCount[i] > 1 ? 1 : 0;
                plantsBehind +=
                    points.pointClass[i] == sample::vegetation && points.phi[i] > 200 ? 1 : 0;
                const double length =
                    std::hypot(xyz[xyz.size() - 3], xyz[xyz.size() - 2], xyz[xyz.size() - 1]);
                EXPECT_NEAR(length, points.range[i], 1e-9);
            }
        }
        EXPECT_GT(severalTargets, 100u);
        EXPECT_GT(plantsBehind, 100u);
        return xyz;
    };
    const auto whole = scan(20000);
    EXPECT_EQ(whole.size(), 60000u);
    EXPECT_EQ(whole, scan(7));
    sample::Scanner other(sample::Scene(6), 6, 20000);
}

TEST(Scan, MeetsAWireBetweenItsEndsOnly) {
    const sample::WirePiece wire{{5, -1, 0}, {5, 1, 0}, 0.02};
    const auto meets = [&](double x, double y, double z) {
        return wire.intersect({{}, {x, y, z}}).has_value();
    };
    EXPECT_TRUE(meets(1, 0, 0));
    EXPECT_FALSE(meets(-1, 0, 0)) << "behind";
    EXPECT_FALSE(meets(0, 0, 1)) << "above";
    const double beyond = std::sqrt(0.5);
    EXPECT_FALSE(meets(beyond, beyond, 0));
    EXPECT_FALSE(meets(beyond, -beyond, 0));
}

}  // namespace
