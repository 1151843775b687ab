// qrbtool split, as a user runs it.
#include "tests/cli/commandtest.h"

#include <cmath>
#include <map>
#include <set>

namespace {

using namespace tarvo::cli::tests;
namespace fs = std::filesystem;

class Split : public CommandTest {
protected:
    Split() {
        std::string text = "tarvo.id,x,y,z,tarvo.class,csv.w\n";
        unsigned random = 4711;
        const auto next = [&random](unsigned most) {
            random = random * 1664525 + 1013904223;
            return (random >> 8) % most;
        };
        for (int id = 1; id <= 2000; ++id) {
            // Many lie on edges; in tenths.
            const int x = static_cast<int>(next(30)) - 15;
            const int y = static_cast<int>(next(20));
            const int kind = static_cast<int>(next(3)) + 2;
            const int weight = static_cast<int>(next(5)) - 2;
            m_points[id] = {x, y, kind, weight};
            std::ostringstream line;
            line << id << ',' << x / 10.0 << ',' << y / 10.0 << ",0.5," << kind << ','
                 << weight / 4.0 << '\n';
            text += line.str();
        }
        expectSuccess("import " + folder.write("points.csv", text) + " " + file);
    }
    // Ids by file name.
    std::map<std::string, std::set<int>> filesOf() const {
        std::map<std::string, std::set<int>> files;
        for (const auto& entry : fs::directory_iterator(into)) {
            std::set<int>& ids = files[entry.path().filename().string()];
            std::istringstream lines(
                expectSuccess("select " + entry.path().string() + " -a tarvo.id --format csv"));
            std::string line;
            for (std::getline(lines, line); std::getline(lines, line);)
                ids.insert(std::stoi(line));
        }
        return files;
    }
    static std::string decimal(int number, int parts) {
        std::ostringstream text;
        text << static_cast<double>(number) / parts;
        return text.str();
    }
    void expectRefusal(int code, const std::string& words, const std::string& text) const {
        const std::size_t files = folder.count();
        expectFailure(code, "split " + file + " " + words, text);
        EXPECT_EQ(folder.count(), files);
    }

    struct Point {
        int x, y, kind, weight;
    };
    std::map<int, Point> m_points;
    const std::string into = folder.file("parts");
};

TEST_F(Split, PutsEachPointIntoTheTileThatHoldsIt) {
    std::map<std::string, std::set<int>> expected;
    for (const auto& [id, point] : m_points) {
        const int x = static_cast<int>(std::floor(point.x / 3.0)) * 3;
        const int y = point.y / 3 * 3;
        expected["a_" + decimal(x, 10) + "_" + decimal(y, 10) + ".qrbx"].insert(id);
    }
    expectSuccess("split " + file + " " + into + " --tiles 0.3",
                  "2000 points written to " + std::to_string(expected.size()) + " files in \"" +
                      into + "\".\n");
    EXPECT_EQ(filesOf(), expected);
    EXPECT_EQ(expected.count("a_0.9_0.qrbx"), 1u);
    const std::string again = folder.file("again.qrbx");
    expectSuccess("merge " + into + "/*.qrbx " + again + " --keep-ids");
    EXPECT_EQ(run("select --count " + again).output, "2000\n");
}

TEST_F(Split, MakesAFileOfEachValue) {
    std::map<std::string, std::set<int>> expected;
    for (const auto& [id, point] : m_points)
        if (point.kind != 3)
            expected["a_" + decimal(point.weight, 4) + ".qrbx"].insert(id);
    expectSuccess("split " + file + " " + into + " --by csv.w -f 'tarvo.class != 3'");
    EXPECT_EQ(filesOf(), expected);
    EXPECT_EQ(expected.count("a_-0.25.qrbx"), 1u);
    EXPECT_EQ(json("metadata " + into + "/a_0.qrbx --json").Size(),
              json("metadata " + file + " --json").Size());

    // Into a folder that has others.
    for (const std::string format : {"las", "laz", "ply", "csv", "xyz"}) {
        expectSuccess("split " + file + " " + into + " --by tarvo.class --format " + format);
        expectSuccess("import " + into + "/a_2." + format + " " + into + "/a_3." + format + " " +
                      into + "/a_4." + format + " " + folder.file("b.qrbx") +
                      " --overwrite --new-ids");
        EXPECT_EQ(run("select --count " + folder.file("b.qrbx")).output, "2000\n") << format;
    }
}

TEST_F(Split, NamesAreShortWhateverTheValueIs) {
    const std::string wide = folder.file("w.qrbx");
    expectSuccess("import " +
                  folder.write("w.csv",
                               "tarvo.id,x,y,z,csv.w\n1,0,0,0,1e300\n2,0,0,0,-5e-324\n3,0,0,0,"
                               "1000000\n4,0,0,0,0.1\n5,0,0,0,1e300\n") +
                  " " + wide);
    expectSuccess("split " + wide + " " + into + " --by csv.w");
    const std::map<std::string, std::set<int>> expected = {{"w_1e+300.qrbx", {1, 5}},
                                                           {"w_-5e-324.qrbx", {2}},
                                                           {"w_1000000.qrbx", {3}},
                                                           {"w_0.1.qrbx", {4}}};
    EXPECT_EQ(filesOf(), expected);
}

TEST_F(Split, FailuresLeaveNothing) {
    expectRefusal(2, into, "");
    expectRefusal(2, into + " --tiles 0", "--tiles");
    expectRefusal(2, into + " --tiles 1 --by tarvo.class", "");
    expectRefusal(1, into + " --by tarvo.id", "into 2000 files; at most 1000 are made");
    expectRefusal(1, into + " --by tarvo.xyz", "has 3 elements");
    expectRefusal(1, into + " --by no.such", "no.such");
    expectRefusal(1, into + " --tiles 1 -f 'tarvo.class == 7'", "No points are selected");
    expectRefusal(1, folder.file("no/parts") + " --tiles 1", "is no folder");
    expectRefusal(1, file + " --tiles 1", "is no folder");
    fs::create_directory(into);
    folder.write("parts/a_3.csv", "mine");
    expectRefusal(1, into + " --by tarvo.class --format csv", "a_3.csv\" exists already");
    EXPECT_EQ(read(into + "/a_3.csv"), "mine");
    EXPECT_EQ(std::distance(fs::directory_iterator(into), {}), 1);
    // In the middle of the work.
    const std::string many = folder.file("many.qrbx");
    expectSuccess("sample -n 300000 " + many);
    const std::string other = folder.file("other");
    const Result result = runShell("timeout --foreground -s INT 1 " + std::string(QRBTOOL_FILE) +
                                   " split " + many + " " + other + " --tiles 10");
    EXPECT_NE(result.output.find("Interrupted."), std::string::npos) << result.output;
    EXPECT_FALSE(fs::exists(other));
    // Nobody cleans up behind this one but the next.
    runShell(QRBTOOL_FILE " split " + many + " " + other + " --tiles 10 & until ls -d " + other +
             "/split.new-*; do sleep 0.1; done; kill -9 $!; wait");
    expectSuccess("split " + file + " " + other + " --by tarvo.class");
    EXPECT_EQ(std::distance(fs::directory_iterator(other), {}), 3);
}

}  // namespace
