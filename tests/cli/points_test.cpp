// The commands that change points, and the index that finds them, as a user and a script run them.
#include "tests/cli/admin.h"

#include <array>
#include <functional>

namespace {

using namespace tarvo::cli::tests;

TEST_F(Admin, UpdateChangesExactlyTheSelectedPoints) {
    importPoints(300);
    const std::string update = "update " + file;
    expectSuccess(update + " --set tarvo.class=250 --filter 'tarvo.xyz[2] < 3'",
                  std::to_string(std::count_if(points.begin(), points.end(),
                                               [](auto& p) { return std::stoi(p.second.z) < 3; })) +
                      " points changed.\n");
    std::string table = "tarvo.class,tarvo.id,z,x,y\n";
    for (auto& [id, point] : points) {
        point.pointClass = std::stoi(point.z) < 3 ? 250 : point.pointClass;
        if (id % 50 == 0) {
            point.pointClass = 17;
            point.x = "-0.5";
            point.z = "6";
            table += "17," + std::to_string(id) + ",6,-0.5," + point.y + "\n";
        }
    }
    table += "17,5,0,0,0\n";  // there is no such point
    const rapidjson::Document answer =
        json(update + " --json --from " + folder.write("new.csv", table));
    EXPECT_EQ(answer["points"].GetUint(), 60u);
    EXPECT_EQ(answer["missing"].GetUint(), 1u);
    expectPoints();
    EXPECT_EQ(transactionCount(), 4u);

    expectSuccess("attributes " + file + " add tarvo.selected tarvo.rgba");
    expectSuccess(update + " --invert tarvo.selected --filter 'tarvo.class == 17'",
                  "60 points changed.\n");
    expectSuccess("select " + file + " --count --filter 'tarvo.selected == 1'", "60\n");
    expectSuccess(update + " --set tarvo.selected=1 --set 'tarvo.rgba[1]=7'");
    expectSuccess(
        "select " + file + " --count --filter 'tarvo.selected == 1 && tarvo.rgba[1] == 7'",
        "300\n");
    const std::size_t kept = transactionCount();
    expectFailure(1, update + " --set missing=1", "\"missing\"");
    expectFailure(2, update + " --set tarvo.class", "NAME=VALUE");
    expectFailure(2, update + " --set tarvo.class=1.5", "not a whole number");
    expectFailure(2, update + " --set tarvo.rgba=1,2", "2 values in place of 4");
    expectFailure(2, update + " --set tarvo.class=1,2", "2 values in place of 1");
    expectFailure(1, update + " --set tarvo.class=70000", "out of the range");
    expectFailure(1, update + " --set tarvo.xyz=1,2,3", "tarvo.xyz");
    expectFailure(1, update + " --invert tarvo.class", "can't be inverted");
    expectFailure(1, update + " --set tarvo.class=1 --filter 'tarvo.class =='", "Expected");
    expectFailure(2, update + " --set tarvo.class=1 --nodes x", "Failed to parse");
    expectFailure(2, update + " --set tarvo.class=1 --invert tarvo.selected", "qrbtool: ");
    expectFailure(2, update, "qrbtool: ");
    expectFailure(1, update + " --from " + folder.write("b.csv", "tarvo.class\n1\n"), "tarvo.id");
    expectFailure(1, update + " --from " + folder.write("i.csv", "tarvo.id\n10\n"), "with values");
    expectFailure(1, update + " --from " + folder.write("c.csv", "tarvo.id,q\n10,1\n"), "\"q\"");
    expectFailure(
        1, update + " --from " + folder.write("d.csv", "tarvo.id,tarvo.class\n20,3\n10,70000\n"),
        "70000");
    EXPECT_EQ(transactionCount(), kept);
    expectPoints();
}

// What a spreadsheet leaves in an id column must name no other point.
TEST_F(Admin, IdsOfATableAreExactOrRefused) {
    expectSuccess("import " +
                  folder.write("p.csv",
                               "tarvo.id,x,y,z,tarvo.class\n1,1,0,0,1\n2,2,0,0,2\n"
                               "9007199254740992,3,0,0,3\n9007199254740993,4,0,0,4\n") +
                  " " + file);
    const auto update = [&](const std::string& rows) {
        return "update " + file + " --from " +
               folder.write("u.csv", "tarvo.id,tarvo.class\n" + rows);
    };
    const std::string before = run("select --format csv " + file).output;
    const std::size_t kept = transactionCount();
    const std::map<std::string, std::string> faults = {
        {"9007199254740993,9\n,9\n", "Line 3 of"},
        {"1,9\n,9\n", "has no id"},
        {"1,9\n1.5,9\n", "\"1.5\" is no id"},
        {"1,9\n1e0,9\n", "\"1e0\" is no id"},
        {"nan,9\n", "\"nan\" is no id"},
        {"18446744073709551616,9\n", "\"18446744073709551616\" is no id"},
        {"18446744073709551615,9\n-1,9\n", "\"-1\" is no id"},
        {"1,9\n-1,9\n", "\"-1\" is no id"},
        {"2,9\n\n1,9\n2,8\n", "id 2 stands in the lines 2 and 5"},
        {"9007199254740993,9\n7,9\n9007199254740993,9\n", "lines 2 and 4"}};
    for (const auto& [rows, text] : faults) {
        expectFailure(1, update(rows), text);
    }
    EXPECT_EQ(run("select --format csv " + file).output, before);
    EXPECT_EQ(transactionCount(), kept);
    // Ids that no point has are passed over.
    expectSuccess(update("9007199254740993,14\n0,9\n7,9\n2,12\n"),
                  "2 points changed, 2 ids not in the database.\n");
    EXPECT_EQ(run("select --format csv -a tarvo.id,tarvo.class " + file).output,
              "tarvo.id,tarvo.class\n1,1\n2,12\n9007199254740992,3\n9007199254740993,14\n");

    // An import into a new database and into this one, and the way out that the message tells.
    const std::string bad =
        folder.write("bad.csv", "tarvo.id,x,y,z\n9007199254740995,7,0,0\n,8,0,0\n");
    const std::string made = folder.file("new.qrbx");
    for (const std::string& words : {bad + " " + made, bad + " " + file + " --append"}) {
        const Result refused = run("import " + words);
        EXPECT_EQ(refused.code, 1);
        EXPECT_NE(refused.output.find("Line 3 of \"" + bad + "\" has no id."), std::string::npos)
            << refused.output;
        EXPECT_NE(refused.output.find("--new-ids"), std::string::npos) << refused.output;
        expectSuccess("import --new-ids " + words);
    }
    EXPECT_EQ(run("select --format csv -a tarvo.id " + made).output, "tarvo.id\n1\n2\n");
}

// A whole number keeps its last digits or is refused, whatever else its column holds.
TEST_F(Admin, WholeNumbersOfATableKeepTheirDigitsOrAreRefused) {
    const std::string first =
        folder.write("p.csv", "x,y,z,n\n1,0,0,18446744073709551615\n2,0,0,5\n");
    expectSuccess("import " + first + " " + file);
    const std::string before = run("select --format csv " + file).output;
    const std::string made = folder.file("new.qrbx");
    for (const std::string other : {"", "0.5", "1e3", "nan"}) {
        const std::string cells[] = {"9007199254740993", other};
        for (const std::size_t from : {0u, 1u}) {
            const std::string line = std::to_string(2 + from);
            const std::string fault =
                "9007199254740993 in the column \"n\" would become "
                "9007199254740992";
            const std::string points = folder.write(
                "n.csv", "x,y,z,n\n1,0,0," + cells[from] + "\n2,0,0," + cells[1 - from] + "\n");
            for (const std::string& words : {"import " + points + " " + made,
                                             "import " + points + " --append --round " + file}) {
                const Result refused = run(words);
                EXPECT_EQ(refused.code, 1) << words;
                EXPECT_NE(refused.output.find("Line " + line + " of \"" + points + "\": " + fault),
                          std::string::npos)
                    << refused.output;
                EXPECT_NE(refused.output.find("--leave-out csv.n"), std::string::npos);
            }
            expectFailure(1,
                          "update --round " + file + " --from " +
                              folder.write("u.csv", "tarvo.id,csv.n\n1," + cells[from] + "\n2," +
                                                        cells[1 - from] + "\n"),
                          "Line " + line + " of");
        }
    }
    EXPECT_EQ(run("select --format csv " + file).output, before);
    expectFailure(1,
                  "import " +
                      folder.write("n.csv", "x,y,z,n\n1,0,0,18446744073709551615\n2,0,0,-1\n") +
                      " " + made,
                  "18446744073709551615 in the column \"n\" would become 18446744073709551616");
    // Other elements and other files of the attribute decide with the column.
    const std::string whole = folder.write("w.csv", "x,y,z,n\n1,0,0,9007199254740993\n");
    const std::string others = folder.write("o.csv", "x,y,z,n\n1,0,0,0.5\n");
    const std::string elements =
        folder.write("n.csv", "x,y,z,n[0],n[1]\n1,0,0,-9007199254740993,\n");
    const std::string sums =
        folder.write("s.csv", "x,y,z,tarvo.voxel_linear_sums[0]\n1,0,0,9007199254740993\n");
    const std::string bare = folder.file("bare.qrbx");
    expectSuccess("import " + folder.write("b.csv", "x,y,z\n1,0,0\n") + " " + bare);
    const std::string column = folder.write("e.csv", "x,y,z,n\n1,0,0,9007199254740993\n2,0,0,\n");
    for (const std::string& inputs :
         {whole + " " + others, others + " " + whole, elements, sums, column}) {
        const std::string text = inputs == column ? "9007199254740993 in" : "9007199254740993 of";
        expectFailure(1, "import " + inputs + " " + made, text);
        expectFailure(1, "import --append " + inputs + " " + bare, text);
        expectSuccess("import --overwrite " + inputs + " --leave-out " +
                      (inputs == sums ? "tarvo.voxel_linear_sums " : "csv.n ") +
                      folder.file("without.qrbx"));
    }
    expectSuccess("import " + whole + " " + first + " " + folder.file("both.qrbx"));
    // Numbers that a double holds are none of these, nor is one with a point.
    expectSuccess("import " +
                  folder.write("d.csv",
                               "x,y,z,n\n1,0,0,9007199254740994\n2,0,0,\n"
                               "3,0,0,9007199254740993.0\n4,0,0,0000000000000000000001\n") +
                  " " + made);
    // What an export writes of doubles comes back.
    expectSuccess("import " +
                  folder.write("f.csv",
                               "x,y,z,f\n1,0,0,1.2345678901234568e20\n2,0,0,0.1\n"
                               "3,0,0,1152921504606846976\n4,0,0,1e30\n") +
                  " " + folder.file("f.qrbx"));
    const std::string table = folder.file("f2.csv");
    expectSuccess("select --format csv -a tarvo.id,csv.f -o " + table + " " +
                  folder.file("f.qrbx"));
    expectSuccess("update " + folder.file("f.qrbx") + " --from " + table, "4 points changed.\n");
}

// One rule for all that writes: nothing is cut off, and nothing rounded unless asked for.
TEST_F(Admin, UpdatesRoundOnRequestOnly) {
    expectSuccess("import " + folder.write("p.csv", "tarvo.id,x,y,z\n1,1,0,0\n2,2,0,0\n") + " " +
                  file);
    const auto add = [&](const std::string& name, const std::string& numbers, int length = 1) {
        expectSuccess("attributes " + file + " add --json " +
                      folder.write("a.json", "{\"name\": \"" + name +
                                                 "\", \"title\": \"t\", \"length\": " +
                                                 std::to_string(length) + ", " + numbers +
                                                 ", \"storage_class\": 2}"));
    };
    add("my.steps", R"("resolution": 3, "minimum_value": 0, "maximum_value": 99, "default_value": 0,
                       "invalid_value": null)");
    add("my.signed", R"("resolution": 1, "minimum_value": -9223372036854775808,
                        "maximum_value": 9223372036854775808, "default_value": 0,
                        "invalid_value": null)");
    add("my.pair", R"("resolution": 1, "minimum_value": 0, "maximum_value": 1e17,
                      "default_value": 0, "invalid_value": null)",
        2);
    add("my.units", R"("resolution": 1, "minimum_value": 0.5, "maximum_value": 9.5,
                       "default_value": 0.5, "invalid_value": null)");
    add("my.real", R"("resolution": 0, "minimum_value": -1e300, "maximum_value": 1e300,
                      "default_value": 0, "invalid_value": null)");
    const std::string names = "my.steps,my.signed,my.units,my.real";
    const auto values = [&] {
        return run("select --format csv -a " + names + " --filter 'tarvo.id == 1' " + file)
            .output.substr((names + "\n").size());
    };
    const auto from = [&](const std::string& name, const std::string& cells) {
        const std::string table = "u" + std::to_string(folder.count()) + ".csv";
        return " --from " + folder.write(table, "tarvo.id," + name + "\n" + cells);
    };
    const std::string before = values();
    const std::string update = "update " + file;
    const std::size_t kept = transactionCount();
    const struct {
        int code;
        std::string words, text, advice;
    } refused[] = {
        {1, from("my.signed", "1,1.5\n2,2.5\n"), "can't hold 2 of the values", "--round"},
        {1, from("my.units", "1,0.6\n"), "can't hold 1 of the values, for example 0.6", "--round"},
        {1, from("my.steps", "1,100\n"), "go from 100 to 100; the database holds 0 to 99", "wider"},
        {1, from("my.steps", "1,101\n") + " --round", "go from 101 to 101", "wider"},
        {1, from("my.signed", "1,9223372036854775808.0\n"), "to 9223372036854775807 only", "wider"},
        {1, from("my.real", "1,9007199254740993\n"), "example 9007199254740993: it holds fl",
         "--round"},
        {1, " --set my.units=0.6", "can't hold 0.6: its resolution is 1, from 0.5", "--round"},
        {2, " --set my.signed=1.5", "\"1.5\" is not a whole number", "--round"},
        {1, " --set my.steps=100", "100 is out of the range", "0 to 99"},
        {1, " --set my.steps=101 --round", "101 is out of the range", "0 to 99"},
        {1, " --set my.signed=9223372036854775808", "9223372036854775808 is out of the range",
         "-9223372036854775808 to 9223372036854775807"},
        {1, " --set my.signed=9223372036854775807.5 --round", "is out of the range", "807"},
        {1, " --set my.real=9007199254740993", "can't hold 9007199254740993", "--round"},
        {1, " --round --set my.pair=9007199254740993,1.5", "9007199254740993 would", "[I]"},
        {2, " --invert tarvo.selected --round", "--round", ""}};
    for (const auto& one : refused) {
        const Result result = run(update + one.words);
        EXPECT_EQ(result.code, one.code) << one.words << "\n" << result.output;
        EXPECT_NE(result.output.find(one.text), std::string::npos) << one.words << result.output;
        EXPECT_NE(result.output.find(one.advice), std::string::npos) << one.words << result.output;
    }
    EXPECT_EQ(values(), before);
    EXPECT_EQ(transactionCount(), kept);
    expectSuccess(update + from(names, "1,100,1.5,0.6,0.1\n") + " --round", "1 point changed.\n");
    EXPECT_EQ(values(), "99,2,0.5,0.1\n");
    expectSuccess(update + " --round --set my.steps=4 --set my.signed=-7.6 --set my.units=8.9");
    EXPECT_EQ(values(), "3,-8,8.5,0.1\n");
    expectSuccess(update + " --set my.signed=-9223372036854775808 --round");
    expectSuccess(update + from("my.signed,my.steps", "1,9223372036854775807,99\n"));
    EXPECT_EQ(values(), "99,9223372036854775807,8.5,0.1\n");
}

