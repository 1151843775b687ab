// The process of a plugin: what it says is heard, whatever it does it ends, and nothing of it
// stays.

#include "plugin/run.h"

#include "tests/plugin/pluginfolder.h"

#include <csignal>
#include <sstream>
#include <thread>

namespace {

using namespace tarvo;
using plugin::Outcome;
using plugin::Result;
using plugintests::failureOf;
using std::chrono::milliseconds;

// Stands for the module: a database that tells what happens to it.
constexpr const char* moduleText = R"(
class Error(Exception):
    def __init__(self, code, text="", details="more"):
        super().__init__(text)
        self.details = details
class ErrorCode:
    STATE = 1
class Transaction:
    id = 7
    is_pending = True
    def commit(self, progress):
        progress(0.5)
        self.is_pending = False
        print("committed")
    def rollback(self):
        self.is_pending = False
        print("rolled back")
class Transactions:
    pass
class Database:
    transactions = Transactions()
    def __enter__(self):
        return self
    def __exit__(self, *what):
        print("closed")
    def transaction(self, title, agent, settings):
        print(title, agent, settings)
        return Transaction()
    def vacuum(self):
        pass
def open(name, library):
    print("opened", name, library)
    return Database()
)";

std::string fileText(const std::string& name) {
    std::ostringstream text;
    text << std::ifstream(name, std::ios::binary).rdbuf();
    return text.str();
}

class Heard : public plugin::Listener {
public:
    void printed(std::string_view text) override {
        bytes += text.size();
        if (print.size() < 100'000)
            print += text;
    }
    void progressed(double fraction, const std::string& text) override {
        lastFraction = fraction;
        lastText = text;
    }
    void resulted(Result result) override { results.push_back(std::move(result)); }
    bool cancelled() override {
        return !cancelAt.empty() && print.find(cancelAt) != std::string::npos;
    }

    std::string print, lastText;
    std::size_t bytes = 0;
    double lastFraction = -1;
    std::vector<Result> results;
    std::string cancelAt;  // cancelled when this has been printed
};

class Run : public ::testing::Test {
protected:
    Outcome run(const std::string& script, const std::string& members = "") {
        const plugin::Package package = plugin::readPackage(folder.add("p", script, members));
        plugin::Request request;
        request.package = &package;
        request.interpreter = plugin::findInterpreter(plugin::defaultPythonPath);
        request.scripts = {
            {"qrb/__init__.py", moduleText},
            {"runner/main.py", fileText(SOURCE_FOLDER "/python/runner/main.py")},
            {"runner/report.py", fileText(SOURCE_FOLDER "/python/runner/report.py")}};
        request.database = "some.qrbx";
        request.library = "some.so";
        request.agent = "test";
        request.arguments = R"({"x": 1})";
        request.patience = {milliseconds(300), milliseconds(300), milliseconds(500)};
        return plugin::run(request, heard);
    }
    void expectPrinted(const std::string& text) const {
        EXPECT_NE(heard.print.find(text), std::string::npos) << heard.print;
    }

