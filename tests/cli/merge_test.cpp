// qrbtool merge, as a user runs it.
#include "tests/cli/commandtest.h"
#include "tests/cli/sanitized.h"

#include <set>

namespace {

using namespace tarvo::cli::tests;

class Merge : public CommandTest {
protected:
    Merge() {
        expectSuccess("import " +
                      folder.write("one.csv",
                                   "tarvo.id,x,y,z,tarvo.class,csv.a\n1,0,0,0.5,2,7\n3,1,0,0,2,8\n"
                                   "9,9,9,9,3,9\n") +
                      " " + one);
        expectSuccess(
            "import " +
            folder.write("two.csv",
                         "tarvo.id,x,y,z,csv.a,csv.b\n2,0.25,0,0.125,-7,5\n4,1.5,0,0,0.5,6"
                         "\n9,100,2,3,1000,4\n") +
            " " + two);
        expectSuccess("metadata " + one + " set same 1");
        expectSuccess("metadata " + two + " set same 1");
        expectSuccess("metadata " + one + " set other '{\"a\": 1}'");
        expectSuccess("metadata " + two + " set other '[2]'");
        expectSuccess("metadata " + two + " set third 3");
    }
    void expectRefusal(int code, const std::string& words, const std::string& text) const {
        const std::size_t files = folder.count();
        expectFailure(code, "merge " + words, text);
        EXPECT_EQ(folder.count(), files);
    }
    // Lines of a table, without the header, sorted.
    static std::set<std::string> linesOf(const std::string& name, const std::string& attributes) {
        std::istringstream stream(
            expectSuccess("select " + name + " --format csv -a " + attributes));
        std::set<std::string> lines;
        std::string line;
        std::getline(stream, line);
        while (std::getline(stream, line))
            EXPECT_TRUE(lines.insert(line).second) << line;
        return lines;
    }