TEST_F(Admin, RemoveTakesPointsByFilterOrId) {
    importPoints(200);
    const std::string remove = "remove " + file;
    expectFailure(2, remove + " --filter ' '", "--all");
    expectFailure(2, remove, "qrbtool: ");
    expectFailure(2, remove + " --ids 3-1", "ends before it begins");
    expectFailure(2, remove + " --ids 1,x", "\"x\"");
    expectFailure(1, remove + " --filter missing", "missing");
    expectPoints();
    EXPECT_EQ(transactionCount(), 2u);
    expectSuccess(remove + " --filter 'tarvo.class == 2'", "67 points removed.\n");
    std::erase_if(points, [](const auto& one) { return one.second.pointClass == 2; });
    expectPoints();
    // A range that is wider than there are ids ends.
    const rapidjson::Document answer =
        json("remove --json " + file + " --ids 10,10,30-35,1500-9000000000000000000");
    std::size_t removed = 0;
    std::erase_if(points, [&](const auto& one) {
        const bool gone = one.first == 10 || one.first == 30 || one.first >= 1500;
        removed += gone ? 1 : 0;
        return gone;
    });
    EXPECT_EQ(answer["points"].GetUint64(), removed);
    EXPECT_EQ(answer["missing"].GetUint64(), 9000000000000000000u - 1500 + 1 + 7 - removed);
    expectPoints();
    expectSuccess(remove + " --ids @" + folder.write("ids", "40\n60,70 , 1\n"),
                  "3 points removed, 1 id not in the database.\n");
    for (const std::uint64_t id : {40u, 60u, 70u}) {
        points.erase(id);
    }
    expectPoints();
    expectSuccess(remove + " --all");
    points.clear();
    expectPoints();
    expectSuccess(remove + " --all", "0 points removed.\n");
    expectSuccess(remove + " --ids 1-5", "0 points removed, 5 ids not in the database.\n");
}

