// Points chosen by place and number, as a user asks for them.
#include "tests/cli/commandtest.h"

#include <cmath>
#include <cstdio>

namespace {

using namespace tarvo::cli::tests;

struct Place {
    double x, y, z;
};

class ShapeOptions : public CommandTest {
protected:
    // Places of two files, in the order in which they are imported.
    std::vector<Place> places() const {
        std::vector<Place> all;
        unsigned random = 12345;
        const auto next = [&random] {
            random = random * 1664525 + 1013904223;
            return (random >> 8) % 1000 / 100.0;
        };
        for (int i = 0; i < 3000; ++i)
            all.push_back({next(), next() - 5, next()});
        return all;
    }
    std::string csv(std::size_t begin, std::size_t end) const {
        const std::vector<Place> all = places();
        std::string text = "x,y,z,tarvo.class\n";
        for (std::size_t i = begin; i < end; ++i) {
            char line[100];
            std::snprintf(line, sizeof line, "%.2f,%.2f,%.2f,%zu\n", all[i].x, all[i].y, all[i].z,
                          i % 5);
            text += line;
        }
        return text;
    }
    // The same as texts, sorted.
    template <typename Stays>
    std::vector<std::string> expected(const Stays& stays) const {
        std::vector<std::string> lines;
        for (const Place& place : places())
            if (stays(place)) {
                char line[100];
                std::snprintf(line, sizeof line, "%.2f,%.2f,%.2f", place.x, place.y, place.z);
                lines.push_back(line);
            }
        std::sort(lines.begin(), lines.end());
        return lines;
    }
    static std::vector<std::string> sortedLines(const std::string& text) {
        std::istringstream stream(text.substr(text.find('\n') + 1));
        std::vector<std::string> lines;
        for (std::string line; std::getline(stream, line);) {
            // Files of their own have resolutions of their own.
            double x = 0, y = 0, z = 0;
            if (std::sscanf(line.c_str(), "%lf,%lf,%lf", &x, &y, &z) == 3) {
                char text[100];
                std::snprintf(text, sizeof text, "%.2f,%.2f,%.2f", x, y, z);
                line = text;
            }
            lines.push_back(line);
        }
        std::sort(lines.begin(), lines.end());
        return lines;
    }
    static std::vector<std::string> linesOf(const std::string& database) {
        return sortedLines(expectSuccess("select " + database + " -a tarvo.xyz --format csv"));
    }

    const std::string one = folder.write("one.csv", csv(0, 1100));
    const std::string two = folder.write("two.csv", csv(1100, 3000));
    const std::string inputs = one + " " + two;
    const std::string whole = folder.file("whole.qrbx");
    const std::string part = folder.file("part.qrbx");
};

TEST_F(ShapeOptions, LeaveTheSameByImportAppendCopyAndExport) {
    expectSuccess("import " + inputs + " " + whole);
    // The triangle has edges along which points lie, and a hole.
    const std::string triangle =
        folder.write("t.geojson",
                     R"({"type": "Feature", "geometry": {"type": "Polygon", "coordinates":
                        [[[1, -4], [9, -4], [1, 4]], [[2, -3], [4, -3], [4, -1], [2, -1]]]}})");
    const auto inTriangle = [](const Place& p) {
        const bool inHole = p.x > 2 && p.x < 4 && p.y > -3 && p.y < -1;
        return p.x >= 1 && p.y >= -4 && std::round((p.x + p.y) * 100) <= 500 && !inHole;
    };
    const auto inBox = [](const Place& p) {
        return p.x >= 0.5 && p.x <= 7 && p.y >= -4.5 && p.y <= 3.25 && p.z >= 1 && p.z <= 8;
    };
    const std::pair<std::string, std::vector<std::string>> cases[] = {
        {"--bounds 0.5,-4.5,1,7,3.25,8", expected(inBox)},
        {"--bounds=-1,-5,20,-5", expected([](const Place& p) { return p.y == -5; })},
        {"--polygon " + triangle, expected(inTriangle)},
        {"--bounds 0.5,-4.5,1,7,3.25,8 --polygon " + triangle,
         expected([&](const Place& p) { return inBox(p) && inTriangle(p); })}};
    for (const auto& [words, lines] : cases) {
        SCOPED_TRACE(words);
        ASSERT_GT(lines.size(), 0u);
        expectSuccess("import " + inputs + " " + part + " --overwrite " + words);
        EXPECT_EQ(linesOf(part), lines);
        expectSuccess("import " + one + " " + part + " --overwrite " + words);
        expectSuccess("import " + two + " " + part + " --append " + words);
        EXPECT_EQ(linesOf(part), lines);
        expectSuccess("copy " + whole + " " + part + " --overwrite -a tarvo.class " + words,
                      std::to_string(lines.size()) + (lines.size() == 1 ? " point" : " points") +
                          " copied to \"" + part + "\".\n");
        EXPECT_EQ(linesOf(part), lines);
        expectSuccess("export " + whole + " " + folder.file("p.csv") +
                      " --overwrite -a tarvo.xyz " + words);
        EXPECT_EQ(sortedLines(read(folder.file("p.csv"))), lines);
    }
    // By coordinates that are not written, of points that the filter leaves.
    expectSuccess("export " + whole + " " + folder.file("c.csv") +
                  " -a tarvo.class -f 'tarvo.class == 3 || tarvo.class == 4' --bounds 2,-5,5,5");
    const std::string table = read(folder.file("c.csv"));
    EXPECT_EQ(table.substr(0, table.find('\n')), "tarvo.class");
    const std::string count =
        expectSuccess("select " + whole +
                      " --count -f '(tarvo.class == 3 || tarvo.class == 4) && tarvo.xyz[0] >= 2 && "
                      "tarvo.xyz[0] <= 5'");
    EXPECT_EQ(std::to_string(sortedLines(table).size()) + "\n", count);
    EXPECT_NE(run("transactions " + part + " show 2 --json").output.find("\\\"bounds\\\""),
              std::string::npos);
}