    plugintests::PluginFolder folder;
    Heard heard;
};

TEST_F(Run, TellsAllThatComesFromThePlugin) {
    const Outcome outcome = run(R"(
import os, sys, part
def run(db, parameters, report):
    assert parameters == {"x": 1} and part.value == 5
    print("on the way")
    report.progress(0.25, "reading")
    report.text("a\nb", title="T")
    report.html("<p>h</p>")
    report.picture(b"\x89PNG\r\n\x1a\n\x00\xff", title="P")
    report.table(["n", "s"], [[1, "a"], [(2.5, 2), "b,\"c\""]], title="Tab")
    report.file("x.csv")
)");
    ASSERT_EQ(outcome.end, Outcome::End::FAILED) << "its second file is missing";
    EXPECT_NE(outcome.text.find("part"), std::string::npos);
    folder.write("p/part.py", "value = 5");
    heard = {};
    EXPECT_EQ(run(fileText(folder.path("p/plugin.py"))).end, Outcome::End::DONE) << heard.print;
    expectPrinted("opened some.qrbx some.so\non the way\nclosed\n");
    EXPECT_EQ(heard.lastFraction, 0.25);
    EXPECT_EQ(heard.lastText, "reading");
    ASSERT_EQ(heard.results.size(), 5u);
    EXPECT_EQ(heard.results[0].text, "a\nb");
    EXPECT_EQ(heard.results[0].title, "T");
    EXPECT_EQ(heard.results[1].kind, Result::Kind::HTML);
    EXPECT_EQ(heard.results[2].text, std::string("\x89PNG\r\n\x1a\n\0\xff", 10));
    EXPECT_EQ(plugin::csvOf(heard.results[3].table), "n,s\n1,a\n2.50,\"b,\"\"c\"\"\"\n");
    EXPECT_TRUE(heard.results[3].table.columns[0].right);
    EXPECT_FALSE(heard.results[3].table.columns[1].right);
    EXPECT_EQ(heard.results[4].kind, Result::Kind::FILE);
}

TEST_F(Run, CommitsWhatEndsWellAndRollsBackTheRest) {
    const std::string writes = R"(, "writes": true)";
    Outcome outcome = run("def run(db, parameters, report): pass", writes);
    EXPECT_EQ(outcome.end, Outcome::End::DONE);
    EXPECT_EQ(outcome.transaction, 7u);
    expectPrinted(R"(p test {"plugin": "p", "version": "1", "parameters": {"x": 1}})");
    expectPrinted("committed");
    struct Failing {
        const char *statement, *text, *details;
    };
    for (const Failing& failing :
         {Failing{"raise ValueError('no\\nmore')", "ValueError: no", "line 1"},
          Failing{"import qrb; raise qrb.Error(5, 'off')", "off", "more"},
          Failing{"report.transaction.commit()", "begin, end or restore", "committed behind it"},
          Failing{"report.transaction.rollback()", "begin, end or restore", ""},
          Failing{"db.transactions.restore(1)", "begin, end or restore", ""},
          Failing{"raise SystemExit(0)", "ended its process", ""},
          Failing{"raise KeyboardInterrupt()", "KeyboardInterrupt", ""},
          Failing{"report.table(['a'], [[1, 2]])", "2 values", ""},
          Failing{"report.progress(float('nan'))", "ValueError", ""}}) {
        heard = {};
        outcome = run("def run(db, parameters, report): " + std::string(failing.statement), writes);
        EXPECT_EQ(outcome.end, Outcome::End::FAILED) << failing.statement;
        EXPECT_NE(outcome.text.find(failing.text), std::string::npos) << outcome.text;
        EXPECT_NE(outcome.details.find(failing.details), std::string::npos) << outcome.details;
        expectPrinted("rolled back");
    }
    heard = {};
    EXPECT_NE(
        run("def run(db, parameters, report): db.transaction('mine')").text.find("begin, end"),
        std::string::npos)
        << "one that does not write";
    EXPECT_NE(run("x = 1", writes).text.find("no function run"), std::string::npos);
    EXPECT_NE(run("def run(:", writes).text.find("SyntaxError"), std::string::npos);
}

TEST_F(Run, IsNotDisturbedByWhatTheScriptPrintsOrReads) {
    const Outcome outcome = run(R"(
import os, sys
def run(db, parameters, report):
    os.write(1, b'{"type": "done", "transaction": 9}\n')
    print('{"type": "failed", "text": "x"}')
    sys.__stdout__.write("direct\n")
    os.system("echo from a shell")
    assert sys.stdin.read() == "" and os.read(0, 10) == b""
    os.write(2, b"\xff\x00binary without an end")
)");
    EXPECT_EQ(outcome.end, Outcome::End::DONE) << outcome.text;
    EXPECT_EQ(outcome.transaction, 0u);
    expectPrinted("\"transaction\": 9");
    expectPrinted("direct\n");
    expectPrinted("from a shell\n");
    expectPrinted(std::string("\xff\0binary without an end", 23));
    // Whoever finds the way of the messages all the same prints, too, or says what he means.
    heard = {};
    const Outcome forged = run(R"(
import gc, io
def run(db, parameters, report):
    report._channel._stream.write(b'no message\n[1]\n{"type": "table"}\n{"type": 5}\n')
    report.text("behind it")
)");
    EXPECT_EQ(forged.end, Outcome::End::DONE) << forged.text;
    expectPrinted("no message\n[1]\n{\"type\": \"table\"}\n{\"type\": 5}\n");
    EXPECT_EQ(heard.results.size(), 1u);
}

TEST_F(Run, HearsTheFirstProcessOnlyAndTextsThatAreNone) {
    const Outcome outcome = run(R"(
import multiprocessing, os
def run(db, parameters, report):
    child = os.fork()
    if child == 0:
        return
    os.waitpid(child, 0)
    with multiprocessing.get_context("spawn").Pool(1) as pool:
        assert pool.map(abs, [-1]) == [1]
    report.text("half \udc80 and \ud800", title="\udcff")
)",
                                R"(, "writes": true)");
    EXPECT_EQ(outcome.end, Outcome::End::DONE) << outcome.text << outcome.details << heard.print;
    ASSERT_EQ(heard.results.size(), 1u) << heard.print;
    EXPECT_EQ(heard.results[0].text, "half ? and ?");
}

