#include "exchange/import/importplan.h"
#include "tests/exchange/sourcetest.h"

#include <cmath>

namespace {

using namespace tarvo::exchange;
using namespace tarvo::exchange::tests;

class Ptx : public SourceTest {};

std::string scan(const std::string& size, const std::string& matrix, const std::string& points) {
    return size + "\n7 8 9\n1 0 0\n0 1 0\n0 0 1\n" + matrix + points;
}

const std::string identity = "1 0 0 0\n0 1 0 0\n0 0 1 0\n0 0 0 1\n";
// A quarter turn about Z, then a shift.
const std::string turned = "0 1 0 0\n-1 0 0 0\n0 0 1 0\n100 200 300 1\n";

TEST_F(Ptx, PosesAreAppliedAndHolesLeftOut) {
    Table table = read(scan("2\n3", identity,
                            "1.5 2 3 0.25\n0 0 0 0.5\n4 5 6 1\n"
                            "0.0 -0 0.000 0.500000\n7 8 9 0\n1 1 1 0.125\n") +
                       scan("1\n1", turned, "\n1 2 3 0.75 10 20 255\n"));
    EXPECT_EQ(table["tarvo.xyz[0]"], (std::vector<double>{1.5, 4, 7, 1, 98}));
    EXPECT_EQ(table["tarvo.xyz[1]"], (std::vector<double>{2, 5, 8, 1, 201}));
    EXPECT_EQ(table["tarvo.xyz[2]"], (std::vector<double>{3, 6, 9, 1, 303}));
    EXPECT_EQ(table["tarvo.intensity"], (std::vector<double>{0.25, 1, 0, 0.125, 0.75}));
    EXPECT_EQ(table["ptx.scan"], (std::vector<double>{1, 1, 1, 1, 2}));
    EXPECT_EQ(table["ptx.column"], (std::vector<double>{0, 0, 1, 1, 0}));
    EXPECT_EQ(table["ptx.row"], (std::vector<double>{0, 2, 1, 2, 0}));
    EXPECT_EQ(table["tarvo.rgba[2]"], (std::vector<double>{-1, -1, -1, -1, 255}));
    EXPECT_NE(notes.find("2 holes"), std::string::npos) << notes;
    EXPECT_NE(notes.find("0.000001"), std::string::npos) << notes;
    EXPECT_NE(metaData.find("[-1.0, 0.0, 0.0, 0.0]"), std::string::npos) << metaData;
    EXPECT_NE(metaData.find("\"position\": [7.0, 8.0, 9.0]"), std::string::npos) << metaData;
}

// Scans without colours have no value, in an attribute that stays one of whole numbers.
TEST_F(Ptx, AMissingColourIsNoColour) {
    PointSources sources;
    sources.push_back(openSource(folder.write(
        "a", scan("1\n1", identity, "1 2 3 1 0 128 255\n") + scan("1\n1", identity, "4 5 6 1\n"))));
    const ImportPlan plan = planImport(sources, "tarvo.xyz", {});
    const PointAttribute& rgba = plan.attributes.at("tarvo.rgba").definition;
    EXPECT_EQ(rgba.resolution, 1);
    EXPECT_EQ(rgba.minimumValue, 0);
    EXPECT_EQ(rgba.maximumValue, 255);
    EXPECT_EQ(rgba.invalidValue, -1);
    EXPECT_EQ(plan.pointCount, 2u);
}

TEST_F(Ptx, FaultsAreNamed) {
    const auto one = [](const std::string& points) { return scan("1\n2", identity, points); };
    expectFailure(one("1 2 3 4\n"), "ends within a scan");
    expectFailure(one("1 2 3 4\n1 2 3\n"), "line 12 has 3 numbers");
    expectFailure(one("1 2 3 4\n1 2 3 4 5 6 7\n"), "line 12 has 7 numbers in place of 4");
    expectFailure(one("1 2 3 4\n1 2 3 b\n"), "\"b\"");
    expectFailure(one("1 2 3 4 5 6 7\n1 2 3 4 5 6 -7\n"), "\"-7\" in place of a colour");
    expectFailure(one("1 2 3 4\n1 2 3 4\n1 2 3 4\n"), "line 13 is not the number of columns");
    expectFailure(scan("4294967295\n4294967295", identity, "1 2 3 4\n"), "ends within a scan");
    expectFailure(scan("1\n1", "nan 0 0 0\n0 1 0 0\n0 0 1 0\n0 0 0 1\n", "1 2 3 4\n"), "finite");
    expectFailure(scan("1\n1", "0 0 0 0\n0 0 0 0\n0 0 0 0\n0 0 0 0\n", "1 2 3 4\n"),
                  "different points into the same place");
    EXPECT_EQ(failure(scan("0\n5", identity, "")), "") << "no points, no fault";
    expectSurvival(scan("1\n2", turned, "1 2 3 4 5 6 7\n1 2 3 4 5 6 7\n"));
}

TEST_F(Ptx, RealFilesHaveTheirPoints) {
    if (realFile("").empty()) {
        GTEST_SKIP() << "QRB_TEST_DATA names no folder of real files.";
    }
    Table plain = readAll(*openSource(realFile("no-color.ptx")));
    EXPECT_EQ(plain["tarvo.xyz[0]"].size(), 15u);
    EXPECT_EQ(plain["tarvo.xyz[0]"][0], 637012.24);
    EXPECT_FALSE(plain.contains("tarvo.rgba[0]"));
    // The first scan, moved, has the points of the second one.
    Table several = readAll(*openSource(realFile("multiple-and-transform.ptx")));
    ASSERT_EQ(several["tarvo.xyz[0]"].size(), 8u);
    for (const char* name : {"tarvo.xyz[0]", "tarvo.xyz[1]", "tarvo.xyz[2]"}) {
        for (std::size_t i = 0; i < 4; ++i) {
            EXPECT_EQ(several[name][i], several[name][i + 4]) << name << i;
        }
    }
    Table turnedScan = readAll(*openSource(realFile("complex-transform.ptx")));
    ASSERT_EQ(turnedScan["tarvo.xyz[0]"].size(), 4u);
    EXPECT_EQ(turnedScan["tarvo.rgba[0]"][0], 33);
    // By hand from the first matrix.
    EXPECT_NEAR(turnedScan["tarvo.xyz[0]"][0],
                -0.00563 * 0.999979 + 0.645218 * 0.003613 - 0.440506 * 0.005359 - 3.028748, 1e-6);
}

}  // namespace
