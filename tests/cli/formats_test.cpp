// How values of every kind are written, and the ends of what options take.
#include "tests/cli/commandtest.h"

#include <algorithm>
#include <functional>
#include <set>
#include <sstream>
#include <utility>
#include <vector>

namespace {

using namespace tarvo::cli::tests;

class Formats : public CommandTest {
protected:
    // Three points with two floats each, of which some have no value.
    Formats() {
        expectSuccess("import " +
                      folder.write("p.csv", "tarvo.id,x,y,z\n1,1.5,2,3\n2,-4.25,5,6\n3,7,8,9\n") +
                      " " + file);
        expectSuccess(
            "attributes " + file + " add --json " +
            folder.write("r.json",
                         R"({"name": "my.real", "title": "r", "length": 2, "resolution": 0,
                             "minimum_value": -1000, "maximum_value": 1000, "default_value": 0.5,
                             "invalid_value": null, "storage_class": 2})"));
        expectSuccess(
            "update " + file + " --from " +
            folder.write("u.csv", "tarvo.id,my.real[0],my.real[1]\n1,nan,0.1\n2,1e-7,\n"));
    }
    std::string select(const std::string& words) const {
        return expectSuccess("select " + file + words);
    }
};

TEST_F(Formats, AValueThatIsNoneIsNullInJsonAndNanInTexts) {
    EXPECT_EQ(select(" --format csv -a tarvo.id,my.real"),
              "tarvo.id,my.real[0],my.real[1]\n1,nan,0.1\n2,0.0000001,nan\n3,0.5,0.5\n");
    EXPECT_EQ(
        select(" --format jsonl -a tarvo.id,my.real"),
        "{\"tarvo.id\":1,\"my.real\":[null,0.1]}\n{\"tarvo.id\":2,\"my.real\":[0.0000001,null]}\n"
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
    info.Parse(expectSuccess("info --json " + file).c_str());
    ASSERT_TRUE(info.IsObject());
    for (const auto& attribute : info["attributes"].GetArray())
        if (attribute["name"] == "my.real") {
            EXPECT_EQ(attribute["minimum"][0].GetDouble(), 1e-7);
            EXPECT_EQ(attribute["maximum"][1].GetDouble(), 0.5);
        }
    const std::string none = folder.file("none.qrbx");
    expectSuccess("import " + folder.write("none.csv", "x,y,z,w\n1,2,3,\n") + " " + none);
    info.Parse(expectSuccess("info --json " + none).c_str());
    ASSERT_FALSE(info.HasParseError());
    for (const auto& attribute : info["attributes"].GetArray())
        EXPECT_EQ(attribute["minimum"][0].IsNull(), attribute["name"] == "csv.w");
    for (const char* format : {"text", "json", "html", "histograms"})
        EXPECT_NE(expectSuccess("inspect " + file + " --format " + format).find("my.real"),
                  std::string::npos)
            << format;
}

TEST_F(Formats, ColumnsOfATableEndBelowTheirNames) {
    std::istringstream table(select(" -a 'tarvo.xyz,my.real'"));
    const auto ends = [](const std::string& line) {
        std::vector<std::size_t> found;
        for (std::size_t i = 0; i < line.size(); ++i)
            if (line[i] != ' ' && (i + 1 == line.size() || line[i + 1] == ' '))
                found.push_back(i);
        return found;
    };
    std::string line;
    std::getline(table, line);
    const auto expected = ends(line);
    EXPECT_EQ(expected.size(), 5u);
    for (int i = 0; i < 3; ++i) {
        std::getline(table, line);
        EXPECT_EQ(ends(line), expected) << line;
    }
}

// What is read by people tells the same as what programs read.
TEST_F(Formats, ListsForPeopleHoldWhatThoseForProgramsHold) {
    using Rows = std::vector<Cells>;
    expectSuccess("metadata " + file + " set bb 1");
    expectSuccess("metadata " + file + " set a '[1,2]'");
    expectSuccess("metadata " + file + " sign a --key 01");
    expectSuccess("metadata " + file + " set c 1");
    expectSuccess("transactions " + file + " restore 7");
    Rows expected{{"Name", "Bytes", "Signed"}};
    const rapidjson::Document items = json("metadata " + file + " --json");
    for (const auto& one : items.GetArray()) {
        expected.push_back({one["name"].GetString(), std::to_string(one["size"].GetUint())});
        if (one["signed"].GetBool())
            expected.back().push_back("yes");
    }
    EXPECT_EQ(rowsOf(run("metadata --bytes " + file).output), expected);
    EXPECT_EQ(expected.back(), (Cells{"bb", "1"}));
    expected = {{"Number", "Committed", "Title", "Agent"}};
    const rapidjson::Document transactions = json("transactions " + file + " --json");
    std::string told = "\nTransactions\n";
    for (const auto& one : transactions.GetArray()) {
        const std::string id = std::to_string(one["id"].GetUint());
        expected.push_back(
            {id, one["stop"].GetString(), one["title"].GetString(), one["agent"].GetString()});
        if (id == "7")
            expected.back().insert(expected.back().begin(), "*");
        told += (id == "7" ? "* " : "  ") + id + "  " + one["stop"].GetString() + "  " +
                one["title"].GetString() + " (" + one["agent"].GetString() + ")\n";
    }
    EXPECT_EQ(rowsOf(run("transactions " + file).output), expected);
    for (const std::string id : {"2", "7"}) {
        const rapidjson::Document one = json("transactions " + file + " show " + id + " --json");
        const Rows rows = rowsOf(run("transactions " + file + " show --bytes " + id).output);
        expected = {{"Number", id + (id == "7" ? " (current)" : "")},
                    {"Title", one["title"].GetString()},
                    {"Agent", one["agent"].GetString()},
                    {"Library", one["library"].GetString()},
                    {"Begun", one["start"].GetString()},
                    {"Committed", one["stop"].GetString()},
                    {"Alone holds", std::to_string(one["size"].GetUint()) + " bytes"}};
        for (std::size_t i : {0u, 1u, 2u})
            EXPECT_EQ(rows.at(i), expected[i]);
        for (std::size_t i : {4u, 5u, 6u})
            EXPECT_NE(std::find(rows.begin(), rows.end(), expected[i]), rows.end())
                << expected[i][0];
    }

    const rapidjson::Document info = json("info --json " + file);
    const std::string text = run("info --bytes " + file).output;
    const auto& first = info["transactions"][0];
    for (const std::string& part :
         {"File          " + file + "\n", "Identity      " + std::string(info["uuid"].GetString()),
          "Size          " + std::to_string(std::filesystem::file_size(file)) + " bytes\n",
          "Created       " + std::string(first["start"].GetString()) + " by " +
              first["agent"].GetString() + "\n",
          std::string("Points        3\n"),
          std::string("Extent        -4.25 2.00 3.00\n              7.00 8.00 9.00\n"), told,
          std::string("\nMetadata\n  a\n  bb\n")})
        EXPECT_NE(text.find(part), std::string::npos) << part << text;
    const Rows rows = rowsOf(text);
    for (const Cells& attribute :
         {Cells{"tarvo.xyz[3]", "-4.25..7.00, 2.00..8.00, 3.00..9.00 m"}, Cells{"tarvo.id", "1..3"},
          Cells{"my.real[2]", "0.0000001..0.5, 0.1..0.5"}})
        EXPECT_EQ(std::count(rows.begin(), rows.end(), attribute), 1) << attribute[0] << text;
}

TEST_F(Formats, AnAttributeIsTold) {
    const std::string definition =
        R"({"name": "my.all", "title": "T", "description": "D", "tags": "a, b", "length": 2,
            "resolution": 0.5, "minimum_value": -10, "maximum_value": 20, "default_value": 1,
            "invalid_value": -10, "unit_symbol": "m", "scale_factor": 4, "named_values": "1=one",
            "storage_class": 3, "compression_options": 1, "lod_settings": "first"})";
    expectSuccess("attributes " + file + " add --json " + folder.write("all.json", definition));
    EXPECT_EQ(run("attributes " + file + " show my.all").output,
              "Name          my.all\nTitle         T\nDescription   D\nTags          a, b\n"
              "Length        2\nType          SINGLE\nRange         -10 to 20 m\n"
              "Resolution    0.5 m\nScale factor  4\nDefault       1\nInvalid       -10\n"
              "Named values  1=one\nStorage       dynamic\nCompression   delta\n"
              "LOD           first\n");
    const std::vector<Cells> rows = rowsOf(run("attributes " + file + " list 'my.a*'").output);
    EXPECT_EQ(rows, (std::vector<Cells>{
                        {"Name", "Length", "Type", "Minimum", "Maximum", "Resolution", "Unit",
                         "Storage", "Title"},
                        {"my.all", "2", "SINGLE", "-10", "20", "0.5", "m", "dynamic", "T"}}));
}

