#include "simulation/scanner.h"

#include "tests/cli/commandtest.h"

#include <gtest/gtest.h>

#include <cmath>
#include <map>
#include <set>
#include <vector>

namespace {

using namespace tarvo::cli;
namespace simulation = tarvo::simulation;
using tests::run;

class Sample : public tests::CommandTest {
protected:
    // Of the attributes' resolutions, as the catalogue has them.
    static constexpr double length = 0.00025;
    static constexpr double level = 0.01;

    struct Point {
        double x, y, z, range, theta, phi, reflectance, amplitude, index, count, time, line;
    };
    // In the order in which they were measured.
    std::vector<Point> points(const std::string& file) const {
        std::istringstream text(expectSuccess(
            "select --format csv -a tarvo.id,tarvo.xyz,tarvo.range,tarvo.theta,tarvo.phi,"
            "tarvo.reflectance,tarvo.amplitude,tarvo.target_index,tarvo.target_count,"
            "tarvo.timestamp,tarvo.scan_line_index " +
            file));
        std::map<std::uint64_t, Point> found;
        std::string line;
        std::getline(text, line);
        while (std::getline(text, line)) {
            std::replace(line.begin(), line.end(), ',', ' ');
            std::istringstream cells(line);
            std::uint64_t id = 0;
            Point p{};
            cells >> id >> p.x >> p.y >> p.z >> p.range >> p.theta >> p.phi >> p.reflectance >>
                p.amplitude >> p.index >> p.count >> p.time >> p.line;
            EXPECT_TRUE(cells) << line;
            found[id] = p;
        }
        std::vector<Point> result;
        for (const auto& [id, point] : found) {
            result.push_back(point);
        }
        return result;
    }
};

TEST_F(Sample, MeasuresAgreeWithEachOther) {
    const std::string file = folder.file("a.qrbx");
    for (const auto& [number, seed] : {std::pair{"20000", "1"}, {"3001", "8"}, {"1", "2"}}) {
        SCOPED_TRACE(std::string(number) + " points, seed " + seed);
        expectSuccess("sample --overwrite -n " + std::string(number) + " --seed " + seed + " " +
                      file);
        rapidjson::Document item;
        item.Parse(run("metadata " + file + " get tarvo.scan_pattern").output.c_str());
        ASSERT_FALSE(item.HasParseError());
        const auto& pattern = item["rectangular"];
        const double thetaStep = pattern["theta_increment"].GetDouble();
        const double phiStep = pattern["phi_increment"].GetDouble();
        const double shotsPerLine =
            std::round((130 - 30) / thetaStep);  // the fan, with half a step to either side
        const std::vector<Point> all = points(file);
        ASSERT_EQ(std::to_string(all.size()), number);
        for (std::size_t i = 0; i < all.size(); ++i) {
            const Point& p = all[i];
            const double theta = p.theta * simulation::pi / 180;
            const double phi = p.phi * simulation::pi / 180;
            ASSERT_NEAR(p.x, p.range * std::sin(theta) * std::cos(phi), length);
            ASSERT_NEAR(p.y, p.range * std::sin(theta) * std::sin(phi), length);
            ASSERT_NEAR(p.z, p.range * std::cos(theta), length);
            // Where the scanner looked follows from the time alone.
            const double shot = p.time * 250000;
            ASSERT_NEAR(shot, std::round(shot), 1e-3);
            const double beam = std::fmod(std::round(shot), shotsPerLine);
            ASSERT_EQ(p.line, std::floor(std::round(shot) / shotsPerLine));
            ASSERT_NEAR(p.theta, pattern["theta_start"].GetDouble() + beam * thetaStep, 2e-6);
            ASSERT_NEAR(p.phi, p.line * phiStep, 2e-6);
            ASSERT_LE(p.phi, pattern["phi_stop"].GetDouble() + 1e-6) << "more than a turn";
            ASSERT_LE(p.theta, pattern["theta_stop"].GetDouble() + 1e-6);
            // What is weaker than the threshold is not there.
            ASSERT_GE(p.amplitude, 0);
            ASSERT_NEAR(p.amplitude - p.reflectance, 60 - 20 * std::log10(p.range), 1.5 * level);
            // The targets of a shot, the nearest first, and each of them.
            const bool isFirst = i == 0 || all[i - 1].time != p.time;
            ASSERT_EQ(p.index, isFirst ? 1 : all[i - 1].index + 1);
            if (!isFirst) {
                ASSERT_EQ(p.count, all[i - 1].count);
                ASSERT_GT(p.range, all[i - 1].range + 0.5);
            }
            if (i + 1 == all.size() || all[i + 1].time != p.time) {
                ASSERT_EQ(p.index, p.count);
            }
            ASSERT_TRUE(i == 0 || p.time >= all[i - 1].time);
        }
    }
}

TEST_F(Sample, TellsThatItIsASimulation) {
    const std::string file = folder.file("a.qrbx");
    expectSuccess("sample -n 0 " + file);
    for (const char* const item :
         {"tarvo.pointcloud_info", "tarvo.time_base", "tarvo.scan_pattern"}) {
        expectSuccess("metadata " + file + " validate " + item);
    }
    const std::string words = "no instrument measured it";
    EXPECT_NE(run("metadata " + file + " get tarvo.pointcloud_info").output.find(words),
              std::string::npos);
    EXPECT_NE(run("transactions " + file + " show 2").output.find(words), std::string::npos);
    expectFailure(2, "sample -n 1e13 " + folder.file("b.qrbx"), "is not a whole number from 0 to");
}

TEST(Scan, IsTheSameForTheSameSeedHoweverItIsRead) {
    const simulation::Scene scene(5);
    const auto scan = [&](std::size_t batch) {
        simulation::Scanner scanner(scene, 5, 20000);
        std::vector<double> xyz;
        std::size_t severalTargets = 0;
        std::size_t plantsBehind = 0;  // beyond the seam of the azimuth
        simulation::Points points(batch);
        while (const std::size_t count = scanner.next(points, 30000)) {
            for (std::size_t i = 0; i < count; ++i) {
                xyz.insert(xyz.end(),
                           {points.xyz[3 * i], points.xyz[3 * i + 1], points.xyz[3 * i + 2]});
                severalTargets += points.targetCount[i] > 1 ? 1 : 0;
                plantsBehind +=
                    points.pointClass[i] == simulation::vegetation && points.phi[i] > 200 ? 1 : 0;
            }
        }
        EXPECT_GT(severalTargets, 100u);
        EXPECT_GT(plantsBehind, 100u);
        return xyz;
    };
    const auto whole = scan(20000);
    EXPECT_EQ(whole.size(), 60000u);
    EXPECT_EQ(whole, scan(7));
}

TEST(Scan, AsksOftenWhetherToGoOn) {
    const simulation::Scene scene(1);
    int asked = 0;
    int most = 1 << 30;
    const auto check = [&] {
        if (++asked > most) {
            throw asked;
        }
    };
    simulation::Scanner scanner(scene, 1, 1'000'000, check);
    EXPECT_GE(asked, 5);
    simulation::Points points(65536);
    asked = 0;
    scanner.next(points, 65536);
    EXPECT_GE(asked, 5);
    most = asked + 2;
    EXPECT_THROW(scanner.next(points, 65536), int);
    most = asked + 1;
    EXPECT_THROW(simulation::Scanner(scene, 1, 10, check), int);
}

TEST(Scan, IsATurnAtMostAndMostOfIt) {
    for (const std::uint64_t seed : {1, 2, 3, 4, 5, 6}) {
        const simulation::Scene scene(seed);
        for (const std::uint64_t count : {300, 3000, 30000, 300000}) {
            simulation::Scanner scanner(scene, seed, count);
            simulation::Points points(4096);
            std::uint32_t last = 0;
            while (const std::size_t found = scanner.next(points, 4096)) {
                last = points.line[found - 1];
            }
            EXPECT_LT(last, scanner.pattern().lines) << count << " of seed " << seed;
            EXPECT_GT(last, 0.7 * scanner.pattern().lines) << count << " of seed " << seed;
        }
    }
}

TEST(Scan, MeetsAWireBetweenItsEndsOnly) {
    const simulation::WirePiece wire{{5, -1, 0}, {5, 1, 0}, 0.02};
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
