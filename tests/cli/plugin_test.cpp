// qrbtool plugin: real scripts on real databases, and what is left of those that fail.

#include "tests/cli/admin.h"
#include "tests/cli/sanitized.h"

#include <csignal>
#include <cstdlib>
#include <filesystem>

namespace {

using namespace tarvo::cli::tests;

class PluginCommand : public Admin {
protected:
    void SetUp() override {
#if defined(SANITIZED)
        GTEST_SKIP() << "A Python without the sanitizers can't load a library with them.";
#endif
        std::filesystem::create_directories(plugins);
        setenv("XDG_CONFIG_HOME", folder.file("settings").c_str(), 1);
        importPoints(10);
    }
    void TearDown() override {
        unsetenv("XDG_CONFIG_HOME");
    }

    void add(const std::string& name, const std::string& script, const std::string& members) {
        std::filesystem::create_directories(plugins + "/" + name);
        folder.write("plugins/" + name + "/plugin.json",
                     R"({"name": ")" + name + R"(", "title": "The )" + name +
                         R"(", "version": "1", )" + members + "}");
        folder.write("plugins/" + name + "/plugin.py", script);
    }
    std::string runWords(const std::string& name, const std::string& more = "--trust") const {
        return "plugin run " + name + " " + file + " --plugins " + plugins + " " + more;
    }

    const std::string plugins = folder.file("plugins");
};

TEST_F(PluginCommand, ReadsWhatIsThereAndWritesInOneTransaction) {
    add("sum", R"(
def run(db, parameters, report):
    total = 0.0
    for batch in db.select(parameters["filter"], ["tarvo.xyz", "tarvo.id"]):
        total += sum(row[0] for row in batch["tarvo.xyz"].tolist())
    report.text(repr(total))
    report.table(["id"], [[1]], title="a/b")
)",
        R"("parameters": [{"name": "filter", "type": "filter", "default": ""}])");
    expectSuccess(runWords("sum", "--trust 2>/dev/null"), "60.0\na/b\nid\n 1\n");
    expectSuccess(runWords("sum", "--set 'filter=tarvo.class == unclassified' 2>/dev/null"),
                  "24.0\na/b\nid\n 1\n");
    expectSuccess(runWords("sum", "--results " + folder.file("r")));
    EXPECT_EQ(read(folder.file("r/2 a_b.csv")), "id\n1\n");
    add("mark", R"(
def run(db, parameters, report):
    report.transaction.update({"tarvo.class": 7}, filter="tarvo.id <= 30")
    print(report.transaction.remove(ids=[100]), db.count())
    report.progress(1)
)",
        R"("writes": true)");
    expectSuccess(runWords("mark"), "1 9\nTransaction 3 is committed.\n");
    for (const std::uint64_t id : {10, 20, 30})
        points[id].pointClass = 7;
    points.erase(100);
    expectPoints();
    const auto shown = json("transactions " + file + " show --json");
    EXPECT_STREQ(shown["title"].GetString(), "The mark");
    EXPECT_STREQ(shown["settings"].GetString(),
                 R"({"plugin": "mark", "version": "1", "parameters": {}})");
}

TEST_F(PluginCommand, LeavesTheDatabaseAsItWasUnlessItEndsWell) {
    const std::string begin = R"(
import os, signal, time
def run(db, parameters, report):
    report.transaction.remove(filter="tarvo.class == 1")
    db.count()
)";
    const std::pair<const char*, const char*> ends[] = {
        {"    raise ValueError('not today')\n", "ValueError: not today"},
        {"    os.kill(os.getpid(), signal.SIGKILL)\n", "signal 9"},
        {"    os._exit(0)\n", "without a result"},
        {"    report.transaction.update({'none.such': 1}, filter='')\n", "none.such"},
        {"    report.transaction.commit()\n", "can't begin, end"},
        {"    db.close()\n", ""},
    };
    for (const auto& [end, text] : ends) {
        add("p", begin + end, R"("writes": true)");
        expectFailure(1, runWords("p"), text);
        expectPoints();
        EXPECT_EQ(transactionCount(), 2u) << end;
        expectSuccess("check " + file);
    }
    // Interrupted, then the whole group of processes killed.
    add("p", begin + "    time.sleep(1000)\n", R"("writes": true)");
    const Result interrupted = runShell("timeout --foreground -s INT 2 " +
                                        std::string(QRBTOOL_FILE) + " " + runWords("p"));
    EXPECT_EQ(interrupted.code, 124) << interrupted.output;
    expectPoints();
    const Result killed = runShell("timeout --foreground -s KILL 2 " + std::string(QRBTOOL_FILE) +
                                   " " + runWords("p"));
    EXPECT_EQ(killed.code, 137) << killed.output;
    // Its process hears that nobody is there any more.
    expectSuccess("update " + file + " --set tarvo.class=5 --filter 'tarvo.id == 10'");
    points[10].pointClass = 5;
    expectPoints();
}

