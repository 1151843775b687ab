// What commands write to: no output and no new database destroys anything.
#include "tests/cli/commandtest.h"
#include "tests/exchange/lasbuilder.h"

#include <sstream>

namespace {

using namespace tarvo::cli::tests;
using namespace tarvo::exchange::tests;
namespace fs = std::filesystem;

class Outputs : public CommandTest {
protected:
    Outputs() {
        EXPECT_EQ(run("sample -n 100 " + database).code, 0);
        EXPECT_EQ(run("sample -n 7 " + other).code, 0);
        EXPECT_EQ(run("metadata " + database + " set item 1").code, 0);
        fs::create_symlink("a.qrbx", folder.file("soft"));
        fs::create_hard_link(database, folder.file("hard"));
    }
    void expectFailure(int code, const std::string& words, const std::string& text) const {
        const std::size_t files = folder.count();
        CommandTest::expectFailure(code, words, text);
        EXPECT_EQ(folder.count(), files) << words;
    }
    // With a limit of the file size, in blocks of 1024 bytes.
    static Result runLimited(int blocks, const std::string& words) {
        return runShell("bash -c 'ulimit -f " + std::to_string(blocks) +
                        "; exec " QRBTOOL_FILE " " + words + "'");
    }

    const std::string database = file;
    const std::string other = folder.file("b.qrbx");
};

TEST_F(Outputs, NeverGoOntoADatabase) {
    const std::string before = read(database);
    const std::string otherBefore = read(other);
    for (const std::string& target :
         {database, folder.file("soft"), folder.file("hard"), folder.file("./a.qrbx"), other}) {
        for (const std::string& words : {"select " + database + " --format csv -o " + target,
                                         "select " + database + " --count -o " + target,
                                         "inspect " + database + " -o " + target,
                                         "changelog " + database + " export " + target,
                                         "metadata " + database + " export " + target,
                                         "transactions run " + database +
                                             " --title T -- 'select --limit 1 -o " + target + "'"})
            expectFailure(1, words, "The output can't go to \"" + target + "\"");
        EXPECT_EQ(read(database), before);
        EXPECT_EQ(read(other), otherBefore);
    }
    fs::create_directory(folder.file("folder"));
    fs::copy_file(other, folder.file("folder/item.meta.json"));
    expectFailure(1, "metadata " + database + " export " + folder.file("folder"), "is a database");
    EXPECT_EQ(read(folder.file("folder/item.meta.json")), otherBefore);
}

TEST_F(Outputs, NeverGoOntoAFileThatWasRead) {
    const std::string csv = folder.write("in.csv", "x,y,z\n1,2,3\n");
    const std::string json = folder.write("in.json", "{\"item\": 2}");
    fs::create_symlink("in.csv", folder.file("link.csv"));
    const std::string begin = "transactions run " + database + " --title T -- ";
    expectFailure(
        1, begin + "'import --append " + csv + "' 'select -o " + folder.file("link.csv") + "'",
        "that file is being read");
    expectFailure(1,
                  begin + "'import --append " + csv + "' 'metadata import " + json +
                      "' 'select -o " + csv + "'",
                  "that file is being read");
    expectFailure(1, begin + "'metadata import " + json + "' 'metadata export " + json + "'",
                  "that file is being read");
    EXPECT_EQ(read(csv), "x,y,z\n1,2,3\n");
    EXPECT_EQ(read(json), "{\"item\": 2}");
    EXPECT_EQ(run("metadata " + database + " get item").output, "1\n");
}

TEST_F(Outputs, ReplaceAFileOnlyWhenTheyAreWhole) {
    const std::string csv = folder.write("last-week.csv", "old\n");
    const std::string select = "select " + database + " --format csv -o ";
    expectFailure(1, select + csv + " --filter 'tarvo.klass == 1'", "tarvo.klass");
    expectFailure(1, select + csv + " -a no.such", "no.such");
    expectFailure(1, select + csv + " --filter 'tarvo.class == 99'",
                  "No points are selected; \"" + csv + "\" was left as it was.");
    expectFailure(1, select + csv + " --limit 0", "No points are selected");
    EXPECT_EQ(read(csv), "old\n");
    EXPECT_EQ(run(select + folder.file("new.csv") + " -a tarvo.class --limit 0").code, 0);
    EXPECT_EQ(read(folder.file("new.csv")), "tarvo.class\n");
    EXPECT_EQ(run(select + "/dev/null --limit 0").code, 0);
    EXPECT_EQ(run(select + csv + " --count --limit 0").code, 0);
    EXPECT_EQ(read(csv), "0\n");
    expectSuccess("metadata " + other +
                  " remove tarvo.pointcloud_info tarvo.scan_pattern tarvo.time_base");
    EXPECT_EQ(run("metadata " + other + " export " + csv).code, 1);
    EXPECT_EQ(read(csv), "0\n");

    ASSERT_EQ(run("sample -n 400000 " + folder.file("large.qrbx")).code, 0);
    const std::string large = "select " + folder.file("large.qrbx") + " --format csv -o " + csv;
    const std::string last = read(csv);
    const std::string whole = folder.file("whole.csv");
    ASSERT_EQ(run("select " + folder.file("large.qrbx") + " --format csv -o " + whole).code, 0);
    for (const char* const signal : {"INT", "TERM", "KILL"}) {
        runShell("timeout --foreground -s " + std::string(signal) + " 0.2 " QRBTOOL_FILE " " +
                 large);
        // A fast machine may have finished before the signal, or while it came.
        const std::string left = read(csv);
        EXPECT_TRUE(left == last || left == read(whole)) << signal << " " << left.size();
        folder.write("last-week.csv", last);
    }
    const Result limited = runLimited(100, large);
    EXPECT_NE(limited.output.find("\"" + csv + "\" can't be written"), std::string::npos)
        << limited.output;
    EXPECT_NE(limited.output.find("    What stood there before is as it was.\n"),
              std::string::npos);
    EXPECT_EQ(read(csv), "0\n");
    const std::size_t files = folder.count();  // what the kill has left is gone
    EXPECT_EQ(run(select + csv + " -a tarvo.class --limit 1").code, 0);
    EXPECT_EQ(folder.count(), files);
    EXPECT_EQ(read(csv), "tarvo.class\n2\n");
}

TEST_F(Outputs, OfPointsAreWhatTheNamePromises) {
    const std::string select = "select " + database + " -a tarvo.class --limit 1 -o ";
    for (const auto& [name, text] : {std::pair{"a.csv", "tarvo.class\n2\n"},
                                     {"a.CSV", "tarvo.class\n2\n"},
                                     {"a.jsonl", "{\"tarvo.class\":2}\n"},
                                     {"a.txt", "tarvo.class\n          2\n"}}) {
        expectSuccess(select + folder.file(name));
        EXPECT_EQ(read(folder.file(name)), text) << name;
    }
    expectSuccess(select + folder.file("b.txt") + " --format csv");
    EXPECT_EQ(read(folder.file("b.txt")), "tarvo.class\n2\n");
    expectFailure(2, select + folder.file("b.csv") + " --format jsonl", "would hold jsonl");
    EXPECT_FALSE(fs::exists(folder.file("b.csv")));
}

TEST_F(Outputs, GoToAnyPlaceThatCanBeWritten) {
    const std::string select = "select " + database + " --count -o ";
    fs::create_symlink("behind", folder.file("dangling"));
    EXPECT_EQ(run(select + folder.file("dangling")).code, 0);
    EXPECT_EQ(read(folder.file("behind")), "100\n");
    EXPECT_EQ(run(select + "/dev/stdout").output, "100\n");
    const std::string log = folder.write("log", "before\n");
    EXPECT_EQ(run(select + "/dev/fd/1 >> " + log).code, 0);
    EXPECT_EQ(read(log), "before\n100\n");
    const std::string pipe = folder.file("pipe");
    EXPECT_EQ(runShell("mkfifo " + pipe + "; cat " + pipe + " & " QRBTOOL_FILE " " + select + pipe +
                       "; wait")
                  .output,
              "100\n");
    expectFailure(1, select + folder.file("no/file"), "Failed to open output file!");
    expectFailure(1, select + folder.file("no/file"), "Its folder must be there, and writable.");
    expectFailure(1, select + folder.file("."), "is a folder");
    expectFailure(1, select + "/dev/full", "No space left");
}

TEST_F(Outputs, OfAnImportIsNoScan) {
    LasBuilder builder(2, 0);
    builder.addPoint(1, 2, 3);
    const std::string first = folder.write("strip1.las", builder.build());
    builder.addPoint(4, 5, 6);
    const std::string second = folder.write("strip2.las", builder.build());
    const std::string before = read(second);
    for (const char* const option : {"", " --overwrite", " --append"}) {
        expectFailure(1, "import " + first + " " + second + option,
                      "qrbtool import INPUT... DATABASE: the last name is the ");
        EXPECT_EQ(run("import " + first + " " + second + option).output.find("--overwrite"),
                  std::string::npos);
    }
    fs::create_hard_link(second, folder.file("hard.qrbx"));
    fs::create_symlink("strip2.las", folder.file("soft.qrbx"));
    for (const char* const name : {"hard.qrbx", "soft.qrbx"})
        expectFailure(2, "import --overwrite " + second + " " + folder.file(name),
                      "is an input and the output");
    EXPECT_EQ(read(second), before);
    expectFailure(2, "changelog " + database + " import " + folder.file("soft"), "database itself");
    for (const char* const command :
         {"sample --overwrite ", "schema create --overwrite --schema vtx "})
        expectFailure(1, command + second, "Only databases are replaced.");
    expectFailure(1, "copy --overwrite " + database + " " + second, "Only databases are replaced.");
    EXPECT_EQ(read(second), before);
}

TEST_F(Outputs, ThatReplaceADatabaseLoseNobodysWork) {
    const std::string pipe = folder.file("pipe");
    // The other process waits for the pipe with its transaction begun.
    const Result result =
        runShell("mkfifo " + pipe + "; " QRBTOOL_FILE " transactions run " + database +
                 " --title T -- 'metadata set a @" + pipe + "' & exec 3> " + pipe +
                 "; " QRBTOOL_FILE " sample --overwrite " + database +
                 "; echo code $?; echo 1 >&3; exec 3>&-; wait");
    EXPECT_NE(result.output.find("is being changed"), std::string::npos) << result.output;
    EXPECT_NE(result.output.find("code 1\n"), std::string::npos) << result.output;
    EXPECT_EQ(run("metadata " + database + " get a").output, "1\n");

    // Of programs that make one name at once, one does; the others say so.
    std::string several;
    const std::string file = folder.file("new.qrbx");
    for (int i = 0; i < 4; ++i)
        several += QRBTOOL_FILE " sample -n 50000 " + file + " & ";
    const std::string output = runShell(several + "wait").output;
    std::size_t refused = 0;
    for (std::size_t at = 0; (at = output.find("exists already", at)) != std::string::npos; ++at)
        ++refused;
    EXPECT_EQ(refused, 3u) << output;
    EXPECT_EQ(run("select --count " + file).output, "50000\n");
}

TEST_F(Outputs, LeaveNothingWhenAProgramIsStopped) {
    const std::size_t files = folder.count();
    const std::string file = folder.file("new.qrbx");
    const auto stop = [&](const std::string& signal) {
        return runShell("timeout --foreground -s " + signal +
                        " 0.5 " QRBTOOL_FILE " sample -n 2000000000 " + file);
    };
    for (const char* const signal : {"INT", "TERM", "HUP"}) {
        EXPECT_NE(stop(signal).code, 0);
        EXPECT_EQ(folder.count(), files) << signal;
    }
    runShell(QRBTOOL_FILE " sample -n 2000000000 " + file + " & until ls " + file +
             ".new-*; do sleep 0.1; done; kill -9 $!; wait");
    EXPECT_GT(folder.count(), files);
    EXPECT_EQ(run("sample -n 1 " + file).code, 0);
    EXPECT_EQ(folder.count(), files + 1);
    for (const std::string& words : {"sample -n 100000 --overwrite " + file,
                                     "copy " + database + " " + folder.file("copy.qrbx"),
                                     "changelog " + database + " export " + folder.file("text")}) {
        const Result result = runLimited(words.starts_with("sample") ? 60 : 0, words);
        EXPECT_EQ(result.code, 1) << words;
        EXPECT_EQ(result.output.substr(0, 9), "qrbtool: ") << words << "\n" << result.output;
        EXPECT_EQ(folder.count(), files + 1) << words;
    }
    EXPECT_EQ(run("select --count " + file).output, "1\n");
}

TEST_F(Outputs, NumbersOfTheCommandLineAreWhole) {
    const auto wrong = {"-1",  "-5",  "+5",  "5abc", "1e6",  "0x10",
                        "1.5", "nan", "inf", "''",   "' 5'", "18446744073709551616"};
    const std::string make = " " + folder.file("new.qrbx");
    for (const auto& [words, option] : {std::pair{"sample" + make + " -n ", "--points"},
                                        {"sample" + make + " --seed ", "--seed"},
                                        {"select " + database + " --limit ", "--limit"},
                                        {"index " + database + " --depth ", "--depth"},
                                        {"index " + database + " --node ", "--node"},
                                        {"lod " + database + " set --size ", "--size"},
                                        {"changelog " + database + " show --entry ", "--entry"},
                                        {"transactions " + database + " show -- ", "id"},
                                        {"transactions " + database + " restore -- ", "id"},
                                        {"transactions " + database + " discard -- 1 ", "ids"},
                                        {"transactions " + database + " size -- 1 ", "ids"}}) {
        for (const std::string value : wrong) {
            if (option == std::string("--points") && value == "1e6") {
                continue;
            }
            std::string shown = value;
            std::erase(shown, '\'');
            expectFailure(2, words + value,
                          std::string(option) + ": \"" + shown + "\" is not a whole number");
        }
        if (option != std::string("--points") && option != std::string("--seed") &&
            option != std::string("--limit"))
            expectFailure(2, words + "4294967297", std::string(option) + ": \"4294967297\"");
    }
    for (const std::string value : {"1.5e0", "1e-3", "-1e3", "1e99", "1e", "1e3 "})
        expectFailure(2, "sample" + make + " -n '" + value + "'", "is not a whole number");
    expectSuccess("sample" + make + " -n 1.5e3");
    EXPECT_EQ(run("select --count" + make).output, "1500\n");
    for (const std::string& words :
         {"changelog " + database + " show --entry 0", "transactions " + database + " show 0",
          "index " + database + " --node 0"})
        expectFailure(2, words, "\"0\" is not a whole number from 1");
    EXPECT_EQ(run("select --count " + database + " --limit 010").output, "10\n");
    for (const char* const value : {"", "nan", "1e1", "0x1", "-1", "1x", "+"})
        expectFailure(2, "update " + database + " --set tarvo.class=" + value,
                      "--set tarvo.class: \"" + std::string(value) + "\"");
    expectFailure(2, "update " + database + " --set tarvo.amplitude=+-1",
                  "\"+-1\" is not a number");
    for (const std::string element : {"4294967296]", "1]x", "1", "]", "-1]", "1 ]"})
        expectFailure(1, "select " + database + " -a 'tarvo.xyz[" + element + "'", "no element");
}

// A variable of a script that is not set, or a file that is empty, must not mean everything.
TEST_F(Outputs, EmptyListsAreNotEverything) {
    expectFailure(2, "remove " + database + " --ids @" + folder.write("ids", ""), "empty");
    const std::string leaveOut = "Leave the option out for all.";
    const std::string update = "update " + database + " --set tarvo.class=3";
    const std::string copy = "copy " + database + " " + folder.file("c.qrbx");
    for (const std::string& words :
         {update, "update " + database + " --invert tarvo.selected", "select " + database, copy}) {
        expectFailure(2, words + " --nodes ''", leaveOut);
        expectFailure(2, words + " --filter ''", leaveOut);
    }
    expectFailure(2, update + " -f ' \t\v'", leaveOut);
    expectFailure(2, "index " + database + " --filter ''", leaveOut);
    expectFailure(2, "transactions run " + database + " --title t -- \"update --set a=1 -f ''\"",
                  leaveOut);
    for (const char* which : {" --filter ' '", " --filter ''", " --ids ''"}) {
        expectFailure(2, "remove " + database + which, "Give --all to remove all points.");
    }
    EXPECT_EQ(run("select --count " + database).output, "100\n");
}

}  // namespace