TEST_F(Admin, RemovingAFoundNodeTakesNoFurtherNodes) {
    ASSERT_EQ(run("sample -n 60000 " + file).code, 0);
    const std::string found = " --filter 'find fullest leaf'";
    const int inLeaf = std::stoi(run("select " + file + found + " --count").output);
    ASSERT_LT(inLeaf, 60000);
    expectSuccess("remove " + file + found, std::to_string(inLeaf) + " points removed.\n");
    expectSuccess("select " + file + " --count", std::to_string(60000 - inLeaf) + "\n");
}

TEST_F(Admin, AnInterruptedChangeLeavesThePointsAsTheyWere) {
    ASSERT_EQ(run("sample -n 1500000 " + file).code, 0);
    const std::string table = folder.file("all.csv");
    ASSERT_EQ(run("select " + file + " -a tarvo.id,tarvo.class --format csv -o " + table).code, 0);
    const std::string before = run("select --count --filter 'tarvo.class == 2' " + file).output;
    std::string steps = " 'update --set tarvo.class=99'";
    for (int i = 0; i < 20; ++i) {  // long enough to be reached by the signal
        steps += " 'update --from " + table + "'";
    }
    const Result result =
        runShell("timeout --foreground -s INT 0.7 " QRBTOOL_FILE " transactions run " + file +
                 " --title T --" + steps);
    EXPECT_NE(result.code, 0);
    EXPECT_NE(result.output.find("Interrupted."), std::string::npos) << result.output;
    EXPECT_EQ(transactionCount(), 2u);
    EXPECT_EQ(run("select --count --filter 'tarvo.class == 2' " + file).output, before);
    expectSuccess("metadata " + file + " set a 1");  // nothing is locked
}

