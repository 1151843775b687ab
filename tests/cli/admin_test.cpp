// The commands that look after databases, as a user and a script run them.
#include "tests/cli/folder.h"
#include "tests/cli/process.h"

#include <gtest/gtest.h>

#include <rapidjson/document.h>

#include <algorithm>
#include <fstream>
#include <functional>
#include <iterator>
#include <map>
#include <sstream>

namespace {

using namespace tarvo::cli::tests;

class Admin : public testing::Test {
protected:
    // A point of the databases below.
    struct Point {
        std::string x, y, z;
        int pointClass = 0;
    };
    using Points = std::map<std::uint64_t, Point>;

    // Makes "a.qrbx" with points whose ids are 10, 20, ...
    void importPoints(int count) {
        std::string text = "tarvo.id,x,y,z,tarvo.class\n";
        for (int i = 1; i <= count; ++i) {
            Point point{std::to_string(i) + ".5", std::to_string(-i), std::to_string(i % 7), i % 3};
            text += std::to_string(10 * i) + "," + point.x + "," + point.y + "," + point.z + "," +
                    std::to_string(point.pointClass) + "\n";
            points[static_cast<std::uint64_t>(10 * i)] = point;
        }
        const std::string table = folder.write("points.csv", text);
        const Result import = run("import " + table + " " + file);
        ASSERT_EQ(import.code, 0) << import.output;
    }
    // Expects that the database holds exactly the points.
    void expectPoints() const {
        const Result select =
            run("select " + file + " -a tarvo.id,tarvo.xyz,tarvo.class --format csv");
        ASSERT_EQ(select.code, 0) << select.output;
        std::istringstream lines(select.output);
        std::string line;
        std::getline(lines, line);
        std::size_t found = 0;
        while (std::getline(lines, line)) {
            std::replace(line.begin(), line.end(), ',', ' ');
            std::istringstream cells(line);
            std::uint64_t id = 0;
            double x = 0, y = 0, z = 0;
            int pointClass = -1;
            cells >> id >> x >> y >> z >> pointClass;
            const auto at = points.find(id);
            ASSERT_NE(at, points.end()) << line;
            EXPECT_EQ(x, std::stod(at->second.x)) << line;
            EXPECT_EQ(y, std::stod(at->second.y)) << line;
            EXPECT_EQ(z, std::stod(at->second.z)) << line;
            EXPECT_EQ(pointClass, at->second.pointClass) << line;
            ++found;
        }
        EXPECT_EQ(found, points.size());
    }

    static void expectSuccess(const std::string& words, const std::string& output = "") {
        const Result result = run(words);
        EXPECT_EQ(result.code, 0) << words << "\n" << result.output;
        if (!output.empty()) {
            EXPECT_EQ(result.output, output) << words;
        }
    }
    // Expects an end with the code and a text in what is written.
    static void expectFailure(int code, const std::string& words, const std::string& text) {
        const Result result = run(words);
        EXPECT_EQ(result.code, code) << words << "\n" << result.output;
        EXPECT_NE(result.output.find(text), std::string::npos) << words << "\n" << result.output;
    }
    static rapidjson::Document json(const std::string& words) {
        rapidjson::Document document;
        const Result result = run(words);
        document.Parse(result.output.c_str());
        if (result.code != 0 || document.HasParseError()) {
            ADD_FAILURE() << words << "\n" << result.output;
            document.SetObject();
        }
        return document;
    }
    static std::string read(const std::string& name) {
        std::ifstream stream(name, std::ios::binary);
        return std::string(std::istreambuf_iterator<char>(stream), {});
    }
    std::size_t transactionCount() const {
        return json("transactions " + file + " --json").GetArray().Size();
    }

