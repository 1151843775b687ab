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
    ASSERT_EQ(run("sample -n 30000 " + file).code, 0);
    const std::string found = " --filter 'find fullest leaf'";
    const int inLeaf = std::stoi(run("select " + file + found + " --count").output);
    ASSERT_LT(inLeaf, 30000);
    expectSuccess("remove " + file + found, std::to_string(inLeaf) + " points removed.\n");
    expectSuccess("select " + file + " --count", std::to_string(30000 - inLeaf) + "\n");
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
    const std::string some = count(nodes + " --filter 'tarvo.amplitude > 40'");
    EXPECT_NE(some, all);
    for (const std::string change : {"--invert tarvo.selected", "--set tarvo.selected=0"})
        expectSuccess("update " + file + " " + change + nodes, all + " points changed.\n");
    expectSuccess(
        "update " + file + " --invert tarvo.selected" + nodes + " --filter 'tarvo.amplitude > 40'",
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
}

}  // namespace
