// What goes with the points: metadata, attributes and the changelog, as a user and a script change
// them.
#include "core/utf8.h"
#include "tests/cli/admin.h"

#include <vector>

namespace {

using namespace tarvo::cli::tests;

TEST_F(Admin, MetadataGoesRoundThroughFiles) {
    importPoints(3);
    const std::string metadata = "metadata " + file;
    const std::string items =
        "{\"b\": {\"x\": 1.2300, \"y\": [1, {\"k\": null}]}, \"s\": \"text\", \"n\": 5.0e3,"
        "\"../../evil\": [true]}";
    expectSuccess(metadata + " set s 1");
    expectSuccess(
        metadata + " import " + folder.write("in.json", items),
        "Items added   b\nItems updated s\nSkipped       n (number), ../../evil (array)\n");
    expectSuccess(metadata + " set n 5.0e3");
    expectSuccess(metadata + " set ../../evil [true]");
    expectSuccess(metadata + " set .hidden 12345678901234567890123");
    const auto expectItems = [&] {
        expectSuccess(metadata + " get b", "{\"x\":1.2300,\"y\":[1,{\"k\":null}]}\n");
        expectSuccess(metadata + " get s", "text\n");
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
    expectSuccess(metadata + " set a/b 1");
    expectSuccess(metadata + " set a%2Fb 2");
    std::filesystem::create_directory(folder.file("alike"));
    expectSuccess(metadata + " export " + folder.file("alike") + " a/b a%2Fb");
    const std::filesystem::directory_iterator alike(folder.file("alike"));
    EXPECT_EQ(std::distance(alike, {}), 2) << "one was written over the other";
    EXPECT_EQ(runShell("echo '[7]' | " QRBTOOL_FILE " " + metadata + " set in -").code, 0);
    expectSuccess(metadata + " get in", "[7]\n");

    const std::size_t kept = transactionCount();
    const std::string deep(200000, '[');
    expectFailure(1, metadata + " import " + folder.write("1", "[1]"), "expected to be an object");
    expectFailure(
        1, metadata + " import " + folder.write("0", "{\"fresh\":{}}") + " " + folder.file("1"),
        "expected to be an object");
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
    expectFailure(2, metadata + " sign a --key xyz", "no text of hexadecimal digits");
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
    // No answer about the item.
    const Result broken =
        run(metadata + " validate b --json --schema " + folder.write("t.json", "{\"type\":5}"));
    EXPECT_EQ(broken.code, 1);
    EXPECT_EQ(broken.output.rfind("{\"error\":{\"text\":\"The JSON schema", 0), 0u)
        << broken.output;
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
    expectFailure(2, attributes + " add", "required");
    expectFailure(2, attributes + " add tarvo.nir --json " + folder.write("nir.json", "{}"), "1");
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
    expectFailure(
        1,
        attributes + " add --json " +
            folder.write("l.json", R"({"name": "own.l", "title": "l", "length": 100000})"),
        "qrbtool: The library may refuse this: ");
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
    // By rank, whatever came first.
    expectSuccess(attributes + " add tarvo.target_count tarvo.class");
    expectFailure(0, attributes + " group",
                  "\nPrimary Attributes\n  tarvo.class\n  tarvo.rgba\n  tarvo.target_count\n");
    EXPECT_STREQ(json(attributes + " group --json")["Primary Attributes"][0].GetString(),
                 "tarvo.class");
}

// Who narrows a range loses values only by saying so.
// Beyond 2^53, where two of them are one as doubles.
TEST_F(Admin, ARedefinitionTellsOfWholeNumbersThatBecomeOthers) {
    const std::string points = folder.write("large.csv",
                                            "x,y,z,own.n\n0,0,0,9007199254740992\n"
                                            "1,0,0,9007199254740993\n2,0,0,9007199254740995\n");
    const std::string large = folder.file("large.qrbx");
    expectSuccess("import " + points + " " + large);
    std::string definition = run("attributes " + large + " show own.n --json").output;
    const std::size_t at = definition.find("\"resolution\":") + 13;
    definition.replace(at, definition.find(',', at) - at, "0");
    const std::string put =
        "attributes " + large + " put --json " + folder.write("n.json", definition);
    const std::string told = "2 values of \"own.n\" would be rounded to floating-point numbers.\n";
    expectFailure(1, put, told);
    expectSuccess(put + " --dry-run", told);
    expectSuccess("select " + large + " -a own.n --format csv",
                  "own.n\n9007199254740992\n9007199254740993\n9007199254740995\n");
    expectSuccess(put + " --convert", "The attribute \"own.n\" is defined; 2 values changed.\n");
    expectFailure(0, "changelog " + large, "Attribute \"own.n\": redefined, 2 values changed\n");
}

TEST_F(Admin, ARedefinitionChangesValuesOnlyWhenToldTo) {
    importPoints(30);  // ten of each class 0, 1 and 2
    const std::string attributes = "attributes " + file;
    const auto defined = [&](const char* maximum) {
        std::string definition = run(attributes + " show tarvo.class --json").output;
        const std::size_t at = definition.find("\"maximum_value\":") + 16;
        definition.replace(at, definition.find(',', at) - at, maximum);
        return folder.write(std::string("max") + maximum + ".json", definition);
    };
    const auto expectSaid = [](const std::string& words, const std::string& text) {
        expectFailure(0, words, text);
    };
    const std::string told =
        "10 values of \"tarvo.class\" lie outside 0 to 1 and would become the default value 0.";
    const std::string before = read(file);
    const std::string narrow = defined("1");
    const std::string put = attributes + " put --json " + narrow;
    expectFailure(1, put, told + "\n    Give --convert to do it.\n");
    expectSaid(put + " --dry-run", told + "\n");
    expectSaid(put + " --dry-run", "qrbtool: Note: 2 is out of the range.");  // a named value
    expectFailure(2, put + " --dry-run --convert", "--convert");
    EXPECT_TRUE(read(file) == before);
    const std::string within = "transactions run " + file + " --title t -- ";
    expectFailure(
        1,
        within + "\"remove --filter 'tarvo.class == 0'\" \"attributes put --json " + narrow + "\"",
        told);
    expectSuccess("select --count " + file, "30\n");
    // Told of the points that the transaction has by then.
    expectSuccess(within +
                  "\"update --set tarvo.class=2 --filter 'tarvo.class == 1'\" "
                  "\"attributes put --convert --json " +
                  narrow + "\"");
    expectSaid("changelog " + file, "Attribute \"tarvo.class\": redefined, 20 values changed\n");
    expectSuccess("select --count " + file + " --filter 'tarvo.class == 0'", "30\n");
    // Nothing is asked where all values are kept.
    const std::string wide = defined("300");
    expectSuccess(attributes + " put --dry-run --json " + wide,
                  "No value of \"tarvo.class\" would change.\n");
    expectSuccess(attributes + " put --json " + wide,
                  "The attribute \"tarvo.class\" is defined.\n");
    expectSuccess("update " + file + " --set tarvo.class=300");
    expectSaid(put + " --convert",
               "The attribute \"tarvo.class\" is defined; 30 values changed.\n");
}

TEST_F(Admin, TextsThatAreNoUtf8AreRefusedAndThoseOfOldFilesShownAndCopied) {
    importPoints(3);
    const std::string before = read(file);
    const std::string within = "transactions run " + file;
    std::string definition = run("attributes " + file + " show tarvo.class --json").output;
    const std::size_t title = definition.find("\"title\":\"") + 9;
    definition.insert(title, "\xf6");
    for (const std::string& words :
         {"metadata " + file + " set a @" + folder.write("a", "{\"a\": \"\xff\"}"),
          "metadata " + file + " set --text a 'gr\xf6n'", "metadata " + file + " set 'h\xf6he' 1",
          "attributes " + file + " put --json " + folder.write("c", definition),
          "changelog " + file + " append 'l\xf6g'",
          within + " --title '\xf6' -- 'metadata set a 1'",
          within + " --title t --comment '\xf6' -- 'metadata set a 1'"}) {
        expectFailure(1, words, " is not a UTF-8 text.\n    Its byte number ");
    }
    EXPECT_TRUE(read(file) == before);
    expectSuccess("import " + folder.write("p\xf6.csv", "x,y,z\n1,2,3\n") + " " +
                  folder.file("p.qrbx"));

    const std::string old = folder.file("old.qrbx"), copy = folder.file("copy.qrbx");
    std::filesystem::copy_file(QRB_GOLDEN "/latin1.qrbx", old);
    for (const char* command :
         {"info", "metadata", "attributes", "attributes group", "changelog", "transactions",
          "transactions show", "inspect", "inspect --format html", "check", "select"}) {
        std::string words = command;
        words.insert(std::min(words.find(' '), words.size()), " " + old);
        const Result result = run(words);
        EXPECT_EQ(result.code, 0) << words << "\n" << result.output;
        if (words.starts_with("inspect")) {
            EXPECT_TRUE(tarvo::core::isUtf8(result.output)) << words;
        }
    }
    expectFailure(1, "validate " + old + " --strict --schema vtx", "\"own.bytes\"");
    expectSuccess("metadata " + old + " get own.bytes", "{\"a\": \"\xff\"}\n");
    expectSuccess("metadata " + old + " get 'h\xf6he'", "gr\xf6n\n");
    expectSuccess("copy " + old + " " + copy + " --changelog",
                  "2 points copied to \"" + copy + "\".\n");
    expectSuccess("metadata " + copy + " get own.bytes", "{\"a\": \"ÿ\"}\n");
    expectSuccess("metadata " + copy + " get höhe", "grön\n");
    EXPECT_STREQ(json("attributes " + copy + " show own.height --json")["title"].GetString(),
                 "Höhe");
    EXPECT_STREQ(json("attributes " + copy + " show tarvo.xyz --json")["title"].GetString(),
                 "Löge");
    expectSuccess("metadata " + old + " verify 'h\xf6he' --key 00ff17",
                  "Signature successfully verified.\n");
    expectSuccess("metadata " + old + " remove 'h\xf6he'");
    for (const std::string& name : {old, copy}) {
        const std::string log = run("changelog " + name).output;
        const std::string own = log.substr(name == old ? log.rfind("[#") : 0);
        EXPECT_TRUE(tarvo::core::isUtf8(own)) << own;
    }
}

TEST_F(Admin, ADryRunIsRefusedWhereTheRedefinitionIs) {
    importPoints(30);
    const std::string put = "attributes " + file + " put ";
    const std::string before = read(file);
    const auto defined = [&](const std::string& name, const std::string& member,
                             const char* value) {
        std::string definition = run("attributes " + file + " show " + name + " --json").output;
        const std::size_t at = definition.find("\"" + member + "\":") + member.size() + 3;
        definition.replace(at, definition.find_first_of(",}", at) - at, value);
        return "--json " + folder.write("d.json", definition);
    };
    for (const auto& [name, member, value, words] :
         {std::tuple{"tarvo.class", "length", "100000", "its length is 100000"},
          {"tarvo.class", "storage_class", "9", "its storage class is 9"},
          {"tarvo.class", "lod_settings", "\"bogus\"", "bogus"},
          {"tarvo.xyz", "maximum_value", "5", "can't be given other values"},
          {"tarvo.id", "maximum_value", "15", "can't be given other values"}}) {
        const std::string definition = defined(name, member, value);
        const Result refused = run(put + definition);
        EXPECT_EQ(refused.code, 1);
        EXPECT_NE(refused.output.find(words), std::string::npos) << refused.output;
        for (const char* form : {" --dry-run", " --convert"}) {
            const Result result = run(put + definition + form);
            EXPECT_EQ(result.code, 1) << name << " " << member << form;
            EXPECT_EQ(result.output, refused.output) << name << " " << member << form;
        }
    }
    // Among the commands of a transaction it is neither committed nor takes anything back.
    const std::string narrow = defined("tarvo.class", "maximum_value", "1");
    const std::string within = "transactions run " + file + " --title t -- ";
    const std::string dry = "'attributes put --dry-run " + narrow + "'";
    const Result alone = run(within + dry + " 'attributes show tarvo.class --json'");
    EXPECT_EQ(alone.code, 0);
    EXPECT_NE(alone.output.find("10 values of"), std::string::npos) << alone.output;
    EXPECT_NE(alone.output.find("\nNothing is changed, and no transaction committed.\n"),
              std::string::npos)
        << alone.output;
    EXPECT_EQ(alone.output.find("\"maximum_value\":1,"), std::string::npos) << alone.output;
    expectFailure(1, within + "'metadata set a 1' " + dry, "can't follow changes");
    EXPECT_TRUE(read(file) == before);
    const Result later = run(within + dry + " 'metadata set a 1'");
    EXPECT_NE(later.output.find("\nTransaction 3 is committed.\n"), std::string::npos)
        << later.output;
    expectPoints();
    EXPECT_STREQ(json("transactions " + file + " show --json")["title"].GetString(), "t");
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
    std::filesystem::create_directory(folder.file("tmp"));
    runShell("TMPDIR=" + folder.file("tmp") + " " QRBTOOL_FILE " changelog " + other);
    EXPECT_TRUE(std::filesystem::is_empty(folder.file("tmp")));
    // Its own entry, not the imported one of the same number.
    for (const auto& [entry, title, hint] : {std::tuple("2", "Simulated scan", true),
                                             {"2/1", "Import", false},
                                             {"2/2", "Simulated scan", false}}) {
        const std::string told =
            run("changelog " + other + " show --entry " + std::string(entry)).output;
        EXPECT_NE(told.find(title), std::string::npos) << entry << told;
        EXPECT_EQ(told.find("has 2 entries 2, others") != std::string::npos, hint) << entry << told;
    }
    expectFailure(1, "changelog " + other + " show --entry 2/3", "has 2 entries 2 only");
    expectFailure(1, "changelog " + other + " import " + out, "log.txt");
}

}  // namespace
