// The commands that look after databases, as a user and a script run them.
#include "tests/cli/admin.h"

#include <vector>

namespace {

using namespace tarvo::cli::tests;

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
    const Result vacuum = run("vacuum --bytes " + file);
    EXPECT_EQ(vacuum.code, 0);
    EXPECT_EQ(vacuum.output, std::to_string(size - std::filesystem::file_size(file)) +
                                 " bytes given back, the file has " +
                                 std::to_string(std::filesystem::file_size(file)) + " bytes.\n");
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
    // One behind the other, with the name in front, too.
    expectSuccess("transactions " + file +
                      " run --title U -- 'metadata set n 1' 'metadata get n' 'metadata set n 2'",
                  "1\nTransaction 5 is committed.\n");
    expectSuccess("metadata " + file + " get n", "2\n");
    // What is recorded can be run again.
    expectSuccess(begin + R"('metadata set --text "a \"b\" c" ""')");
    EXPECT_STREQ(json("transactions " + file + " show --json")["settings"].GetString(),
                 R"({"commands":["metadata set --text 'a \"b\" c' ''"]})");
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
    // The current one need not be the last.
    const std::string older = folder.file("older.qrbx");
    std::filesystem::copy_file(file, older);
    expectSuccess("transactions " + older + " restore 3");
    EXPECT_EQ(json("transactions " + older + " show --json")["id"].GetUint(), 3u);
    const std::string others = run("transactions " + older + " size 2 4").output;
    expectSuccess("finalize " + older, "2 transactions forgotten, about " +
                                           others.substr(0, others.size() - 1) +
                                           " for vacuum to give back.\n");
    const std::string size = run("transactions " + file + " size 2 3").output;
    EXPECT_GT(std::stoul(size), 0u);
    expectSuccess("transactions " + file + " discard 2 3", "2 transactions forgotten, about " +
                                                               size.substr(0, size.size() - 1) +
                                                               " for vacuum to give back.\n");
    EXPECT_EQ(transactionCount(), 2u);
    expectFailure(1, "transactions " + file + " discard 1", "first");
    expectFailure(1, "transactions " + file + " discard 4", "4");
    expectFailure(1, "transactions " + file + " show 3", "no transaction 3");
    expectFailure(2, "transactions " + file + " restore", "required");
    expectFailure(2, "transactions " + file + " discard x", "qrbtool: ");
}

TEST_F(Admin, TransactionsRecordWhatWasAskedFor) {
    const std::string table =
        folder.write("new.csv", "tarvo.id,x,y,z,tarvo.class,q\n7,1.004,2,3,1,9\n");
    const std::string values = folder.write("values.csv", "tarvo.id,tarvo.class\n1,5\n");
    const std::string items = folder.write("items.json", R"({"own.b": {}})");
    const std::string other = folder.file("other.qrbx");
    struct Record {
        std::string words, title, settings = {}, comments = {};
    };
    const Record records[] = {
        {"import " + table + " % --new-ids --crs-as-is --leave-out csv.q --title T --comment C",
         "T",
         R"({"command":"import","inputs":["new.csv"],"primary":"tarvo.xyz","new_ids":true,)"
         R"("crs_as_is":true,"left_out":["csv.q"]})",
         "C"},
        {"import " + table + " % --append --round --only-known --new-ids", "Import",
         R"({"command":"import","inputs":["new.csv"],"append":true,"round":true,)"
         R"("only_known":true,"new_ids":true})"},
        {"attributes % add tarvo.selected", "Add attributes"},
        {"attributes % duplicate tarvo.class my.class", "Duplicate attribute tarvo.class"},
        {"attributes % discard my.class", "Discard the values of attribute my.class"},
        {"attributes % remove my.class", "Remove attributes"},
        {"update % --set tarvo.class=2.4 --set tarvo.selected=1 -f 'tarvo.id > 0' --nodes 1 "
         "--round",
         "Update points",
         R"({"command":"update","set":["tarvo.class=2.4","tarvo.selected=1"],)"
         R"("filter":"tarvo.id > 0","nodes":"1","round":true})"},
        {"update % --invert tarvo.selected", "Update points",
         R"({"command":"update","invert":"tarvo.selected"})"},
        {"update % --from " + values, "Update points",
         R"({"command":"update","from":"values.csv"})"},
        {"remove % --filter 'tarvo.id == 99'", "Remove points",
         R"({"command":"remove","filter":"tarvo.id == 99"})"},
        {"remove % --ids 98-99", "Remove points", R"({"command":"remove","ids":"98-99"})"},
        {"remove % --all", "Remove points", R"({"command":"remove","ids":"all"})"},
        {"metadata % set own.a 1", "Set metadata item own.a"},
        {"metadata % sign own.a --key 01", "Sign metadata item own.a"},
        {"metadata % unsign own.a", "Remove the signature of metadata item own.a"},
        {"metadata % remove own.a", "Remove metadata"},
        {"metadata % import " + items, "Import metadata"},
        {"lod % set --mode combine --size 3", "Update LOD", R"({"lodMode":2,"chunkSizeLOD":3})",
         "LOD mode: 2\nLOD size: 3"},
        {"changelog % append text", "Append to the changelog"},
    };
    const auto expectRecord = [](const std::string& name, const Record& one) {
        const rapidjson::Document last = json("transactions " + name + " show --json");
        EXPECT_EQ(last["title"].GetString(), one.title) << one.words;
        EXPECT_EQ(last["settings"].GetString(), one.settings) << one.words;
        EXPECT_EQ(last["comments"].GetString(), one.comments) << one.words;
    };
    for (const Record& one : records) {
        std::string words = one.words;
        expectSuccess(words.replace(words.find('%'), 1, file));
        expectRecord(file, one);
    }
    EXPECT_EQ(transactionCount(), std::size(records) + 1);
    const std::string simulated =
        "Simulated: no instrument measured it, as tarvo.pointcloud_info tells.";
    const Record made[] = {
        {"copy " + file + " % -f 'tarvo.id > 0' --nodes 1", "Export",
         R"({"command":"copy","source":"a.qrbx","filter":"tarvo.id > 0","nodes":"1"})"},
        {"sample % --overwrite -n 5 --seed 7", "Simulated scan",
         R"({"command":"sample","points":5,"seed":7})", simulated},
        {"sample % --overwrite", "Simulated scan",
         R"({"command":"sample","points":100000,"seed":1})", simulated}};
    for (const Record& one : made) {
        std::string words = one.words;
        expectSuccess(words.replace(words.find('%'), 1, other));
        expectRecord(other, one);
    }
    expectSuccess("changelog " + file + " import " + other,
                  "The changelog of \"" + other + "\" stands before this one.\n");
    EXPECT_STREQ(json("transactions " + file + " show --json")["title"].GetString(),
                 "Import a changelog");
}

TEST_F(Admin, SchemasMakeDatabasesThatAgreeWithThem) {
    const rapidjson::Document schemas = json("schema --json");
    EXPECT_EQ(schemas.Size(), 39u);
    std::vector<Cells> listed{{"Identifier", "Extension"}};
    for (const auto& schema : schemas.GetArray()) {
        listed.push_back({schema["identifier"].GetString(), schema["extension"].GetString()});
    }
    EXPECT_EQ(rowsOf(run("schema").output), listed);
    const std::string made = folder.file("made");
    for (const auto& schema : schemas.GetArray()) {
        const std::string identifier = schema["identifier"].GetString();
        expectSuccess("schema create " + made + " --overwrite --optionals --schema '" + identifier +
                      "'");
        // Behind what it tells of placeholders.
        const Result validated =
            run("validate " + made + " --strict --schema '" + identifier + "'");
        EXPECT_EQ(validated.code, 0);
        EXPECT_TRUE(validated.output.ends_with("No problems detected!\n")) << validated.output;
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
    expectFailure(1, "validate " + cloud + " --strict", "tarvo.nir");
    const std::string set = folder.file("set.vtx");
    expectSuccess("schema create " + set + " --schema vtx --optionals --settings " +
                  folder.write("set.json", "{\"chunk_size\": 77}"));
    EXPECT_EQ(json("attributes " + set + " --json").Size(), 3u);
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
    for (const std::string format : {"text", "json", "html", "histograms"})
        EXPECT_TRUE(run("inspect " + file + " --format " + format).output.ends_with('\n'))
            << format;
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
    EXPECT_TRUE(tag["schema"] != tag["example"]);
    EXPECT_TRUE(tag["neutral"].IsObject() && tag["neutral"] != tag["example"]);
    const std::string shown = run("defaults metadata tarvo.geo_tag").output;
    for (const auto& [label, member] : {std::pair("\nSchema        ", "schema"),
                                        {"\nExample       ", "example"},
                                        {"\nNeutral       ", "neutral"}}) {
        const std::size_t at = shown.find(label);
        ASSERT_NE(at, std::string::npos) << label << shown;
        rapidjson::Document value;
        value.Parse<rapidjson::kParseStopWhenDoneFlag>(shown.c_str() + at + 15);
        EXPECT_FALSE(value.HasParseError()) << label;
        EXPECT_TRUE(value == tag[member]) << label << shown;
    }
    EXPECT_FALSE(json("defaults metadata tarvo.atmosphere --json").HasMember("neutral"));
    EXPECT_EQ(json("defaults versions --json").Size(), 4u);
    const std::string versions = run("defaults versions").output;
    EXPECT_NE(versions.find("Attribute groups  1.1.54    2023-01-19\n"), std::string::npos)
        << versions;
    EXPECT_NE(run("defaults attributes tarvo.target_index").output.find("Invalid       0\n"),
              std::string::npos);
    EXPECT_NE(run("defaults attributes tarvo.xyz").output.find("-535000 to 535000 m"),
              std::string::npos);
    expectFailure(1, "defaults attributes Tarvo.xyz", "not a default attribute");
    expectFailure(1, "defaults metadata nothing", "not a default metadata item");
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
    // A name of its own must neither look like a line of the answer nor turn its direction.
    expectSuccess("metadata " + file +
                  R"( set tarvo.geo_tag '{"crs":{"name":"Zone\nPoints        0\u202e"}}')");
    const std::string told = run("info " + file).output;
    EXPECT_NE(told.find("Coordinates   Zone Points        0?\n"), std::string::npos) << told;
    const Result missing = run("info '" + folder.file("a\x1b[2J\nb\u2066") + "'");
    EXPECT_NE(missing.output.find("a?[2J b?"), std::string::npos) << missing.output;
}

}  // namespace