TEST_F(PluginCommand, TellsOfACommitAlsoWhereAResultIsLost) {
    add("p", R"(
def run(db, parameters, report):
    report.text("hello", "block")
    report.transaction.update({"tarvo.class": 5}, filter="tarvo.id == 10")
)",
        R"("writes": true)");
    std::filesystem::create_directories(folder.file("r/1 block.txt"));
    expectFailure(1, runWords("p", "--trust --results " + folder.file("r")),
                  "Transaction 3 is committed. A result is lost.");
    expectFailure(1, runWords("p", ">/dev/full"), "Transaction 4 is committed. A result is lost.");
    expectFailure(1, runWords("p", ">&-"), "Transaction 5 is committed. A result is lost.");
}

TEST_F(PluginCommand, KeepsItsOutputsOffWhatItReads) {
    add("p", "def run(db, parameters, report): open(parameters['out'], 'w').write('x')",
        R"("parameters": [{"name": "in", "type": "input file", "default": ""},
                          {"name": "out", "type": "output file", "default": ")" +
            folder.file("a.txt") + "\"}]");
    const std::string input = folder.write("a.txt", "kept");
    expectFailure(1, runWords("p", "--trust --set in=" + input), "a.txt");
    expectFailure(1, runWords("p", "--trust --set out=" + file), "a.qrbx");
    EXPECT_EQ(read(input), "kept");
    expectSuccess(runWords("p", "--trust --set out=" + folder.file("b.txt")));
    EXPECT_EQ(read(folder.file("b.txt")), "x");
}

TEST_F(PluginCommand, IsRunOnlyWhenItIsTrustedAndItsWordsAreRight) {
    add("p", "def run(db, parameters, report): report.text(str(parameters['n']))",
        R"("parameters": [{"name": "n", "type": "integer", "minimum": 1}])");
    expectFailure(1, runWords("p", "--set n=1"), "never run by you");
    expectFailure(2, runWords("p"), "\"n\" has no value");
    expectFailure(2, runWords("p", "--set n=0 --trust"), "a whole number from 1");
    expectFailure(2, runWords("p", "--set m=1 --trust"), "--set \"m=1\"");
    expectFailure(2, runWords("p", "--set n=1 --set n=2 --trust"), "twice");
    expectFailure(1, runWords("p", "--set n=1"), "never run by you");
    expectSuccess(runWords("p", "--set n=5 --trust"), "5\n");
    expectSuccess(runWords("p", "--set n=6"), "6\n");
    folder.write("plugins/p/more.py", "");
    expectFailure(1, runWords("p", "--set n=1"), "has changed");
    expectFailure(1, runWords("q"), "There is no plugin \"q\"");
    expectFailure(1, runWords("p", "--set n=1 --trust --python /bin/true"), "is no Python");
    expectFailure(1, "plugin list --plugins " + folder.file("none"), "There is no folder");
    folder.write("plugins/broken.py", "# /// plugin\n# {}\n# ///\n");
    expectSuccess("plugin list --plugins " + plugins + " 2>/dev/null",
                  "Name  Version  Writes  Title\np     1        no      The p\n");
    expectFailure(0, "plugin list --plugins " + plugins, "broken.py\" is left out");
    EXPECT_STREQ(
        json("plugin describe p --json --plugins " + plugins)["parameters"][0]["type"].GetString(),
        "integer");
    expectFailure(0, "plugin describe p --plugins " + plugins, "integer");
    expectFailure(0, "plugin describe p --plugins " + plugins, "\nWrites        no\n");
    add("w", "def run(db, parameters, report): pass", R"("writes": true)");
    expectFailure(0, "plugin describe w --plugins " + plugins, "\nWrites        yes, in one");
}

}  // namespace