TEST_F(Admin, TheIndexAgreesWithThePoints) {
    ASSERT_EQ(run("sample -n 40000 " + file).code, 0);
    std::uint64_t leafPoints = 0;
    std::uint64_t nodes = 0;
    std::uint32_t firstLeaf = 0;
    std::uint32_t fullest = 0;
    std::int64_t most = -1;
    const std::function<void(const rapidjson::Value&)> walk = [&](const rapidjson::Value& node) {
        ++nodes;
        if (node["leaf"].GetBool()) {
            if (leafPoints == 0)
                firstLeaf = node["id"].GetUint();
            leafPoints += node["points"].GetUint64();
            if (node["points"].GetInt64() > most) {
                most = node["points"].GetInt64();
                fullest = node["id"].GetUint();
            }
            return;
        }
        std::uint64_t below = 0;
        for (const auto& child : node["children"].GetArray()) {
            below += child["points"].GetUint64();
            walk(child);
        }
        EXPECT_EQ(node["points"].GetUint64(), below);
    };
    walk(json("index " + file + " --json"));
    EXPECT_EQ(leafPoints, 40000u);
    std::uint64_t levelNodes = 0;
    std::uint64_t levelPoints = 0;
    const rapidjson::Document levels = json("index " + file + " --levels --json");
    for (const auto& level : levels.GetArray()) {
        levelNodes += level["nodes"].GetUint64();
        levelPoints += level["leaf_points"].GetUint64();
    }
    // The newest of each level, also where it is not the last one.
    ASSERT_EQ(
        run("update " + file + " --set tarvo.class=1 --nodes " + std::to_string(firstLeaf)).code,
        0);
    std::map<std::size_t, std::uint64_t> newest;
    const std::function<void(const rapidjson::Value&, std::size_t)> look =
        [&](const rapidjson::Value& node, std::size_t level) {
            newest[level] = std::max(newest[level], node["revision"].GetUint64());
            if (node.HasMember("children"))
                for (const auto& child : node["children"].GetArray())
                    look(child, level + 1);
        };
    look(json("index " + file + " --json"), 0);
    const rapidjson::Document changed = json("index " + file + " --levels --json");
    for (std::size_t level = 0; level < changed.Size(); ++level)
        EXPECT_EQ(changed[static_cast<rapidjson::SizeType>(level)]["revision"].GetUint64(),
                  newest[level])
            << level;
    EXPECT_EQ(levelNodes, nodes);
    EXPECT_EQ(levelPoints, leafPoints);
    EXPECT_FALSE(json("index " + file + " --depth 0 --json").HasMember("children"));
    for (const int depth : {0, 1, 2}) {
        const std::string cut = run("index " + file + " --depth " + std::to_string(depth)).output;
        std::int64_t nodesTo = 0;
        for (int level = 0; level <= depth; ++level)
            nodesTo += levels[static_cast<rapidjson::SizeType>(level)]["nodes"].GetInt64();
        EXPECT_EQ(std::count(cut.begin(), cut.end(), '\n'), nodesTo + 1) << depth;
    }
    const std::string tree = run("index " + file).output;
    EXPECT_EQ(static_cast<std::uint64_t>(std::count(tree.begin(), tree.end(), '\n')), nodes + 1);

    const std::string filter = "index " + file + " --filter 'tarvo.xyz[2] > 5' ";
    const std::string some = run(filter).output;
    std::int64_t someNodes = 0;
    const rapidjson::Document someLevels = json(filter + "--levels --json");
    for (const auto& level : someLevels.GetArray())
        someNodes += level["nodes"].GetInt64();
    EXPECT_EQ(someNodes, std::count(some.begin(), some.end(), '\n') - 1);
    EXPECT_LT(some.size(), tree.size());

    // A node whose children are left out is no leaf.
    for (const char* const pick : {"find largest node", "tarvo.xyz[2] > 1e5"}) {
        const std::string begin = "index " + file + " --filter '" + pick + "' --json";
        const rapidjson::Document picked = json(begin);
        const rapidjson::Value* last = &picked;
        while (last->HasMember("children"))
            last = &(*last)["children"][0];
        EXPECT_FALSE((*last)["leaf"].GetBool()) << pick;
        const rapidjson::Document pickedLevels = json(begin + " --levels");
        for (const auto& level : pickedLevels.GetArray())
            EXPECT_EQ(level["leaves"].GetInt(), 0) << pick;
    }
    const std::string id = std::to_string(fullest);
    const std::string found = run("index " + file + " --filter 'find fullest leaf'").output;
    EXPECT_NE(found.find(" " + id + " "), std::string::npos) << found;
    const rapidjson::Document node =
        json("index " + file + " --node " + id + " --attribute tarvo.xyz --json");
    EXPECT_EQ(node["points"].GetInt64(), most);
    ASSERT_EQ(node["attributes"].Size(), 1u);
    double low = 1e9;
    double high = -1e9;
    std::istringstream values(
        run("select " + file + " -a 'tarvo.xyz[2]' --format csv --nodes " + id).output);
    std::string line;
    std::getline(values, line);
    while (std::getline(values, line)) {
        low = std::min(low, std::stod(line));
        high = std::max(high, std::stod(line));
    }
    EXPECT_EQ(node["attributes"][0]["minimum"][2].GetDouble(), low);
    EXPECT_EQ(node["attributes"][0]["maximum"][2].GetDouble(), high);
    // What is told of each node is that of the tree, whatever was searched before it or is cut off.
    std::function<void(const rapidjson::Value&, int)> expectLevels = [&](const auto& one,
                                                                         int level) {
        const std::string number = std::to_string(one["id"].GetUint64());
        const rapidjson::Document alone =
            json("index " + file + " --node " + number + " -a tarvo.id --json");
        EXPECT_EQ(alone["level"].GetInt(), level) << number;
        EXPECT_EQ(alone["leaf"].GetBool(), one["leaf"].GetBool()) << number;
        if (one.HasMember("children"))
            for (const auto& child : one["children"].GetArray())
                expectLevels(child, level + 1);
    };
    expectLevels(json("index " + file + " --depth 2 --json"), 0);
    expectFailure(1, "index " + file + " --node 4000000", "no node 4000000");
    expectFailure(1, "index " + file + " --node 1 -a nothing", "nothing");
    expectFailure(2, "index " + file + " --node 1 --levels", "qrbtool: ");
    expectFailure(1, "index " + file + " --filter 'tarvo.class =='", "Expected");

    expectSuccess("lod " + file, "Mode          thinout\nSize          0 (off)\n");
    expectSuccess("lod " + file + " set --mode thinout --size 10",
                  "Mode          thinout\nSize          10 % of the points\n");
    EXPECT_EQ(json("lod " + file + " --json")["size"].GetUint(), 10u);
    // What is not told stays; in the other mode 10 would be too much.
    expectSuccess("lod " + file + " set --mode thinout",
                  "Mode          thinout\nSize          10 % of the points\n");
    expectSuccess("lod " + file + " set --size 10");
    EXPECT_STREQ(json("transactions " + file + " show --json")["settings"].GetString(),
                 "{\"lodMode\":1,\"chunkSizeLOD\":10}");
    const auto lodPoints = [&] {
        std::uint64_t sum = 0;
        const rapidjson::Document levels = json("index " + file + " --levels --json");
        for (const auto& level : levels.GetArray()) {
            sum += level["lod_points"].GetUint64();
        }
        return sum;
    };
    EXPECT_GT(lodPoints(), 0u);
    expectSuccess("select --count " + file, "40000\n");
    expectFailure(1, "lod " + file + " set --size 101", "101");
    expectFailure(2, "lod " + file + " set --mode other", "other");
    expectSuccess("lod " + file + " off");
    EXPECT_EQ(lodPoints(), 0u);
}