TEST_F(ShapeOptions, ThinAndCountOverAllFilesOfAnImport) {
    std::vector<Place> kept;
    for (const Place& p : places()) {
        const bool isFree = std::none_of(kept.begin(), kept.end(), [&](const Place& q) {
            return (p.x - q.x) * (p.x - q.x) + (p.y - q.y) * (p.y - q.y) +
                       (p.z - q.z) * (p.z - q.z) <
                   0.75 * 0.75;
        });
        if (isFree)
            kept.push_back(p);
    }
    std::size_t at = 0;
    const auto lines = expected([&](const Place& p) {
        const bool stays =
            at < kept.size() && kept[at].x == p.x && kept[at].y == p.y && kept[at].z == p.z;
        at += stays ? 1 : 0;
        return stays;
    });
    ASSERT_EQ(at, kept.size());
    expectSuccess("import " + inputs + " " + part + " --thin 0.75");
    EXPECT_EQ(linesOf(part), lines);

    at = 0;
    const auto seventh = expected([&](const Place&) { return at++ % 7 == 0; });
    expectSuccess("import " + inputs + " " + part + " --overwrite --every 7");
    EXPECT_EQ(linesOf(part), seventh);
    expectSuccess("import " + inputs + " " + whole);
    expectSuccess("copy " + whole + " " + part + " --overwrite --thin 0.75 --every 2");
    const auto thinned = linesOf(part);
    EXPECT_GT(thinned.size(), 100u);
    expectSuccess("copy " + part + " " + folder.file("again.qrbx") + " --thin 0.75");
    EXPECT_EQ(linesOf(folder.file("again.qrbx")), thinned);
}

TEST_F(ShapeOptions, FailuresSayWhatIsWrongAndLeaveNothing) {
    expectSuccess("import " + inputs + " " + whole);
    const std::string flat = folder.file("flat.qrbx");
    expectSuccess("import " + folder.write("flat.csv", "a,tarvo.class\n1,2\n3,4\n") + " " + flat +
                  " --primary csv.a");
    const std::string cut = folder.write("cut.wkt", "POLYGON ((0 0, 1 1");
    const std::size_t files = folder.count();
    const std::string copy = "copy " + whole + " " + part;
    expectFailure(2, copy + " --bounds 1,2,3", "are 3 numbers, not 4 or 6");
    expectFailure(2, copy + " --bounds ' '", "names nothing");
    expectFailure(2, copy + " --thin 0", "--thin");
    expectFailure(2, copy + " --thin nan", "--thin");
    expectFailure(2, copy + " --every 0", "from 1 to");
    expectFailure(1, copy + " --polygon no.wkt", "no.wkt");
    expectFailure(1, copy + " --polygon " + cut, "cut.wkt\" can't be read");
    expectFailure(1, copy + " --polygon 'POINT (1 2)'", "--polygon can't be read: it is a POINT");
    for (const std::string words : {"--bounds 1,2,3,4", "--thin 1"}) {
        expectFailure(1, "copy " + flat + " " + part + " " + words, "tarvo.xyz");
        expectFailure(1, "export " + flat + " " + folder.file("p.csv") + " " + words, "tarvo.xyz");
        expectFailure(
            1, "import " + folder.file("flat.csv") + " --primary csv.a " + part + " " + words,
            "Leave --bounds, --polygon and --thin out");
    }
    EXPECT_EQ(folder.count(), files);
    expectSuccess("copy " + flat + " " + part + " --every 2",
                  "1 point copied to \"" + part + "\".\n");
}

}  // namespace