TEST_F(Run, HoldsOutAFlood) {
    const Outcome outcome = run(R"(
def run(db, parameters, report):
    for i in range(60):
        print("x" * 1_000_000)
    for i in range(20_000):
        report.progress(i / 20_000)
        report.text("t")
)");
    EXPECT_EQ(outcome.end, Outcome::End::DONE) << outcome.text;
    EXPECT_GT(heard.bytes, 60'000'000u);
    EXPECT_EQ(heard.results.size(), 20'000u);
    heard = {};
    const Outcome large = run(R"(
def run(db, parameters, report):
    text = "x" * 50_000_000
    while True:
        report.text(text)
)");
    EXPECT_EQ(large.end, Outcome::End::FAILED);
    EXPECT_NE(large.text.find("larger than"), std::string::npos) << large.text;
}

TEST_F(Run, EndsWhenItIsCancelledWhateverTheScriptDoes) {
    const std::string begin = R"(
import os, signal, subprocess, sys, time
def run(db, parameters, report):
    print("begun", flush=True)
)";
    for (const char* const body : {
             "    time.sleep(1000)",
             "    while True: pass",
             "    while True:\n"
             "        try: time.sleep(1000)\n"
             "        except Exception: pass",
             // Asked in vain, then told; told in vain, then killed; with what it has started.
             "    while True:\n"
             "        try: time.sleep(1000)\n"
             "        except BaseException: pass",
             "    signal.signal(signal.SIGTERM, signal.SIG_IGN)\n"
             "    signal.signal(signal.SIGINT, signal.SIG_IGN)\n"
             "    while True: time.sleep(1000)",
             "    subprocess.run(['sleep', '1000'])",
             "    os.kill(os.getpid(), signal.SIGSTOP)",
         }) {
        heard = {};
        heard.cancelAt = "begun";
        const Outcome outcome = run(begin + body, R"(, "writes": true)");
        EXPECT_EQ(outcome.end, Outcome::End::CANCELLED) << body << outcome.text << heard.print;
        EXPECT_EQ(heard.print.find("committed"), std::string::npos);
    }
}

