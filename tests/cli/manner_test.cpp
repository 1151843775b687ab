// How the program is asked for help, what it says of mistakes, and how it speaks.
#include "core/suggestion.h"
#include "tests/cli/commandtest.h"

namespace {

using namespace tarvo::cli;
namespace core = tarvo::core;
using namespace tarvo::cli::tests;

class Manners : public CommandTest {
protected:
    void SetUp() override { ASSERT_EQ(run("sample -n 100 " + file).code, 0); }
    // What goes to standard output alone, or to standard error.
    static Result outputOf(const std::string& words) {
        return runShell(QRBTOOL_FILE " " + words + " 2>/dev/null");
    }
    static Result errorsOf(const std::string& words) {
        return runShell("{ " QRBTOOL_FILE " " + words + " 2>&3 >/dev/null; } 3>&1");
    }
    static rapidjson::Document parsed(const std::string& text) {
        rapidjson::Document document;
        document.Parse(text.c_str());
        EXPECT_FALSE(document.HasParseError()) << text;
        return document;
    }
};

TEST(Suggestion, NamesAreNearByTheirLetters) {
    const std::vector<std::string> names{"select", "sample", "split", "metadata", "tarvo.class"};
    using Names = std::vector<std::string>;
    EXPECT_EQ(core::nearest("slect", names), Names{"select"});
    EXPECT_EQ(core::nearest("SELECT", names), Names{"select"});
    EXPECT_EQ(core::nearest("sapmle", names), Names{"sample"});
    EXPECT_EQ(core::nearest("meta", names), Names{"metadata"});
    EXPECT_EQ(core::nearest("tarvo.klas", names), Names{"tarvo.class"});
    EXPECT_EQ(core::nearest("selct", {"select", "select"}), Names{"select"});
    for (const std::string& word :
         {std::string(), std::string("x"), std::string("inspect2000"), std::string("slip"),
          std::string(1'000'000, 's'), std::string("\xff\x80")})
        EXPECT_TRUE(core::nearest(word, names).empty()) << word.substr(0, 20);
    EXPECT_EQ(core::didYouMean({"a", "b", "c"}), "Did you mean \"a\", \"b\" or \"c\"?");
    EXPECT_EQ(core::didYouMean({}), "");
}

TEST_F(Manners, HelpIsGivenWhereItIsAskedFor) {
    const std::string all = expectSuccess("help");
    EXPECT_EQ(all, run("--help").output);
    EXPECT_EQ(expectSuccess("help metadata sign"), run("metadata sign --help").output);
    EXPECT_NE(expectSuccess("help metadata sign").find("qrbtool metadata FILE sign"),
              std::string::npos);
    EXPECT_NE(expectSuccess("help info").find("--quiet"), std::string::npos);
    // Without a command there is no answer, and the help is no answer to a pipe.
    EXPECT_EQ(errorsOf("").output, all);
    EXPECT_EQ(outputOf("").output, "");
    EXPECT_EQ(run("").code, 2);
    EXPECT_EQ(run("-v").code, 2);
}

TEST_F(Manners, WhatIsMistypedIsRecognised) {
    expectFailure(2, "slect " + file,
                  "There is no command \"slect\".\n    Did you mean \"select\"?");
    expectFailure(2, "help slect", "Did you mean \"select\"?");
    expectFailure(2, "sign " + file, "Did you mean \"metadata sign\"?");
    expectFailure(2, "metadata " + file + " gte a",
                  "has no subcommand \"gte\".\n    Did you mean \"get\"");
    for (const auto& [command, wrong] : {std::pair{"metadata", "lst"},
                                         {"attributes", "lst"},
                                         {"changelog", "shw"},
                                         {"transactions", "shw"},
                                         {"lod", "shw"}})
        for (const std::string& words : {std::string(), " " + file, " " + file + " more"})
            expectFailure(2, command + (" " + std::string(wrong)) + words,
                          std::string(command) + "\" has no subcommand \"" + wrong + "\".");
    expectFailure(2, "transactions shw " + file, "Did you mean \"show\"?");
    expectFailure(1, "metadata lst.qrbx", "lst.qrbx");
    expectFailure(2, "info " + file + " --jsn",
                  "has no option \"--jsn\".\n    Did you mean \"--json\"");
    expectFailure(2, "plugin", "It is one of list, describe, run.");
    expectFailure(2, "select " + file + " more", "The word \"more\" is one too many");
    expectFailure(2, "-q -v info " + file, "excludes");
    // Keys stay hidden.
    const Result key = run("metadata " + file + " sign a --kye=c0ffee");
    EXPECT_NE(key.output.find("Did you mean \"--key\""), std::string::npos) << key.output;
    EXPECT_EQ(key.output.find("c0ffee"), std::string::npos);
}

TEST_F(Manners, DatabasesAreNamedBeforeSubcommandsOrBehindThem) {
    for (const auto& [command, words] : {std::pair{"metadata", "get tarvo.time_base"},
                                         {"metadata", "list"},
                                         {"attributes", "list"},
                                         {"attributes", "list tarvo.c*"},
                                         {"attributes", "show tarvo.class --json"},
                                         {"transactions", "show 1"},
                                         {"transactions", "--cache 64M list"},
                                         {"changelog", "show --entry 1"},
                                         {"lod", "show"}}) {
        const std::string all = words;
        const std::size_t end =
            all.starts_with("--") ? all.size() : std::min(all.find(' '), all.size());
        const std::string front = std::string(command) + " ";
        EXPECT_EQ(expectSuccess(front + all.substr(0, end) + " " + file + all.substr(end)),
                  expectSuccess(front + file + " " + all))
            << all;
    }
    expectFailure(2, "attributes show " + file, "name is required");
    // A step of a transaction names none.
    expectSuccess(
        "transactions run " + file +
        " --title t \"metadata set tarvo.geo_tag '{}'\" \"attributes add tarvo.selected\"");
}

TEST_F(Manners, NotesAreLeftOutOrMoreWhereverThatIsSaid) {
    const std::string table = folder.write("a.csv", "x,y,z\n1,2,3\n");
    const std::string made = folder.file("b.qrbx");
    EXPECT_NE(run("import " + table + " " + made).output, "");
    for (const char* const words : {"-q import --overwrite ", "import --overwrite --quiet "})
        EXPECT_EQ(run(words + table + " " + made).output, "") << words;
    EXPECT_EQ(run("import --overwrite " + table + " " + made + " -q").output, "");
    expectFailure(1, "-q info " + folder.file("none"), "does not exist");
    for (const std::string words :
         {"-v select --count " + file, "select --count " + file + " -v"}) {
        EXPECT_NE(errorsOf(words).output.find("Opening " + file + ": "), std::string::npos);
        EXPECT_EQ(outputOf(words).output, "100\n");
    }
}

TEST_F(Manners, JsonIsAllThatProgramsGet) {
    const std::string sample = folder.file("c.qrbx");
    for (const std::string& words :
         {"info " + file,
          "inspect " + file,
          "select --limit 3 " + file,
          "select -c " + file,
          "copy " + file + " " + sample,
          "attributes " + file + " add tarvo.rgba",
          "attributes " + file + " duplicate tarvo.class own.class",
          "attributes " + file + " discard own.class",
          "attributes " + file + " remove own.class",
          "metadata " + file + " get tarvo.time_base",
          "metadata " + file + " sign tarvo.time_base --key aa",
          "metadata " + file + " verify tarvo.time_base --key aa",
          "metadata " + file + " remove tarvo.time_base",
          "changelog " + file,
          "changelog " + file + " export -",
          "update " + file + " --set tarvo.class=2",
          "export " + file + " " + folder.file("a.ply"),
          "transactions " + file + " size 1",
          "transactions " + file + " restore 2",
          "transactions " + file + " discard 3 4",
          "finalize " + file,
          "vacuum " + file,
          "check " + file,
          "merge " + file + " " + sample + " " + folder.file("d.qrbx"),
          "split " + sample + " " + folder.file("parts") + " --by tarvo.class",
          std::string("help"),
          std::string("--version"),
          "schema create " + folder.file("e.sdcx") + " --schema sdcx"}) {
        const Result result = outputOf("--json " + words);
        EXPECT_EQ(result.code, 0) << words << run("--json " + words).output;
        (void)parsed(result.output);
    }
    EXPECT_EQ(parsed(outputOf("select --json --limit 3 " + sample).output).Size(), 3u);
    EXPECT_EQ(outputOf("select --json --limit 0 " + sample).output, "[\n]\n");
    const auto sampled =
        parsed(outputOf("sample --json " + folder.file("f.qrbx") + " -n 1").output);
    EXPECT_EQ(sampled["points"].GetUint64(), 1u);
    // An option that has this name already keeps it.
    const std::string definition = folder.write(
        "d.json", outputOf("attributes " + sample + " show tarvo.class --json").output);
    expectSuccess("attributes " + sample + " put --json " + definition,
                  "The attribute \"tarvo.class\" is defined.\n");
    EXPECT_TRUE(parsed(outputOf("--json attributes " + sample + " put --json " + definition).output)
                    .HasMember("values_changed"));
}

TEST_F(Manners, FailuresAreALineOfJson) {
    const Result missing = errorsOf("info --json " + folder.file("none"));
    EXPECT_EQ(missing.code, 1);
    EXPECT_EQ(std::count(missing.output.begin(), missing.output.end(), '\n'), 1);
    EXPECT_EQ(parsed(missing.output)["error"]["code"].GetInt(), 4);
    for (const std::string& words :
         {std::string("--json slect"), std::string("--json"),
          "select --json " + file + " --limit x", "select " + file + " --format csv --json",
          "select " + file + " --limit --json"}) {
        EXPECT_EQ(outputOf(words).output, "") << words;
        const Result result = errorsOf(words);
        EXPECT_EQ(result.code, 2) << words;
        EXPECT_FALSE(parsed(result.output)["error"].HasMember("code"));
    }
    EXPECT_EQ(run("attributes " + file + " put --json").output.rfind("qrbtool: ", 0), 0u);
    const Result hostile = errorsOf("--json info $'\\xff\\n\"'");
    (void)parsed(hostile.output);
}

TEST_F(Manners, StepsOfATransactionAnswerInAnArray) {
    const std::string begin = "transactions run " + file + " --json --title t -- ";
    rapidjson::Document answer =
        parsed(outputOf(begin + "'select --count' 'update --set tarvo.class=2' 'select --limit 2'")
                   .output);
    EXPECT_EQ(answer["answers"].Size(), 3u);
    EXPECT_EQ(answer["answers"][2].Size(), 2u);
    EXPECT_EQ(answer["transaction"].GetUint(), 3u);
    const Result broken = outputOf(begin + "'select --count' 'update --set tarvo.class=x'");
    EXPECT_EQ(broken.code, 2);
    EXPECT_EQ(parsed(broken.output)["answers"].Size(), 1u);
}

TEST_F(Manners, PatternsNameAttributesInTheOrderOfTheFile) {
    const auto columns = [&](const std::string& names) {
        const std::string text =
            run("select " + file + " --limit 1 --format csv -a " + names).output;
        return text.substr(0, text.find('\n'));
    };
    EXPECT_EQ(columns("'tarvo.target_*'"), "tarvo.target_index,tarvo.target_count");
    EXPECT_EQ(columns("'tarvo.xy?[1],tarvo.i?,tarvo.*d'"), "tarvo.xyz[1],tarvo.id");
    EXPECT_EQ(columns("'tarvo.id,*.id,tarvo.id'"), "tarvo.id,tarvo.id");
    expectFailure(1, "select " + file + " -a 'tavro.cl*'",
                  "No attribute matches \"tavro.cl*\".\n    Did you mean \"tarvo.class\"");
    expectFailure(1, "export " + file + " " + folder.file("a.csv") + " -a tarvo.clas",
                  "Did you mean \"tarvo.class\"");
    expectFailure(1, "select " + file + " -a '#*'", "No attribute matches");
    expectSuccess("diff " + file + " " + file + " -a 'tarvo.t*'");
    expectFailure(2, "diff " + file + " " + file + " -a 'x*'", "No attribute matches");
}

TEST_F(Manners, SeveralDatabasesAreToldAndTheBrokenOneNamed) {
    const std::string all = "info " + file + " " + folder.file("none") + " " + file;
    const Result result = outputOf("--json " + all);
    EXPECT_EQ(result.code, 1);
    EXPECT_EQ(parsed(result.output).Size(), 2u);
    expectFailure(1, all, "none\" does not exist.");
    EXPECT_TRUE(json("info --json " + file).IsObject());
}

TEST_F(Manners, SizesAreForPeopleOrExact) {
    EXPECT_NE(run("info " + file).output.find(" KB\n"), std::string::npos);
    const auto size = std::filesystem::file_size(file);
    EXPECT_NE(run("info --bytes " + file).output.find(std::to_string(size) + " bytes\n"),
              std::string::npos);
    for (const char* const cache : {"1M", "65536", "1.5GB", "0"})
        expectSuccess("select --count " + file + " --cache " + cache, "100\n");
    expectFailure(2, "info " + file + " --cache 64Q", "\"64Q\" is no size");
    expectSuccess("diff --cache 16M " + file + " " + file);
}

}  // namespace