TEST_F(Admin, ImportKeepsTheIdsOfPoints) {
    importPoints(40);
    expectPoints();
    const std::string table = folder.file("points.csv");
    const std::string twice = folder.file("twice.qrbx");
    expectFailure(1, "import " + table + " " + table + " " + twice, "id");
    EXPECT_FALSE(std::filesystem::exists(twice));
    expectSuccess("import --new-ids " + table + " " + table + " " + twice);
    expectSuccess("select --count " + twice + " --filter 'tarvo.id >= 1 && tarvo.id <= 80'",
                  "80\n");
}

// Nodes and a filter are both kept to, by every command that takes them.
TEST_F(Admin, NodesNarrowWhatIsSelected) {
    ASSERT_EQ(run("sample -n 40000 " + file).code, 0);
    expectSuccess("attributes " + file + " add tarvo.selected");
    const rapidjson::Document root = json("index " + file + " --json");
    const rapidjson::Value* node = &root;
    while (!(*node)["leaf"].GetBool())
        node = &(*node)["children"][0];
    const std::string all = std::to_string((*node)["points"].GetUint64());
    const std::string nodes = " --nodes " + std::to_string((*node)["id"].GetUint());
    const auto count = [&](const std::string& words) {
        const std::string text = run("select " + file + " --count" + words).output;
        return text.substr(0, text.find('\n'));
    };
    EXPECT_EQ(count(nodes), all);
    const std::string some = count(nodes + " --filter 'tarvo.id % 2 == 0'");
    EXPECT_NE(some, all);
    EXPECT_NE(some, "0");
    for (const std::string change : {"--invert tarvo.selected", "--set tarvo.selected=0"})
        expectSuccess("update " + file + " " + change + nodes, all + " points changed.\n");
    expectSuccess(
        "update " + file + " --invert tarvo.selected" + nodes + " --filter 'tarvo.id % 2 == 0'",
        some + " points changed.\n");
    EXPECT_EQ(count(" --filter 'tarvo.selected == 1'"), some);
    expectSuccess(
        "update " + file + " --set tarvo.class=99" + nodes + " --filter 'tarvo.selected == 1'",
        some + " points changed.\n");
    EXPECT_EQ(count(" --filter 'tarvo.class == 99'"), some);
    const std::string copied = folder.file("copy.qrbx");
    expectSuccess("copy " + file + " " + copied + nodes + " --filter 'tarvo.class == 99'",
                  some + " points copied to \"" + copied + "\".\n");
}