TEST_F(Formats, TheIndexForPeopleIsThatForPrograms) {
    std::string table = "x,y,z,n\n";
    for (int i = 0; i < 60; ++i)
        table += std::to_string(i * i) + "," + std::to_string(7 * i % 60) + ",1,2\n";
    const std::string source = folder.file("source.qrbx"), small = folder.file("small.qrbx");
    expectSuccess("import " + folder.write("i.csv", table) + " " + source);
    expectSuccess("copy " + source + " " + small + " --settings " +
                  folder.write("s.json", R"({"chunk_size": 5})"));
    expectSuccess("lod " + small + " set --mode combine --size 1");
    const std::string index = "index " + small;
    rapidjson::Document tree = json(index + " --json");
    const rapidjson::Value* leaf = &tree;
    while (!(*leaf)["leaf"].GetBool())
        leaf = &(*leaf)["children"][0];
    const std::string leafId = std::to_string((*leaf)["id"].GetUint());
    expectSuccess("update " + small + " --set csv.n=1 --nodes " + leafId);
    tree = json(index + " --json");
    const auto cell = [](const rapidjson::Value& one, const char* member) {
        return std::to_string(one[member].GetUint());
    };
    std::vector<Cells> expected{{"Node", "Points", "Own", "Revision"}};
    std::vector<std::size_t> indents{0};
    const std::function<void(const rapidjson::Value&, std::size_t)> walk =
        [&](const rapidjson::Value& node, std::size_t level) {
            expected.push_back({cell(node, "id"), cell(node, "points"), cell(node, "points_own"),
                                cell(node, "revision")});
            indents.push_back(2 * level);
            if (node.HasMember("children"))
                for (const auto& child : node["children"].GetArray())
                    walk(child, level + 1);
        };
    walk(tree, 0);
    const std::string text = run(index).output;
    EXPECT_EQ(rowsOf(text), expected);
    std::istringstream lines(text);
    for (const std::size_t indent : indents) {
        std::string line;
        std::getline(lines, line);
        EXPECT_EQ(line.find_first_not_of(' '), indent) << text;
    }
    EXPECT_GE(*std::max_element(indents.begin(), indents.end()), 4u);

    expected = {
        {"Level", "Nodes", "Leaves", "Points in leaves", "Level-of-detail points", "Revision"}};
    const rapidjson::Document levels = json(index + " --levels --json");
    for (const auto& level : levels.GetArray())
        expected.push_back({cell(level, "level"), cell(level, "nodes"), cell(level, "leaves"),
                            cell(level, "leaf_points"), cell(level, "lod_points"),
                            cell(level, "revision")});
    EXPECT_EQ(rowsOf(run(index + " --levels").output), expected);
    EXPECT_EQ(rowsOf(run(index + " --node " + leafId).output).at(0),
              (Cells{"Node", leafId + " (a leaf)"}));
    EXPECT_EQ(rowsOf(run(index + " --node " + cell(tree, "id")).output).at(0),
              (Cells{"Node", cell(tree, "id")}));
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

// Points are read 65536 at a time.
TEST_F(Formats, ALimitHoldsAcrossPages) {
    constexpr int page = 65536;
    constexpr int points = 2 * page + 100;
    std::string table = "tarvo.id,x,y,z\n";
    for (int i = 1; i <= points; ++i) {
        table += std::to_string(i) + "," + std::to_string(i % 1000) + ".5,2,3\n";
    }
    const std::string large = folder.file("large.qrbx");
    expectSuccess("import " + folder.write("large.csv", table) + " " + large);
    const auto idsOf = [&](const std::string& words) {
        std::istringstream lines(
            expectSuccess("select " + large + " -a tarvo.id --format csv " + words));
        std::string line;
        std::getline(lines, line);
        EXPECT_EQ(line, "tarvo.id") << words;
        std::vector<int> ids;
        while (std::getline(lines, line)) {
            ids.push_back(std::stoi(line));
        }
        return ids;
    };
    const auto expectFirst = [&](const std::string& filter, std::size_t passing, int passFrom) {
        const std::vector<int> all = idsOf(filter);
        EXPECT_EQ(all.size(), passing) << filter;
        const std::set<int> distinct(all.begin(), all.end());
        EXPECT_EQ(distinct.size(), passing) << filter;
        EXPECT_GE(*distinct.begin(), passFrom) << filter;
        for (const std::size_t limit :
             {0, 1, page - 1, page, page + 1, page + 20, 2 * page - 1, 2 * page, 2 * page + 1,
              points - 1, points, points + 1, 10 * page}) {
            const std::string words = filter + " --limit " + std::to_string(limit);
            const std::size_t size = std::min(limit, passing);
            const std::vector<int> some = idsOf(words);
            EXPECT_EQ(some.size(), size) << words;
            EXPECT_TRUE(
                std::equal(some.begin(), some.begin() + std::min(size, some.size()), all.begin()))
                << words;
            EXPECT_EQ(expectSuccess("select " + large + " --count " + words),
                      std::to_string(size) + "\n")
                << words;
        }
    };
    expectFirst("", points, 1);
    expectFirst("--filter 'tarvo.id > 50'", points - 50, 51);
    expectFirst("--filter 'tarvo.id > " + std::to_string(page - 1) + "'", points - page + 1, page);
    for (const char* format : {"table", "jsonl"}) {
        const std::string words = "select " + large + " -a tarvo.id --limit 70000 --format ";
        const std::string text = expectSuccess(words + format);
        const std::string head = expectSuccess(
            "select " + large + " -a tarvo.id --limit 1 --format " + std::string(format));
        EXPECT_EQ(std::count(text.begin(), text.end(), '\n'),
                  std::count(head.begin(), head.end(), '\n') + 69999)
            << format;
    }
}

TEST_F(Formats, SizesOfDetailEndWhereTheirModeEnds) {
    const std::string set = "lod " + file + " set ";
    for (const auto& [mode, largest] : {std::pair("thinout", 99), std::pair("combine", 16)}) {
        const std::string size = set + "--mode " + mode + " --size ";
        expectSuccess(size + "1");
        expectSuccess(size + std::to_string(largest));
        const Result beyond = run(size + std::to_string(largest + 1));
        EXPECT_EQ(beyond.code, 1) << mode;
        EXPECT_NE(beyond.output.find("0 to " + std::to_string(largest)), std::string::npos)
            << beyond.output;
    }
    expectSuccess("lod " + file, "Mode          combine\nSize          16\n");
    expectSuccess("lod " + file + " off");
}

}  // namespace