    const std::string one = folder.file("one.qrbx");
    const std::string two = folder.file("two.qrbx");
    const std::string both = folder.file("both.qrbx");
};

TEST_F(Merge, HoldsPointsAttributesAndItemsOfAll) {
    expectSuccess("merge " + one + " " + two + " " + both,
                  "6 points of 2 databases merged into \"" + both + "\".\n");
    EXPECT_EQ(linesOf(both, "tarvo.xyz,tarvo.class,csv.a,csv.b").size(), 6u);
    const std::set<std::string> expected = {"0.000,0.000,0.500,7.0", "1.000,0.000,0.000,8.0",
                                            "9.000,9.000,9.000,9.0", "0.250,0.000,0.125,-7.0",
                                            "1.500,0.000,0.000,0.5", "100.000,2.000,3.000,1000.0"};
    EXPECT_EQ(linesOf(both, "tarvo.xyz,csv.a"), expected);
    EXPECT_EQ(linesOf(both, "tarvo.id").size(), 6u);
    EXPECT_EQ(run("select --count " + both + " -f 'csv.b >= 4 && csv.b <= 6'").output, "3\n");
    for (const auto& [name, text] : {std::pair{"same", "1\n"},
                                     {"third", "3\n"},
                                     {"other", "{\"a\": 1}\n"},
                                     {"other.2", "[2]\n"}})
        EXPECT_EQ(run("metadata " + both + " get " + name).output, text) << name;
    EXPECT_EQ(run("metadata " + both + " get same.2").code, 1);
    EXPECT_EQ(run("check " + both).code, 0);

    // Each of a database's own.
    expectSuccess("merge " + two + " " + one + " " + both + " --overwrite --thin 1.1");
    EXPECT_EQ(linesOf(both, "tarvo.xyz").size(), 4u);
}

TEST_F(Merge, KeepsIdsThatOccurOnce) {
    expectRefusal(1, one + " " + two + " " + both + " --keep-ids", "Leave --keep-ids out");
    expectSuccess("remove " + two + " --ids 9");
    expectSuccess("merge " + one + " " + two + " " + both + " --keep-ids");
    EXPECT_EQ(linesOf(both, "tarvo.id"), (std::set<std::string>{"1", "2", "3", "4", "9"}));
    EXPECT_EQ(run("select " + both + " -a csv.b --format csv -f 'tarvo.id == 4'").output,
              "csv.b\n6\n");
}

TEST_F(Merge, TellsOfColoursOfDifferentRanges) {
    const auto make = [&](const std::string& name, const std::string& red) {
        expectSuccess(
            "import " +
            folder.write("c.csv", "x,y,z,tarvo.rgba[0],tarvo.rgba[1],tarvo.rgba[2]\n1,2,3," + red +
                                      ",0,0\n") +
            " " + folder.file(name));
        return " " + folder.file(name);
    };
    const std::string dark = make("dark.qrbx", "255");
    const std::string words = "merge" + dark + make("bright.qrbx", "65535");
    EXPECT_NE(expectSuccess(words + " " + both).find("dark.qrbx\" go to 255"), std::string::npos);
    EXPECT_EQ(expectSuccess("merge" + dark + " " + one + " " + both + " --overwrite").find("255"),
              std::string::npos);
}

TEST_F(Merge, TellsWhenTooManyFilesAreOpen) {
    std::string names;
    for (int i = 0; i < 30; ++i) {
        const std::string name = folder.file("part" + std::to_string(i) + ".qrbx");
        std::filesystem::copy_file(one, name);
        names += " " + name;
    }
    const auto merge = [&](const char* const limit) {
        return runShell(std::string("ulimit ") + limit + "; " QRBTOOL_FILE " merge" + names + " " +
                        both);
    };
#if !defined(SANITIZED)  // they look at memory by files of their own
    const Result refused = merge("-n 20");
    EXPECT_EQ(refused.code, 1) << refused.output;
    EXPECT_NE(refused.output.find("may have 20 files open"), std::string::npos) << refused.output;
#endif
    const Result merged = merge("-Sn 20");
    EXPECT_EQ(merged.code, 0) << merged.output;
    EXPECT_EQ(expectSuccess("select --count " + both), "90\n");
}

TEST_F(Merge, RefusesWhatDoesNotFitTogether) {
    const std::string words = one + " " + two + " " + both;
    expectRefusal(2, one + " " + both, "two databases");
    expectRefusal(2, one + " " + one + " " + both, "are the same database");
    expectRefusal(2, one + " " + two + " " + one + " --overwrite", "is an input and the output");
    expectRefusal(1, one + " " + folder.file("no.qrbx") + " " + both, "no.qrbx");
    const std::string flat = folder.file("flat.qrbx");
    expectSuccess("import " + folder.write("flat.csv", "a\n1\n") + " " + flat + " --primary csv.a");
    expectRefusal(1, one + " " + flat + " " + both, "has no attribute \"tarvo.xyz\"");
    for (const auto& [name, code] : {std::pair{one, "25832"}, {two, "25833"}})
        expectSuccess("metadata " + name + " set tarvo.geo_tag '{\"crs\": {\"epsg\": " + code +
                      ", \"name\": \"Zone\"}}'");
    expectRefusal(1, words, "differ");
    expectSuccess("merge " + words + " --crs-as-is");
    EXPECT_NE(run("changelog " + both).output.find("taken as they are"), std::string::npos);
    expectSuccess("remove " + both + " --filter 'csv.b == 4'");
    expectRefusal(1, words + " --crs-as-is", "Give --overwrite to replace it.");
    // What is wrong with the inputs is told before what stands at the place.
    expectRefusal(1, one + " " + folder.file("no.qrbx") + " " + both, "no.qrbx");
    std::string definition = run("attributes " + two + " show csv.a --json").output;
    const std::string before = "\"unit_symbol\":\"\"";
    ASSERT_NE(definition.find(before), std::string::npos) << definition;
    definition.replace(definition.find(before), before.size(), "\"unit_symbol\":\"ft\"");
    expectSuccess("attributes " + two + " put --json " + folder.write("a.json", definition));
    expectRefusal(1, one + " " + two + " " + folder.file("new.qrbx") + " --crs-as-is",
                  "The attribute \"csv.a\" has no unit in \"" + one + "\" and \"ft\" in \"" + two +
                      "\".\n    Values of different units are not mixed");
    EXPECT_EQ(run("select --count " + both).output, "5\n");
}

}  // namespace