TEST_F(Admin, ValidExtremesLeaveOutWhatIsNoValue) {
    importPoints(1);
    for (const auto& [name, invalid] : {std::pair{"low.v", "-10"}, {"high.v", "100"}})
        expectSuccess("attributes " + file + " add --json " +
                      folder.write(name, R"({"name": ")" + std::string(name) +
                                             R"(", "title": "v", "length": 1, "resolution": 1,
                                             "minimum_value": -10, "maximum_value": 100,
                                             "default_value": 0, "storage_class": 2,
                                             "invalid_value": )" +
                                             invalid + "}"));
    const std::string table = "x,y,z,low.v,high.v\n1,1,1,-10,100\n1,1,1,7,7\n";
    expectSuccess("import " + folder.write("v.csv", table) + " " + file + " --append");
    const rapidjson::Document node = json("index " + file + " --node 1 -a low.v,high.v --json");
    for (const auto& [i, members] : {std::pair{0u, std::array{-10, 7, 0, 7}}, {1u, {0, 100, 0, 7}}})
        for (const auto& [k, member] : {std::pair{0u, "minimum"},
                                        {1u, "maximum"},
                                        {2u, "cleaned_minimum"},
                                        {3u, "cleaned_maximum"}})
            EXPECT_EQ(node["attributes"][i][member][0].GetInt(), members[k]) << i << member;
    // For people, too.
    const auto number = [&](const rapidjson::Value& value) {
        return std::to_string(value.GetUint());
    };
    const auto revision = [&](rapidjson::SizeType i) {
        return number(node["attributes"][i]["revision"]);
    };
    std::vector<Cells> rows = rowsOf(run("index " + file + " --node 1 -a low.v,high.v").output);
    EXPECT_EQ(rows, (std::vector<Cells>{{"Node", node["leaf"].GetBool() ? "1 (a leaf)" : "1"},
                                        {"Level", number(node["level"])},
                                        {"Points", "3"},
                                        {"Own points", number(node["points_own"])},
                                        {"Revision", number(node["revision"])},
                                        {},
                                        {"Attribute", "Minimum", "Maximum", "Valid minimum",
                                         "Valid maximum", "Revision"},
                                        {"low.v", "-10", "7", "0", "7", revision(0)},
                                        {"high.v", "0", "100", "0", "7", revision(1)}}));
}

}  // namespace
