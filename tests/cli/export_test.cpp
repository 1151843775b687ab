// Points out of a database and in again, through files of other formats: every value as it was.

#include "tests/cli/commandtest.h"
#include "tests/engine/seed.h"
#include "tests/exchange/lasbuilder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <map>
#include <random>
#include <sstream>
#include <string>
#include <vector>

namespace {

using namespace tarvo::cli::tests;

// The points of a database: per point the values but its id, in an order of their own.
struct Points {
    std::vector<std::string> names;
    std::vector<std::vector<std::string>> rows;
    bool operator==(const Points&) const = default;
};

std::vector<std::string> cells(const std::string& line) {
    std::vector<std::string> result;
    std::istringstream stream(line);
    for (std::string cell; std::getline(stream, cell, ',');) {
        result.push_back(cell);
    }
    return result;
}

class Export : public CommandTest {
protected:
    Points pointsOf(const std::string& database) {
        expectSuccess("select " + database + " --format csv -o " + folder.file("points.csv"));
        std::ifstream stream(folder.file("points.csv"));
        std::string line;
        std::getline(stream, line);
        const std::vector<std::string> names = cells(line);
        std::map<std::string, std::size_t> order;
        for (std::size_t i = 0; i < names.size(); ++i) {
            if (names[i] != "tarvo.id") {
                order[names[i]] = i;
            }
        }
        Points points;
        for (const auto& [name, i] : order) {
            points.names.push_back(name);
        }
        while (std::getline(stream, line)) {
            const std::vector<std::string> all = cells(line);
            std::vector<std::string>& row = points.rows.emplace_back();
            for (const auto& [name, i] : order) {
                row.push_back(i < all.size() ? all[i] : "");
            }
        }
        std::sort(points.rows.begin(), points.rows.end());
        return points;
    }
    // Exports the file and imports what came out.
    Points through(const std::string& extension, const std::string& options = "") {
        const std::string out = folder.file("out." + extension);
        expectSuccess("export " + file + " " + out + " --overwrite " + options);
        expectSuccess("import " + out + " " + folder.file("again.qrbx") + " --overwrite");
        return pointsOf(folder.file("again.qrbx"));
    }
    void makeFrom(const std::string& table) {
        expectSuccess("import " + folder.write("in.csv", table) + " " + file + " --overwrite");
    }
    int pointFormat(const std::string& name) { return read(name).at(104) & 0x3f; }
};

TEST_F(Export, GivesEveryValueOfTheRealClouds) {
    forEachRealCloud([&](const std::string& cloud) {
        expectSuccess("import " + cloud + " " + file + " --overwrite");
        const Points points = pointsOf(file);
        if (points.rows.empty()) {
            return;
        }
        for (const char* const format : {"las", "laz", "ply", "csv"}) {
            EXPECT_TRUE(through(format) == points) << cloud << " as " << format;
        }
    });
}

TEST_F(Export, KeepsWhatTheFormatHasNoFieldFor) {
    // Names of other programs, elements, 64 bits, fractions, no value, a field's range left.
    makeFrom(
        "x,y,z,tarvo.intensity,my.vector[0],my.vector[1],my.count,my.share,my.very_long_name_that_"
        "no_description_has_room_for,tarvo.class\n"
        "1.25,2,3,70000,1,-1,9007199254740993,0.1,1,300\n"
        "1.50,2,3,1,2,-2,1,nan,2,2\n"
        "2.75,-2,3,2,3,-300,2,0.3,3,1\n");
    // Names that only a database knows.
    expectSuccess("attributes " + file + " add --json " +
                  folder.write("own.json", R"({"name": "Own", "length": 1, "resolution": 1,
                      "minimum_value": 0, "maximum_value": 9, "default_value": 3})"));
    const Points points = pointsOf(file);
    ASSERT_EQ(points.rows.size(), 3u);
    EXPECT_TRUE(through("las") == points);
    EXPECT_TRUE(through("laz") == points);
    // Intensity and class fit none of the fields, nor do the rest; nothing is there twice.
    for (const char* const format : {"0", "3", "6", "8", "10"}) {
        EXPECT_TRUE(through("las", std::string("--point-format ") + format) == points) << format;
        EXPECT_EQ(std::to_string(pointFormat(folder.file("out.las"))), format);
    }
    expectFailure(1, "export " + file + " " + folder.file("out.ply"), "beyond 2^53");
    EXPECT_FALSE(std::filesystem::exists(folder.file("out.ply")));
    expectSuccess("attributes " + file + " remove Own");
    EXPECT_TRUE(through("csv") == pointsOf(file));
    expectSuccess("attributes " + file + " remove my.count");
    EXPECT_TRUE(through("ply") == pointsOf(file));
    EXPECT_TRUE(through("ply", "--ascii") == pointsOf(file));
}

TEST_F(Export, ColoursOfPlyStayColoursWhereSomePointsHaveNone) {
    for (const char* const brightest : {"255", "65535"}) {
        makeFrom("x,y,z,tarvo.rgba[0],tarvo.rgba[1],tarvo.rgba[2]\n1,2,3,-1,-1,-1\n4,5,6,0,7," +
                 std::string(brightest) + "\n");
        const Points points = pointsOf(file);
        EXPECT_TRUE(through("ply") == points) << brightest;
        EXPECT_TRUE(through("ply", "--ascii") == points) << brightest;
    }
}

TEST_F(Export, ChoosesAxesThatChangeNoCoordinate) {
    // Far from zero, off each other's grid, the whole range of the numbers.
    for (const char* const table :
         {"x,y,z\n674521.92001343,0.5,642.00000001\n674521.93001343,0.75,642\n674605.32001343,1,"
          "641.5\n",
          "x,y,z\n-21474836.48,0,0\n21474836.47,1,1\n0.01,2,2\n",
          "x,y,z\n882708.286353,881501.791353,879451.478853\n874570.216353,881314.073853,"
          "881332.298853\n",
          "x,y,z\n5000000000.5,0.001,1\n5000000001,0.002,2\n5000000002,0.003,3\n"}) {
        makeFrom(table);
        EXPECT_TRUE(through("laz") == pointsOf(file)) << table;
    }
    makeFrom("x,y,z\n0.123456789,0,0\n100000000.5,0,0\n");
    expectFailure(1, "export " + file + " " + folder.file("far.las"), "--scale");
    EXPECT_FALSE(std::filesystem::exists(folder.file("far.las")));
    const std::string output =
        expectSuccess("export " + file + " " + folder.file("far.las") + " --scale 0.1");
    EXPECT_NE(output.find("1 coordinates were rounded"), std::string::npos) << output;
    // A step far wider than the points lie apart leaves none where it was.
    const std::string wide =
        expectSuccess("export " + file + " " + folder.file("wide.las") + " --scale 1e9");
    EXPECT_NE(wide.find("2 coordinates were rounded"), std::string::npos) << wide;
}

// The number of so many units of so many decimals.
std::string decimalText(std::int64_t units, int decimals) {
    std::string text = std::to_string(std::abs(units));
    const auto digits = static_cast<std::size_t>(decimals);
    text.insert(0, std::string(digits + 1 > text.size() ? digits + 1 - text.size() : 0, '0'));
    text.insert(text.size() - digits, ".");
    return (units < 0 ? "-" : "") + text;
}

// Whatever grid the coordinates lie on and wherever it begins: they come back, or are refused.
TEST_F(Export, ChangesNoCoordinateOfRandomClouds) {
    const std::uint64_t seed = tarvo::engine::testing::seedOfRun();
    std::mt19937_64 random(seed);
    const auto below = [&](std::uint64_t limit) {
        return static_cast<std::int64_t>(random() % limit);
    };
    int kept = 0;
    for (int cloud = 0; cloud < 40; ++cloud) {
        const int decimals = static_cast<int>(below(10));
        const std::int64_t begin = below(2'000'000'000'000) - 1'000'000'000'000;
        std::int64_t step = 1;
        for (std::int64_t i = below(8); i > 0; --i) {
            step *= below(10) + 1;
        }
        std::string table = "x,y,z\n";
        for (std::int64_t i = below(6) + 2; i > 0; --i) {
            for (int axis = 0; axis < 3; ++axis) {
                const std::int64_t units = begin + step * (below(20'000) - 10'000);
                table += decimalText(units, decimals) + (axis < 2 ? "," : "\n");
            }
        }
        makeFrom(table);
        const auto result = run("export " + file + " " + folder.file("out.las") + " --overwrite");
        if (result.code != 0) {
            EXPECT_NE(result.output.find("--scale"), std::string::npos) << result.output;
            continue;
        }
        ++kept;
        const Points before = pointsOf(file);
        const Points after = through("laz");
        ASSERT_EQ(before.rows.size(), after.rows.size());
        std::vector<double> one;
        std::vector<double> other;
        for (std::size_t row = 0; row < before.rows.size(); ++row) {
            for (std::size_t i = 0; i < 3; ++i) {
                one.push_back(std::stod(before.rows[row][i]));
                other.push_back(std::stod(after.rows[row][i]));
            }
        }
        std::sort(one.begin(), one.end());
        std::sort(other.begin(), other.end());
        for (std::size_t i = 0; i < one.size(); ++i) {
            ASSERT_NEAR(one[i], other[i], 1e-14 * std::abs(one[i])) << table;
        }
    }
    EXPECT_GT(kept, 20);
}

TEST_F(Export, WritesWhatIsSelected) {
    expectSuccess("sample -n 20000 " + file);
    const auto count = [&](const std::string& name) {
        expectSuccess("import " + folder.file(name) + " " + folder.file("b.qrbx") + " --overwrite");
        return expectSuccess("select " + folder.file("b.qrbx") + " --count");
    };
    const std::string some = " --filter 'tarvo.class == 2'";
    expectSuccess("export " + file + " " + folder.file("some.laz") + some);
    EXPECT_EQ(count("some.laz"), expectSuccess("select " + file + some + " --count"));
    expectSuccess("lod " + file + " set --size 20");
    expectSuccess("export " + file + " " + folder.file("top.las") + " --nodes 1");
    EXPECT_EQ(count("top.las"), expectSuccess("select " + file + " --nodes 1 --count"));
    expectSuccess("export " + file + " " + folder.file("bare.xyz"));
    EXPECT_EQ(cells(read(folder.file("bare.xyz")).substr(0, 200)).size(), 1u);
    expectSuccess("export " + file + " " + folder.file("ids.csv") + " -a tarvo.id,tarvo.xyz");
    EXPECT_EQ(read(folder.file("ids.csv")).find("tarvo.id,tarvo.xyz[0]"), 0u);
}

// Descriptions of wave packets, and angles beyond half a turn.
TEST_F(Export, KeepsWhatOnlyNewPointFormatsHold) {
    using namespace tarvo::exchange::tests;
    LasBuilder builder(4, 9);
    builder.addRecord("LASF_Spec", 100, Bytes(26, 7));
    builder.addRecord("LASF_Spec", 354, Bytes(26, 9));
    builder.addRecord("LASF_Spec", 355, Bytes(26, 8));
    put(builder.addPoint(1, 2, 3), 18, std::int16_t{-32768});
    put(builder.addPoint(4, 5, 6), 18, std::int16_t{32767});
    for (Bytes& point : builder.points) {
        point[30] = 1;
    }
    Bytes bytes = builder.build();
    put(bytes, 6, std::uint16_t{4});  // the packets stand in a file of their own
    expectSuccess("import " + folder.write("in.las", bytes) + " " + file);
    for (const char* const extension : {"las", "laz"}) {
        const std::string out = folder.file(std::string("out.") + extension);
        EXPECT_NE(expectSuccess("export " + file + " " + out).find(".wdp"), std::string::npos);
        const std::string written = read(out);
        EXPECT_EQ(pointFormat(out), 9);
        EXPECT_EQ(written[6] & 4, 4);
        for (const auto& [value, count] : {std::pair{7, 1}, {9, 1}, {8, 0}}) {
            const bool isThere =
                written.find(std::string(26, static_cast<char>(value))) != std::string::npos;
            EXPECT_EQ(isThere, count == 1) << value;
        }
        EXPECT_EQ(written.find("Extra bytes"), std::string::npos) << "angles have their field";
    }
    EXPECT_TRUE(through("las") == pointsOf(file));
}

// Names that mean something else to who reads the file.
TEST_F(Export, TellsAttributesOfUsualNamesFromTheCoordinates) {
    makeFrom("x,y,z,tarvo.rgba[0],tarvo.rgba[1],tarvo.rgba[2]\n1,2,3,7,8,9\n");
    for (const char* const name : {"x", "Diffuse_Red", "ply.x", "ny"}) {
        const std::string definition = folder.write(
            "a.json", "{\"name\": \"" + std::string(name) +
                          "\", \"length\": 1, \"resolution\": 1, \"minimum_value\": 0, "
                          "\"maximum_value\": 200, \"default_value\": 41, "
                          "\"invalid_value\": 200, \"storage_class\": 2}");
        expectSuccess("attributes " + file + " add --json " + definition);
    }
    expectSuccess("update " + file + " --set ply.x=43");
    const auto expectKept = [&](const std::string& extension, const std::string& options,
                                const std::string& attributes, const std::string& values) {
        through(extension, options);
        EXPECT_EQ(expectSuccess("select " + folder.file("again.qrbx") + " --format csv -a " +
                                "tarvo.xyz,tarvo.rgba," + attributes),
                  values);
    };
    const std::string head =
        "tarvo.xyz[0],tarvo.xyz[1],tarvo.xyz[2],tarvo.rgba[0],tarvo.rgba[1],tarvo.rgba[2],"
        "tarvo.rgba[3],";
    for (const char* const options : {"", "--ascii"}) {
        expectKept("ply", options, "ply.x,ply.x_2,ply.diffuse_red",
                   head + "ply.x,ply.x_2,ply.diffuse_red\n1,2,3,7,8,9,255,43,41,41\n");
    }
    expectKept("csv", "", "csv.x", head + "csv.x\n1,2,3,7,8,9,255,41\n");
}

TEST_F(Export, RefusesWhatWouldBeLostOrMisnamed) {
    expectSuccess("sample -n 100 " + file);
    const std::string out = folder.file("out.las");
    expectFailure(2, "export " + file + " " + folder.file("out.dat"), "does not tell a format");
    for (const char* const name : {"-", "''"}) {
        expectFailure(2, "export " + file + " " + name + " --format las",
                      "needs the name of a file");
    }
    expectFailure(2, "export " + file + " " + out + " --scale nan", "not a positive number");
    expectFailure(2, "export " + file + " " + out + " --format ply", "would hold ply");
    expectFailure(2, "export " + file + " " + folder.file("out.csv") + " --scale 1", "LAS and LAZ");
    expectFailure(1, "export " + file + " " + out + " -a tarvo.class", "three coordinates");
    expectFailure(1, "export " + file + " " + out + " -a tarvo.none", "no attribute");
    expectSuccess("export " + file + " " + out);
    const std::string before = read(out);
    expectFailure(1, "export " + file + " " + out, "--overwrite");
    expectFailure(1, "export " + file + " " + out + " --overwrite --filter 'tarvo.class == 77'",
                  "left as it was");
    EXPECT_EQ(read(out), before);
    expectFailure(1, "export " + file + " " + folder.file("a.laz") + " --filter 'tarvo.nix == 1'",
                  "tarvo.nix");
    // Names that promise something else.
    expectFailure(1, "select " + file + " --format csv -o " + folder.file("points.laz"),
                  "promises to be laz");
    expectFailure(1, "copy " + file + " " + folder.file("points.ply"), "promises to be ply");
    expectFailure(1, "copy " + file + " " + folder.file("points.json"), "promises to be json");
    expectFailure(1, "select " + file + " --format csv -o " + folder.file("points.qrbx"),
                  "promises to be qrbx");
    EXPECT_EQ(folder.count(), 2u);
}

}  // namespace