TEST_F(Run, ThatDiesIsTold) {
    Outcome outcome = run(R"(
import os, signal
def run(db, parameters, report):
    print("last words", flush=True)
    os.kill(os.getpid(), signal.SIGKILL)
)");
    EXPECT_EQ(outcome.end, Outcome::End::FAILED);
    EXPECT_NE(outcome.text.find("signal 9"), std::string::npos) << outcome.text;
    EXPECT_NE(outcome.details.find("last words"), std::string::npos);
    outcome = run("import os\ndef run(db, parameters, report): os._exit(3)");
    EXPECT_NE(outcome.text.find("exit code 3"), std::string::npos) << outcome.text;
    // What it has started and left behind holds nothing up, and threads don't either.
    heard = {};
    outcome = run(R"(
import subprocess, threading, time
def run(db, parameters, report):
    child = subprocess.Popen(["sleep", "1000"])
    threading.Thread(target=time.sleep, args=(1000,)).start()
    print(child.pid)
)");
    EXPECT_EQ(outcome.end, Outcome::End::DONE);
    const std::string child = heard.print.substr(heard.print.find('\n') + 1);
    const std::string file = "/proc/" + child.substr(0, child.find('\n')) + "/stat";
    const auto lives = [&file] {
        const std::string state = fileText(file);
        return !state.empty() && state.find(") Z ") == std::string::npos;
    };
    for (int i = 0; i < 100 && lives(); ++i)
        std::this_thread::sleep_for(milliseconds(50));
    EXPECT_FALSE(lives());
}

TEST_F(Run, SeesNothingOfWhereTheProgramWasStarted) {
    folder.write("here/json.py", "raise Exception('hijacked')");
    folder.write("here/report.py", "raise Exception('hijacked')");
    const auto before = std::filesystem::current_path();
    std::filesystem::current_path(folder.path("here"));
    setenv("PYTHONPATH", folder.path("here").c_str(), 1);
    setenv("PYTHONSTARTUP", folder.path("here/json.py").c_str(), 1);
    setenv("SECRET_KEY", "hidden", 1);
    const Outcome outcome = run(R"(
import os, sys, json
def run(db, parameters, report):
    print(sorted(os.environ))
    assert os.listdir(".") == [] and "PATH" in os.environ
    assert len(os.listdir("/proc/self/fd")) <= 7, os.listdir("/proc/self/fd")
)");
    std::filesystem::current_path(before);
    for (const char* const name : {"PYTHONPATH", "PYTHONSTARTUP", "SECRET_KEY"})
        unsetenv(name);
    EXPECT_EQ(outcome.end, Outcome::End::DONE) << outcome.text;
    EXPECT_EQ(heard.print.find("SECRET"), std::string::npos);
}

TEST(Interpreter, IsAPythonOrAClearError) {
    const auto program = [](const plugintests::PluginFolder& folder, const std::string& text) {
        const std::string name = folder.write("program", "#!/bin/sh\n" + text + "\n");
        std::filesystem::permissions(name, std::filesystem::perms::owner_all);
        return name;
    };
    const plugintests::PluginFolder folder;
    EXPECT_NE(plugin::findInterpreter("python.exe").version.find("3."), std::string::npos);
    EXPECT_NE(plugin::findInterpreter("").program, "");
    const auto complaint = [](const std::string& path) {
        return failureOf([&] { plugin::findInterpreter(path); });
    };
    EXPECT_NE(complaint("/nowhere/python3").find("Failed to start \"/nowhere/python3\""),
              std::string::npos);
    EXPECT_NE(complaint("/bin/true").find("is no Python"), std::string::npos);
    EXPECT_NE(complaint(program(folder, "echo 2.7.18")).find("too old"), std::string::npos);
    EXPECT_NE(complaint(program(folder, "cat /dev/zero")).find("does not answer"),
              std::string::npos);
    // A name with a folder begins here, wherever the process works.
    const auto before = std::filesystem::current_path();
    std::filesystem::current_path(folder.path());
    std::filesystem::create_symlink("/usr/bin/python3", folder.path("own"));
    EXPECT_TRUE(std::filesystem::path(plugin::findInterpreter("./own").program).is_absolute());
    std::filesystem::current_path(before);
    EXPECT_NE(complaint(folder.write("text", "no program")).find("Failed to start"),
              std::string::npos);
}

}  // namespace
