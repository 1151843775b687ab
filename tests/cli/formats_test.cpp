// How values of every kind are written, and the ends of what options take.
#include "tests/cli/folder.h"
#include "tests/cli/process.h"

#include <gtest/gtest.h>

#include <rapidjson/document.h>

#include <algorithm>
#include <sstream>
#include <utility>

namespace {

using namespace tarvo::cli::tests;

class Formats : public testing::Test {
protected:
    // Three points with two floats each, of which some have no value.
    Formats() {
        success("import " +
                folder.write("p.csv", "tarvo.id,x,y,z\n1,1.5,2,3\n2,-4.25,5,6\n3,7,8,9\n") + " " +
                file);
        success("attributes " + file + " add --json " +
                folder.write("r.json",
                             R"({"name": "my.real", "title": "r", "length": 2, "resolution": 0,
                             "minimum_value": -1000, "maximum_value": 1000, "default_value": 0.5,
                             "invalid_value": null, "storage_class": 2})"));
        success("update " + file + " --from " +
                folder.write("u.csv", "tarvo.id,my.real[0],my.real[1]\n1,nan,0.1\n2,1e-7,\n"));
    }
    static std::string success(const std::string& words) {
        const Result result = run(words);
        EXPECT_EQ(result.code, 0) << words << "\n" << result.output;
        return result.output;
    }
    std::string select(const std::string& words) const { return success("select " + file + words); }

    Folder folder;
    const std::string file = folder.file("a.qrbx");
};

TEST_F(Formats, AValueThatIsNoneIsNullInJsonAndNanInTexts) {
    EXPECT_EQ(select(" --format csv -a tarvo.id,my.real"),
              "tarvo.id,my.real[0],my.real[1]\n1,nan,0.1\n2,1e-07,nan\n3,0.5,0.5\n");
    EXPECT_EQ(select(" --format jsonl -a tarvo.id,my.real"),
              "{\"tarvo.id\":1,\"my.real\":[null,0.1]}\n{\"tarvo.id\":2,\"my.real\":[1e-07,null]}\n"
              "{\"tarvo.id\":3,\"my.real\":[0.5,0.5]}\n");
    // One element stands alone, several are an array.
    const std::string mixed = select(" --format jsonl -a 'my.real[1],tarvo.xyz,tarvo.xyz[2]'");
    EXPECT_EQ(mixed.rfind("{\"my.real[1]\":0.1,\"tarvo.xyz\":[1.50,2.00,3.00", 0), 0u) << mixed;
    std::istringstream lines(select(" --format jsonl"));
    int count = 0;
    for (std::string line; std::getline(lines, line); ++count) {
        rapidjson::Document document;
        document.Parse(line.c_str());
        EXPECT_TRUE(document.IsObject()) << line;
    }
    EXPECT_EQ(count, 3);
    std::istringstream table(select(" --format table -a my.real"));
    std::string line;
    std::string cell;
    std::getline(table, line);
    std::getline(table, line);
    std::istringstream(line) >> cell;
    EXPECT_EQ(cell, "nan");
    rapidjson::Document info;
    info.Parse(success("info --json " + file).c_str());
    ASSERT_TRUE(info.IsObject());
    for (const auto& attribute : info["attributes"].GetArray())
        if (attribute["name"] == "my.real") {
            EXPECT_EQ(attribute["minimum"][0].GetDouble(), 1e-7);
            EXPECT_EQ(attribute["maximum"][1].GetDouble(), 0.5);
        }
    for (const char* format : {"text", "json", "html", "histograms"})
        EXPECT_NE(success("inspect " + file + " --format " + format).find("my.real"),
                  std::string::npos)
            << format;
}

TEST_F(Formats, ALimitTakesSoManyPointsAndNoMore) {
    const auto lines = [](const std::string& text) {
        return std::count(text.begin(), text.end(), '\n');
    };
    for (const int limit : {1, 2, 3, 4}) {
        EXPECT_EQ(lines(select(" --format jsonl --limit " + std::to_string(limit))),
                  std::min(limit, 3));
    }
    EXPECT_EQ(select(" --count"), "3\n");
    EXPECT_EQ(select(" --count --filter 'tarvo.id > 1'"), "2\n");
    EXPECT_EQ(select(" --count --filter 'tarvo.id >= 3'"), "1\n");
    EXPECT_EQ(select(" --count --filter 'tarvo.id > 3'"), "0\n");
    EXPECT_EQ(run("select " + file + " --format xml").code, 2);
    EXPECT_EQ(run("select " + file + " --limit -1").code, 2);
    EXPECT_EQ(run("select " + file + " --filter 'tarvo.xyz[3] > 1'").code, 1);
    EXPECT_EQ(run("select " + file + " -a my.unreal").code, 1);
}

TEST_F(Formats, SizesOfDetailEndWhereTheirModeEnds) {
    const std::string set = "lod " + file + " set ";
    for (const auto& [mode, largest] : {std::pair("thinout", 99), std::pair("combine", 16)}) {
        const std::string size = set + "--mode " + mode + " --size ";
        success(size + "1");
        success(size + std::to_string(largest));
        const Result beyond = run(size + std::to_string(largest + 1));
        EXPECT_EQ(beyond.code, 1) << mode;
        EXPECT_NE(beyond.output.find("0 to " + std::to_string(largest)), std::string::npos)
            << beyond.output;
    }
    EXPECT_NE(success("lod " + file).find("combine"), std::string::npos);
    success("lod " + file + " off");
}

}  // namespace
