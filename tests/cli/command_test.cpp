#include "cli/database.h"
#include "cli/errors.h"
#include "simulation/scanner.h"
#include "cli/terminal.h"
#include "qrb/loader.h"
#include "tests/cli/folder.h"
#include "tests/cli/process.h"
#include "tests/exchange/lasbuilder.h"

#include <gtest/gtest.h>

#include <rapidjson/document.h>

#include <algorithm>
#include <csignal>
#include <cstdlib>

namespace {

using namespace tarvo::cli::tests;
using namespace tarvo::exchange::tests;

class Command : public testing::Test {
protected:
    std::string las(const std::string& name, int pointCount = 3) {
        LasBuilder builder(2, 1);
        for (int i = 0; i < pointCount; ++i) {
            Bytes& point = builder.addPoint(100 * i, -i, 7);
            point[15] = static_cast<std::uint8_t>(i % 3);
            put(point, 20, 1.0 / 3 + i);
        }
        return folder.write(name, builder.build());
    }
    Folder folder;
};

TEST_F(Command, WordsThatAreOffEndWithTwo) {
    EXPECT_EQ(run("--help").code, 0);
    EXPECT_EQ(run("import --help").code, 0);
    EXPECT_EQ(run("--version").output, "qrbtool " QRB_TEST_VERSION "\n");
    for (const char* words :
         {"nonsense", "import a.las", "info", "select --format xml a", "sample -n many a"}) {
        const Result result = run(words);
        EXPECT_EQ(result.code, 2) << words;
        EXPECT_EQ(result.output.substr(0, 9), "qrbtool: ") << words;
    }
    const std::string file = folder.file("a.qrbx");
    ASSERT_EQ(run("sample -n 10 " + file).code, 0);
    EXPECT_EQ(run("select --nodes x --count " + file).code, 2);
}

TEST_F(Command, FailuresEndWithOneAndSayWhy) {
    const Result missing = run("info " + folder.file("missing.qrbx"));
    EXPECT_EQ(missing.code, 1);
    EXPECT_NE(missing.output.find("missing.qrbx"), std::string::npos) << missing.output;
    const Result library = run("--library /nowhere.so info a");
    EXPECT_EQ(library.code, 1);
    EXPECT_EQ(library.output,
              "qrbtool: Failed to load QRB library.\n    The file was \"/nowhere.so\".\n");
    EXPECT_EQ(run("info " + las("a.las")).code, 1);
}

TEST_F(Command, TheLibraryIsFoundWhereTheSystemLooks) {
    namespace fs = std::filesystem;
    const fs::path program(QRBTOOL_FILE);
    const std::string copy = folder.file("qrbtool");
    fs::copy_file(program, copy);
    const std::string words = copy + " sample -n 1 " + folder.file("a.qrbx");
    EXPECT_EQ(runShell("env LD_LIBRARY_PATH= " + words).code, 1);
    const Result found =
        runShell("env LD_LIBRARY_PATH=" + program.parent_path().string() + " " + words);
    EXPECT_EQ(found.code, 0) << found.output;
}

TEST_F(Command, SampleHoldsExactlyThePointsAskedForAndRepeatsItself) {
    const std::string a = folder.file("a.qrbx");
    const std::string b = folder.file("b.qrbx");
    for (const char* number : {"0", "1", "65537"}) {
        ASSERT_EQ(run("sample --overwrite --seed 3 -n " + std::string(number) + " " + a).code, 0);
        EXPECT_EQ(run("select --count " + a).output, std::string(number) + "\n");
    }
    ASSERT_EQ(run("sample --seed 3 -n 65537 " + b).code, 0);
    const Result same = runShell("bash -c 'cmp <(" QRBTOOL_FILE " select --format csv " + a +
                                 ") <(" QRBTOOL_FILE " select --format csv " + b + ")'");
    EXPECT_EQ(same.code, 0) << same.output;
    EXPECT_NE(run("select --count --filter 'tarvo.class == 6' " + a).output, "0\n");
    // Scene and scanner have the seed that was asked for.
    const tarvo::simulation::Scene scene(3);
    tarvo::simulation::Scanner scanner(scene, 3, 65537);
    tarvo::simulation::Points first(1);
    ASSERT_EQ(scanner.next(first, 1), 1u);
    const std::string range =
        run("select -a tarvo.range --format csv --filter 'tarvo.id == 1' " + a).output;
    EXPECT_NEAR(std::stod(range.substr(range.find('\n'))), first.range[0], 0.00025);
}

TEST_F(Command, ImportAndExportGoRound) {
    const std::string first = folder.file("first.qrbx");
    const std::string second = folder.file("second.qrbx");
    ASSERT_EQ(run("import " + las("a.las", 1000) + " " + first).code, 0);
    const std::string text = folder.file("a.csv");
    ASSERT_EQ(run("select --format csv -o " + text + " " + first).code, 0);
    const Result import = run("import " + text + " " + second);
    ASSERT_EQ(import.code, 0) << import.output;
    const std::string columns =
        " select --format csv -a tarvo.id,tarvo.xyz,tarvo.intensity,tarvo.class,tarvo.timestamp,"
        "tarvo.scan_angle,las.user_data,las.point_source_id ";
    const Result same = runShell("bash -c 'cmp <(" QRBTOOL_FILE + columns + first +
                                 ") <(" QRBTOOL_FILE + columns + second + ")'");
    EXPECT_EQ(same.code, 0) << same.output;
    EXPECT_EQ(run("select -l 1 --filter 'tarvo.xyz[0] == 5' --format csv "
                  "-a 'tarvo.xyz,tarvo.class,tarvo.timestamp' " +
                  first)
                  .output,
              "tarvo.xyz[0],tarvo.xyz[1],tarvo.xyz[2],tarvo.class,tarvo.timestamp\n"
              "5.00,-0.05,0.07,2,5.333333333333333\n");
    EXPECT_EQ(run("select -l 1 --filter 'tarvo.xyz[0] == 5' --format jsonl "
                  "-a 'tarvo.xyz,tarvo.class' " +
                  first)
                  .output,
              "{\"tarvo.xyz\":[5.00,-0.05,0.07],\"tarvo.class\":2}\n");
    EXPECT_EQ(run("select --count -l 10 " + first).output, "10\n");
    EXPECT_EQ(run("select -a missing " + first).code, 1);
    EXPECT_EQ(run("select -a 'tarvo.xyz[3]' " + first).code, 1);
    EXPECT_EQ(run("select --filter 'tarvo.class ==' " + first).code, 1);
}

TEST_F(Command, SeveralFilesBecomeOneDatabase) {
    const std::string target = folder.file("a.qrbx");
    const std::string text =
        folder.write("b.CSV", "x,y,z,quality,same,v[0]\n0.005,1,2,9,5,6\n-70000,1,2,8,5,6\n");
    const std::string longer = folder.write("c.csv", "x,y,z,v[0],v[1]\n1,1,2,3,4\n");
    const Result import =
        run("import " + las("a.las", 5) + " " + text + " " + longer + " " + target);
    ASSERT_EQ(import.code, 0) << import.output;
    EXPECT_EQ(run("select --count " + target).output, "8\n");
    EXPECT_EQ(run("select --count --filter 'csv.same == 5' " + target).output, "2\n");
    EXPECT_EQ(run("select --count --filter 'csv.v[1] == 4 && csv.v[0] == 3' " + target).output,
              "1\n");
    EXPECT_EQ(
        run("select --count --filter 'csv.quality == 9 && tarvo.xyz[0] == 0.005' " + target).output,
        "1\n");
    // A number that all points of all files have is still theirs, and not what points to come have.
    const std::string one =
        folder.write("one.csv", "tarvo.id,x,y,z,all,some,differs,v[0],v[1]\n1,1,1,1,5,5,5,5,5\n");
    const std::string two =
        folder.write("two.csv", "tarvo.id,x,y,z,all,differs,v[0],v[1]\n2,1,1,1,5,6,5,5\n");
    ASSERT_EQ(run("import --overwrite " + one + " " + two + " " + target).code, 0);
    for (const auto& [name, value] :
         {std::pair("all", 0.0), {"some", 0.0}, {"differs", 0.0}, {"v", 0.0}}) {
        rapidjson::Document shown;
        shown.Parse(run("attributes " + target + " show --json csv." + name).output.c_str());
        ASSERT_FALSE(shown.HasParseError()) << name;
        EXPECT_EQ(shown["default_value"].GetDouble(), value) << name;
    }
    EXPECT_EQ(
        run("select --format csv -a tarvo.id,csv.all,csv.some,csv.differs,csv.v " + target).output,
        "tarvo.id,csv.all,csv.some,csv.differs,csv.v[0],csv.v[1]\n1,5,5,5,5,5\n"
        "2,5,0,6,5,5\n");
}

TEST_F(Command, ContentTellsTextsFromScansWhateverTheEnding) {
    for (const char* const name : {"a.csv", "a.TSV", "a.dat", "a.las"}) {
        const std::string text = folder.write(name, "x,y,z\n1,2,3\n");
        const std::string words = "import --overwrite " + text + " " + folder.file("a.qrbx");
        EXPECT_EQ(run(words).code, 0) << name;
        EXPECT_EQ(run(words + " --format csv").code, 0) << name;
        EXPECT_EQ(run(words + " --format las").code, 1) << name;
    }
    EXPECT_EQ(run("import " + las("scan") + " " + folder.file("b.qrbx")).code, 0);
}

TEST_F(Command, NothingIsLeftOfAFailedImport) {
    const std::string target = folder.file("a.qrbx");
    const std::string good = las("good.las");
    LasBuilder builder(2, 0);
    builder.addPoint(1, 2, 3);
    Bytes bytes = builder.build();
    bytes.resize(bytes.size() - 1);
    const std::string cut = folder.write("cut.las", bytes);
    const std::size_t before = folder.count();
    EXPECT_EQ(run("import " + good + " " + cut + " " + target).code, 1);
    EXPECT_EQ(run("import --primary tarvo.range " + good + " " + target).code, 1);
    EXPECT_EQ(folder.count(), before);
    ASSERT_EQ(run("import " + good + " " + target).code, 0);
    const Result refused = run("import " + good + " " + target);
    EXPECT_EQ(refused.code, 1);
    EXPECT_NE(refused.output.find("--overwrite"), std::string::npos);
    // A failed replacement leaves the old database.
    EXPECT_EQ(run("import --overwrite " + cut + " " + target).code, 1);
    EXPECT_EQ(run("select --count " + target).output, "3\n");
    EXPECT_EQ(run("import --overwrite " + las("good.las", 8) + " " + target).code, 0);
    EXPECT_EQ(run("select --count " + target).output, "8\n");
    EXPECT_EQ(folder.count(), before + 1);
}

TEST_F(Command, AnInterruptedSampleLeavesNoFile) {
    const Result result =
        runShell("timeout --foreground -s INT 0.7 " QRBTOOL_FILE " sample -n 2000000000 " +
                 folder.file("a.qrbx"));
    EXPECT_NE(result.code, 0);
    EXPECT_NE(result.output.find("Interrupted."), std::string::npos) << result.output;
    EXPECT_EQ(folder.count(), 0u);
}

// A report can't be stopped. Alone, it is not even begun; within a change, that is undone as a
// whole.
TEST_F(Command, AnInterruptBeforeAReportIsHeeded) {
    const std::string file = folder.file("a.qrbx");
    ASSERT_EQ(run("sample -n 10 " + file).code, 0);
    const auto report = [&](bool changing) {
        tarvo::qrb::loadLibrary("");
        const tarvo::qrb::Context context("OFF", "");
        tarvo::cli::Database database(context, file);
        tarvo::cli::watchInterrupts();
        std::raise(SIGINT);
        bool reported = false;
        bool interrupted = false;
        const auto work = [&] {
            database.inspect(1);
            reported = true;
        };
        try {
            changing ? static_cast<void>(database.change({"T"}, work)) : work();
        } catch (const tarvo::cli::Interrupted&) {
            interrupted = true;
        }
        std::_Exit((reported ? 1 : 0) + (interrupted ? 2 : 0));
    };
    EXPECT_EXIT(report(false), testing::ExitedWithCode(2), "");
    EXPECT_EXIT(report(true), testing::ExitedWithCode(3), "");
}

TEST_F(Command, AReaderThatLeavesEarlyIsNoFailure) {
    const std::string file = folder.file("a.qrbx");
    ASSERT_EQ(run("sample -n 20000 " + file).code, 0);
    const Result result =
        runShell("bash -c 'set -o pipefail; " QRBTOOL_FILE " select " + file + " | head -n 2'");
    EXPECT_EQ(result.code, 0);
    EXPECT_EQ(std::count(result.output.begin(), result.output.end(), '\n'), 2) << result.output;
    if (access("/dev/full", W_OK) == 0) {
        const Result full = run("select -o /dev/full " + file);
        EXPECT_EQ(full.code, 1);
        EXPECT_NE(full.output.find("/dev/full"), std::string::npos);
    }
}

TEST_F(Command, InfoIsJsonForPrograms) {
    const std::string file = folder.file("a.qrbx");
    ASSERT_EQ(run("import " + las("a.las", 9) + " " + file).code, 0);
    rapidjson::Document info;
    ASSERT_FALSE(info.Parse(run("info --json " + file).output.c_str()).HasParseError());
    EXPECT_EQ(info["point_count"].GetUint(), 9u);
    EXPECT_STREQ(info["transactions"][1]["agent"].GetString(), "qrbtool " QRB_TEST_VERSION);
    EXPECT_STREQ(info["attributes"][0]["name"].GetString(), "tarvo.xyz");
    EXPECT_EQ(info["attributes"][0]["maximum"][0].GetDouble(), 8.0);
    EXPECT_STREQ(info["metadata"][0].GetString(), "las.header");
    EXPECT_NE(run("info " + file).output.find("Points        9\n"), std::string::npos);
}

}  // namespace