    Folder folder;
    const std::string file = folder.file("a.qrbx");
    Points points;
};

TEST_F(Admin, EveryCommandExplainsItselfAndRefusesWhatItDoesNotKnow) {
    const std::string help = run("--help").output;
    std::size_t count = 0;
    for (const std::string command : {"sample",
                                      "import",
                                      "schema",
                                      "schema create",
                                      "info",
                                      "inspect",
                                      "validate",
                                      "defaults",
                                      "defaults metadata",
                                      "check",
                                      "select",
                                      "update",
                                      "remove",
                                      "metadata",
                                      "metadata get",
                                      "metadata sign",
                                      "attributes",
                                      "attributes put",
                                      "index",
                                      "lod",
                                      "lod set",
                                      "transactions",
                                      "transactions run",
                                      "changelog",
                                      "changelog verify",
                                      "finalize",
                                      "vacuum"}) {
        const Result told = run(command + " --help");
        EXPECT_EQ(told.code, 0) << command;
        EXPECT_NE(told.output.find("Usage: qrbtool"), std::string::npos) << told.output;
        expectFailure(2, command + " --nonsense", "qrbtool: ");
        if (command.find(' ') == std::string::npos) {
            EXPECT_NE(help.find("\n  " + command + " "), std::string::npos) << command;
            ++count;
        }
    }
    EXPECT_EQ(count, 19u);
    EXPECT_NE(run("metadata get --help").output.find("qrbtool metadata FILE get"),
              std::string::npos);
    for (const char* command : {"info", "vacuum", "finalize", "transactions", "metadata list",
                                "changelog", "lod off", "index", "remove --all"}) {
        expectFailure(2, command, "The name of the database is required");
    }
    for (const char* command : {"info", "vacuum", "finalize", "transactions", "metadata",
                                "changelog", "lod", "index", "attributes", "inspect", "check"}) {
        expectFailure(1, std::string(command) + " " + file, "does not exist");
    }
}

TEST_F(Admin, TheWholeLifeOfADatabase) {
    importPoints(3000);
    const std::string key = folder.write("key", "00-11-22\nff");
    const std::string tag = folder.write("tag.json", "{\"height\": 1.500, \"name\": \"Größe\"}");
    const Result changed = run(
        "transactions run " + file + " --title 'First edit' --comment 'by hand' --key-file " + key +
        " -- \"update --set tarvo.class=9 --filter 'tarvo.class == 1'\" \"metadata set my.tag @" +
        tag +
        "\" \"metadata sign my.tag --key 'ab cd'\" 'remove --ids 10,20' "
        "'changelog append \"cleaned up\"'");
    ASSERT_EQ(changed.code, 0) << changed.output;
    EXPECT_NE(changed.output.find("1000 points changed.\n"), std::string::npos) << changed.output;
    EXPECT_NE(changed.output.find("2 points removed.\n"), std::string::npos) << changed.output;
    EXPECT_NE(changed.output.find("Transaction 3 is committed.\n"), std::string::npos);
    const Points before = points;
    points.erase(10);
    points.erase(20);
    for (auto& [id, point] : points) {
        point.pointClass = point.pointClass == 1 ? 9 : point.pointClass;
    }
    expectPoints();
    expectSuccess("metadata " + file + " get my.tag", "{\"height\": 1.500, \"name\": \"Größe\"}\n");
    expectSuccess("metadata " + file + " verify my.tag --key abcd",
                  "Signature successfully verified.\n");

    const rapidjson::Document third = json("transactions " + file + " show 3 --json");
    EXPECT_STREQ(third["title"].GetString(), "First edit");
    EXPECT_STREQ(third["comments"].GetString(), "by hand");
    EXPECT_STREQ(third["agent"].GetString(), "qrbtool " QRB_TEST_VERSION);
    EXPECT_TRUE(third["current"].GetBool());
    const std::string entry = run("changelog " + file + " show --entry 3").output;
    EXPECT_NE(entry.find("Message: cleaned up\n"), std::string::npos) << entry;
    expectSuccess("changelog " + file + " verify --entry 3 --key 001122FF");
    expectFailure(1, "changelog " + file + " verify --entry 3 --key 001122FE",
                  "No valid signature");
    expectFailure(1, "changelog " + file + " verify --entry 2 --key 001122FF",
                  "No valid signature");

    const Points edited = points;
    points = before;
    expectSuccess("transactions " + file + " restore 2", "The database is at transaction 2.\n");
    expectPoints();
    expectSuccess("transactions " + file + " restore 3");
    points = edited;
    expectPoints();
    std::string numbers = "[0";
    for (unsigned i = 1; i < 20000; ++i) {
        numbers += "," + std::to_string(i * 2654435761u);
    }
    expectSuccess("metadata " + file + " set my.numbers @" + folder.write("big", numbers + "]"));
    expectSuccess("metadata " + file + " remove my.numbers");
    expectSuccess("finalize " + file);
    EXPECT_EQ(transactionCount(), 2u);
    expectFailure(1, "transactions " + file + " restore 2", "no transaction 2");
    const auto size = std::filesystem::file_size(file);
    const Result vacuum = run("vacuum " + file);
    EXPECT_EQ(vacuum.code, 0);
    EXPECT_EQ(vacuum.output, std::to_string(size - std::filesystem::file_size(file)) +
                                 " bytes given back, the file has " +
                                 std::to_string(std::filesystem::file_size(file)) + ".\n");
    EXPECT_LT(std::filesystem::file_size(file), size - 50000);
    expectPoints();
    expectSuccess("changelog " + file + " verify --entry 3 --key 001122FF");
}

TEST_F(Admin, ARunOfCommandsChangesAllOrNothing) {
    importPoints(20);
    const std::string begin = "transactions run " + file + " --title T -- ";
    expectFailure(1, begin + "'update --set tarvo.class=5' 'metadata set a {'",
                  "Nothing is changed");
    expectFailure(1, begin + "'update --set tarvo.class=5' 'validate --schema vtx'", "is missing");
    expectFailure(1, begin + "'remove --all' 'update --from " + folder.file("no.csv") + "'",
                  "No such file or directory");
    expectFailure(2, begin + "'update --set tarvo.class=5' 'vacuum'", "\"vacuum\"");
    expectFailure(2, begin + "'update --set tarvo.class=5' 'update --bogus'", "--bogus");
    expectFailure(2, begin + "'metadata set a \"b'", "not closed");
    expectFailure(2, begin, "A command to run is required");
    expectFailure(2, "transactions run " + file + " -- 'lod'", "--title");
    // A key that was meant to be there.
    expectFailure(2, "transactions run " + file + " --title T --key '' -- 'lod'",
                  "The key is empty");
    expectPoints();
    EXPECT_EQ(transactionCount(), 2u);
    // What a step reads is what the steps before it made of the database.
    const Result seen = run(begin + "'remove --ids 10' 'select --count' 'metadata set n 1'");
    EXPECT_EQ(seen.output, "1 point removed.\n19\nTransaction 3 is committed.\n");
    points.erase(10);
    expectPoints();
    // The database's name may also stand where it does for the other commands.
    expectSuccess("transactions " + file + " run --title U -- 'metadata remove n'");
    EXPECT_EQ(transactionCount(), 4u);
}

TEST_F(Admin, KeysAreNeverWritten) {
    importPoints(3);
    const std::string key = "c0ffee15900d";
    const Result result = run("transactions run " + file + " --title T --key " + key +
                              " -- 'metadata set a 1' 'metadata sign a --key " + key +
                              "' 'metadata verify a --key=" + key + "'");
    EXPECT_EQ(result.code, 0) << result.output;
    const Result failed =
        run("transactions run " + file + " --title T -- 'metadata sign b --key " + key + "'");
    EXPECT_EQ(failed.code, 1);
    expectFailure(2, "transactions run " + file + " --title T -- 'nonsense --key " + key + "'",
                  "nonsense");
    for (const std::string& text :
         {result.output, failed.output,
          run("transactions run " + file + " --title T -- 'nonsense --key " + key + "'").output,
          run("transactions run " + file + " --title T -- 'update --key=" + key + "'").output,
          run("transactions " + file + " 'metadata sign a --key " + key + "'").output,
          run("update " + file + " --set a=1 --key " + key).output, read(file),
          run("transactions " + file + " show 3").output, run("changelog " + file).output}) {
        EXPECT_EQ(text.find(key), std::string::npos) << text.substr(0, 2000);
    }
}

TEST_F(Admin, TransactionsAreShownAndForgotten) {
    importPoints(5);
    expectSuccess("metadata " + file + " set a 1");
    expectSuccess("metadata " + file + " set a 2");
    const rapidjson::Document list = json("transactions " + file + " list --json");
    ASSERT_EQ(list.Size(), 4u);
    EXPECT_EQ(list[3]["id"].GetUint(), 4u);
    EXPECT_TRUE(list[3]["current"].GetBool());
    EXPECT_FALSE(list[2]["current"].GetBool());
    EXPECT_STREQ(list[1]["title"].GetString(), "Import");
    const std::string table = run("transactions " + file).output;
    EXPECT_NE(table.find("*       4  "), std::string::npos) << table;
    const std::string size = run("transactions " + file + " size 2 3").output;
    EXPECT_GT(std::stoul(size), 0u);
    expectSuccess("transactions " + file + " discard 2 3", "2 transactions forgotten, " +
                                                               size.substr(0, size.size() - 1) +
                                                               " bytes for vacuum to give back.\n");
    EXPECT_EQ(transactionCount(), 2u);
    expectFailure(1, "transactions " + file + " discard 1", "first");
    expectFailure(1, "transactions " + file + " discard 4", "4");
    expectFailure(1, "transactions " + file + " show 3", "no transaction 3");
    expectFailure(2, "transactions " + file + " restore", "required");
    expectFailure(2, "transactions " + file + " discard x", "qrbtool: ");
}

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
    expectFailure(1, update + " --set tarvo.class=70000", "out of the range");
    expectFailure(1, update + " --set tarvo.xyz=1,2,3", "tarvo.xyz");
    expectFailure(1, update + " --invert tarvo.class", "can't be inverted");
    expectFailure(1, update + " --set tarvo.class=1 --filter 'tarvo.class =='", "Expected");
    expectFailure(2, update + " --set tarvo.class=1 --nodes x", "Failed to parse");
    expectFailure(2, update + " --set tarvo.class=1 --invert tarvo.selected", "qrbtool: ");
    expectFailure(2, update, "qrbtool: ");
    expectFailure(1, update + " --from " + folder.write("b.csv", "tarvo.class\n1\n"), "tarvo.id");
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
    expectSuccess(remove + " --ids @" + folder.write("ids", "40\n60,70 , 1\n"));
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

TEST_F(Admin, MetadataGoesRoundThroughFiles) {
    importPoints(3);
    const std::string metadata = "metadata " + file;
    const std::string items =
        "{\"b\": {\"x\": 1.2300, \"y\": [1, {\"k\": null}]}, \"s\": \"text\", \"n\": 5.0e3,"
        "\"../../evil\": [true], \".hidden\": 12345678901234567890123}";
    expectSuccess(metadata + " set s 1");
    expectSuccess(metadata + " import " + folder.write("in.json", items),
                  "Items added   b, n, ../../evil, .hidden\nItems updated s\n");
    const auto expectItems = [&] {
        expectSuccess(metadata + " get b", "{\"x\":1.2300,\"y\":[1,{\"k\":null}]}\n");
        expectSuccess(metadata + " get s", "\"text\"\n");
        expectSuccess(metadata + " get n", "5.0e3\n");
        expectSuccess(metadata + " get .hidden", "12345678901234567890123\n");
        expectSuccess(metadata + " get ../../evil", "[true]\n");
    };
    expectItems();
    const rapidjson::Document list = json(metadata + " --json");
    ASSERT_EQ(list.Size(), 5u);
    EXPECT_STREQ(list[0]["name"].GetString(), "../../evil");
    EXPECT_EQ(list[0]["size"].GetUint(), 6u);

    const std::string out = folder.file("out.json");
    expectSuccess(metadata + " export " + out);
    rapidjson::Document exported;
    ASSERT_FALSE(exported.Parse(read(out).c_str()).HasParseError()) << read(out);
    EXPECT_EQ(exported.MemberCount(), 5u);
    std::filesystem::create_directory(folder.file("items"));
    const std::size_t before = folder.count();
    expectSuccess(metadata + " export " + folder.file("items"));
    EXPECT_EQ(folder.count(), before) << "names lead out of the folder";
    const std::filesystem::directory_iterator files(folder.file("items"));
    EXPECT_EQ(std::distance(files, {}), 5);
    for (const std::string& from : {out, folder.file("items") + "/*"}) {
        expectSuccess(metadata + " remove b s n ../../evil .hidden", "5 items removed.\n");
        EXPECT_EQ(json(metadata + " --json").Size(), 0u);
        const Result import = runShell(QRBTOOL_FILE " " + metadata + " import " + from);
        EXPECT_EQ(import.code, 0) << import.output;
        expectItems();
    }
    EXPECT_EQ(runShell("echo '[7]' | " QRBTOOL_FILE " " + metadata + " set in -").code, 0);
    expectSuccess(metadata + " get in", "[7]\n");

    const std::size_t kept = transactionCount();
    const std::string deep(200000, '[');
    expectFailure(1, metadata + " import " + folder.write("1", "[1]"), "expected to be an object");
    expectFailure(1, metadata + " import " + folder.write("2", "7"), "expected to be an object");
    expectFailure(1, metadata + " import " + folder.write("3", "{\"a\":1"), "Position: 6");
    expectFailure(1, metadata + " import " + folder.write("4", "{\"a\":" + deep),
                  "Failed to parse");
    expectFailure(1, metadata + " import " + folder.file("items"), "Is a directory");
    expectFailure(1, metadata + " export " + out + " nothing", "nothing");
    expectFailure(1, metadata + " get nothing", "no metadata item \"nothing\"");
    expectFailure(1, metadata + " remove b nothing", "nothing");
    expectFailure(1, metadata + " set a '{'", "not valid JSON");
    expectFailure(1, metadata + " set a @" + folder.file("none"), "Failed to open input file!");
    EXPECT_EQ(transactionCount(), kept);
    expectItems();
}

TEST_F(Admin, MetadataIsSignedAndChecked) {
    importPoints(3);
    const std::string metadata = "metadata " + file;
    expectSuccess(metadata + " set a 1");
    expectFailure(1, metadata + " verify a --key 01", "No valid signature");
    expectFailure(1, metadata + " unsign a", "The item is not signed.");
    expectFailure(2, metadata + " sign a", "qrbtool: ");
    expectFailure(2, metadata + " sign a --key xyz", "The key is empty");
    expectSuccess(metadata + " sign a --key '01 02'", "Signature successfully created.\n");
    EXPECT_TRUE(json(metadata + " list --json")[0]["signed"].GetBool());
    expectSuccess(metadata + " verify a --key-file " + folder.write("key", "01\n02\n"));
    expectFailure(1, metadata + " verify a --key 0103", "No valid signature");
    expectFailure(1, metadata + " sign a --key 03", "--overwrite");
    expectSuccess(metadata + " sign a --key 03 --overwrite");
    expectSuccess(metadata + " verify a --key 03");
    expectSuccess(metadata + " set a 2");
    expectFailure(1, metadata + " verify a --key 03", "No valid signature");
    expectSuccess(metadata + " sign a --key 03 --overwrite");
    expectSuccess(metadata + " unsign a", "Signature successfully deleted.\n");
    EXPECT_FALSE(json(metadata + " list --json")[0]["signed"].GetBool());

    const std::string schema = folder.write("s.json", "{\"type\":\"object\",\"required\":[\"q\"]}");
    expectSuccess(metadata + " set b '{\"q\":1}'");
    expectSuccess(metadata + " validate b --schema " + schema, "No problems detected!\n");
    expectFailure(1, metadata + " validate a --schema " + schema, "expected");
    expectFailure(1, metadata + " validate a", "not a default metadata item");
    expectSuccess(metadata + " set tarvo.geo_tag '{}'");
    const Result findings = run(metadata + " validate tarvo.geo_tag --json");
    EXPECT_EQ(findings.code, 1);
    rapidjson::Document problems;
    problems.Parse(findings.output.c_str());
    ASSERT_TRUE(problems.IsArray() && !problems.Empty()) << findings.output;
    EXPECT_NE(std::string(problems[0].GetString()).find("crs"), std::string::npos);
}

TEST_F(Admin, AttributesAreAddedChangedAndRemoved) {
    importPoints(30);
    const std::string attributes = "attributes " + file;
    expectSuccess(attributes + " add tarvo.rgba tarvo.selected", "2 attributes added.\n");
    expectFailure(1, attributes + " add tarvo.nir nonsense", "nonsense");
    expectFailure(1, attributes + " add tarvo.class", "tarvo.class");
    expectFailure(1, attributes + " show tarvo.nir", "tarvo.nir");
    expectSuccess(attributes + " duplicate tarvo.class my.class");
    expectSuccess(attributes + " discard tarvo.class");
    expectSuccess("select --count " + file + " --filter 'tarvo.class == 0'", "30\n");
    expectSuccess("select --count " + file + " --filter 'my.class == 2'", "10\n");
    expectSuccess(attributes + " remove tarvo.class");
    expectFailure(1, attributes + " remove tarvo.class", "tarvo.class");
    expectFailure(1, attributes + " remove tarvo.xyz", "tarvo.xyz");

    std::string definition = run(attributes + " show my.class --json").output;
    const std::string old = "\"maximum_value\":";
    const std::size_t at = definition.find(old) + old.size();
    ASSERT_NE(at, std::string::npos + old.size()) << definition;
    const std::string smaller =
        definition.substr(0, at) + "4" + definition.substr(definition.find(',', at));
    expectSuccess(attributes + " put --json " + folder.write("d.json", smaller));
    EXPECT_EQ(json(attributes + " show my.class --json")["maximum_value"].GetDouble(), 4);
    expectSuccess("select --count " + file + " --filter 'my.class == 2'", "10\n");
    expectFailure(1, "update " + file + " --set my.class=5", "out of the range");
    const std::string renamed = std::string(smaller).replace(smaller.find("my.class"), 8, "other");
    expectSuccess(attributes + " add --json " + folder.write("e.json", renamed));
    expectFailure(1, attributes + " add --json " + folder.write("f.json", "{"), "qrbtool: ");
    expectFailure(1, attributes + " put --json " + folder.write("g.json", definition + "x"),
                  "qrbtool: ");

    const rapidjson::Document list = json(attributes + " --json");
    std::vector<std::string> names;
    for (const auto& one : list.GetArray()) {
        names.emplace_back(one["name"].GetString());
    }
    EXPECT_EQ(names, (std::vector<std::string>{"tarvo.xyz", "tarvo.id", "tarvo.rgba",
                                               "tarvo.selected", "my.class", "other"}));
    EXPECT_EQ(json(attributes + " list 'tarvo.*' --json").Size(), 4u);
    const rapidjson::Document groups = json(attributes + " group --json");
    std::size_t grouped = 0;
    for (const auto& group : groups.GetObject()) {
        grouped += group.value.Size();
    }
    EXPECT_EQ(grouped, names.size());
    EXPECT_STREQ(groups["Coordinates/Vectors"][0].GetString(), "tarvo.xyz");
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
    const std::string tree = run("index " + file).output;
    EXPECT_EQ(static_cast<std::uint64_t>(std::count(tree.begin(), tree.end(), '\n')), nodes + 1);

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
    // The level of each node is that of the tree, whatever was searched before it.
    std::function<void(const rapidjson::Value&, int)> expectLevels = [&](const auto& one,
                                                                         int level) {
        const std::string number = std::to_string(one["id"].GetUint64());
        EXPECT_EQ(
            json("index " + file + " --node " + number + " -a tarvo.id --json")["level"].GetInt(),
            level)
            << number;
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

TEST_F(Admin, TheChangelogIsKeptExportedAndImported) {
    importPoints(3);
    expectSuccess("changelog " + file + " append 'first [#7] line\nsecond line'");
    expectFailure(1, "changelog " + file + " append ' '", "empty");
    const std::string shown = run("changelog " + file).output;
    EXPECT_NE(shown.find("second line"), std::string::npos) << shown;
    const std::string out = folder.file("log.txt");
    expectSuccess("changelog " + file + " export " + out);
    EXPECT_EQ(read(out), shown);
    expectFailure(1, "changelog " + file + " export " + folder.file("no/log.txt"), "no/log.txt");
    expectFailure(1, "changelog " + file + " show --entry 7", "no entry 7");
    expectFailure(1, "changelog " + file + " verify --entry 9 --key 01", "no entry 9");
    const std::string other = folder.file("b.qrbx");
    ASSERT_EQ(run("sample -n 1 " + other).code, 0);
    expectSuccess("changelog " + other + " import " + file);
    const std::string both = run("changelog " + other).output;
    EXPECT_EQ(both.substr(0, shown.size()), shown);
    EXPECT_GT(both.size(), shown.size());
    // Its own entry, not the imported one of the same number.
    EXPECT_NE(run("changelog " + other + " show --entry 2").output.find("Simulated scan"),
              std::string::npos);
    expectFailure(1, "changelog " + other + " import " + out, "log.txt");
}

TEST_F(Admin, SchemasMakeDatabasesThatAgreeWithThem) {
    const rapidjson::Document schemas = json("schema --json");
    EXPECT_EQ(schemas.Size(), 39u);
    const std::string made = folder.file("made");
    for (const auto& schema : schemas.GetArray()) {
        const std::string identifier = schema["identifier"].GetString();
        expectSuccess("schema create " + made + " --overwrite --optionals --schema '" + identifier +
                      "'");
        expectSuccess("validate " + made + " --strict --schema '" + identifier + "'",
                      "No problems detected!\n");
    }
    const std::string cloud = folder.file("a.VTX");
    expectSuccess("schema create " + cloud + " --schema vtx");
    EXPECT_EQ(json("schema show vtx")["attributes"].Size(), 3u);
    EXPECT_EQ(json("attributes " + cloud + " --json").Size(), 2u);
    const Result guessed = run("validate " + cloud);
    EXPECT_EQ(guessed.code, 0);
    EXPECT_NE(guessed.output.find("\"vtx\""), std::string::npos) << guessed.output;
    expectSuccess("attributes " + cloud + " add tarvo.nir");
    expectSuccess("validate " + cloud + " --schema vtx");
    expectFailure(1, "validate " + cloud + " --schema vtx --strict", "tarvo.nir");
    const std::string own =
        folder.write("own.json",
                     "{\"identifier\":\"own\",\"extension\":\"own\",\"attributes\":[\"tarvo.id*\","
                     "\"tarvo.nir\",\"tarvo.rgba\"],\"metadata\":[\"tarvo.device\"]}");
    const std::string optional =
        folder.write("optional.json",
                     "{\"identifier\":\"optional\",\"extension\":\"optional\","
                     "\"attributes\":[],\"metadata\":[\"tarvo.device?\"]}");
    for (const char* option : {"", " --optionals"}) {
        expectSuccess("schema create --overwrite " + made + option + " --schema " + optional);
        EXPECT_EQ(json("metadata " + made + " --json").Size(), *option ? 1u : 0u);
    }
    const Result findings = run("validate " + cloud + " --json --schema " + own);
    EXPECT_EQ(findings.code, 1);
    rapidjson::Document problems;
    problems.Parse(findings.output.c_str());
    ASSERT_TRUE(problems.IsArray()) << findings.output;
    EXPECT_EQ(problems.Size(), 2u) << findings.output;
    EXPECT_EQ(std::count(findings.output.begin(), findings.output.end(), '"'), 8)
        << findings.output;
    importPoints(2);
    std::filesystem::copy_file(file, folder.file("a.unknown"));
    expectFailure(2, "validate " + folder.file("a.unknown"), "--schema");
    expectFailure(1, "validate " + file + " --schema nonsense", "nonsense");
    expectFailure(1, "schema show nonsense", "nonsense");
    expectFailure(1, "schema create " + cloud + " --schema vtx", "--overwrite");
    const std::size_t before = folder.count();
    expectFailure(1,
                  "schema create " + folder.file("new") + " --schema " +
                      folder.write("bad.json", "{\"attributes\":[\"no\"]}"),
                  "qrbtool: ");
    EXPECT_EQ(folder.count(), before + 1) << "a database was left";
}

TEST_F(Admin, ReportsAndDefaultsAreWritten) {
    importPoints(12);
    EXPECT_EQ(json("inspect " + file + " --format json")["points"].GetUint(), 12u);
    EXPECT_NE(run("inspect " + file).output.find("tarvo.class"), std::string::npos);
    for (const std::string format : {"html", "histograms"}) {
        const std::string out = folder.file(format);
        expectSuccess("inspect " + file + " --format " + format + " -o " + out);
        EXPECT_NE(read(out).find("<html"), std::string::npos) << format;
    }
    expectFailure(2, "inspect " + file + " --format pdf", "pdf");
    expectFailure(1, "inspect " + file + " -o " + folder.file("no/out"), "no/out");

    EXPECT_EQ(json("defaults attributes --json").Size(), 247u);
    EXPECT_EQ(json("defaults metadata --json").Size(), 52u);
    const rapidjson::Document xyz = json("defaults attributes tarvo.xyz --json");
    EXPECT_EQ(xyz["resolution"].GetDouble(), 0.00025);
    EXPECT_STREQ(xyz["tags"].GetString(), "position, transform");
    const rapidjson::Document tag = json("defaults metadata tarvo.geo_tag --json");
    EXPECT_TRUE(tag["schema"].IsObject() && tag["example"].IsObject());
    EXPECT_NE(run("defaults attributes tarvo.xyz").output.find("-535000 to 535000 m"),
              std::string::npos);
    expectFailure(1, "defaults attributes Tarvo.xyz", "not a default attribute");
    expectFailure(1, "defaults metadata nothing", "not a default metadata item");
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

TEST_F(Admin, TextsOfFilesDoNotReachTheTerminalUnchecked) {
    importPoints(2);
    const std::string escape = "\x1b[2J\x07\xc2\x9b";
    expectSuccess("transactions run " + file + " --title 'a" + escape + "b' --comment '" + escape +
                  "' -- 'changelog append \"" + escape + "\"'");
    for (const char* command : {"transactions", "info", "changelog"}) {
        const std::string output = run(std::string(command) + " " + file).output;
        EXPECT_EQ(output.find_first_of("\x1b\x07"), std::string::npos) << command;
        EXPECT_EQ(output.find("\xc2\x9b"), std::string::npos) << command;
    }
    EXPECT_EQ(run("transactions " + file + " show").output.find('\x1b'), std::string::npos);
    EXPECT_EQ(json("transactions " + file + " show --json")["title"].GetString(),
              "a" + escape + "b");
}

}  // namespace
