// Points of files that go into a database which exists: what old and new points have then, and that
// a refusal or a stop in the middle changes nothing.
#include "tests/cli/commandtest.h"
#include "tests/exchange/lasbuilder.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <fstream>
#include <iostream>
#include <iterator>
#include <map>
#include <sstream>

namespace {

using namespace tarvo::cli::tests;
using namespace tarvo::exchange::tests;

class Append : public CommandTest {
protected:
    using Rows = std::map<std::string, std::string>;  // what follows the id, by the id

    void expectFailure(int code, const std::string& words,
                       const std::vector<std::string>& texts) const {
        const Result result = run(words);
        EXPECT_EQ(result.code, code) << words << "\n" << result.output;
        for (const std::string& text : texts) {
            EXPECT_NE(result.output.find(text), std::string::npos) << text << "\n" << result.output;
        }
    }
    // The import of the text of a CSV file into the database.
    std::string append(const std::string& table, const std::string& options = "") const {
        return "import " + folder.write("table.csv", table) + " " + file + " --append " + options;
    }
    void make(const std::string& table) const {
        expectSuccess("import --overwrite " + folder.write("first.csv", table) + " " + file);
    }
    Rows rows(const std::string& attributes) const {
        const Result select =
            run("select " + file + " -a tarvo.id," + attributes + " --format csv");
        EXPECT_EQ(select.code, 0) << select.output;
        std::istringstream lines(select.output);
        std::string line;
        std::getline(lines, line);
        Rows result;
        while (std::getline(lines, line)) {
            const std::size_t comma = line.find(',');
            EXPECT_TRUE(result.emplace(line.substr(0, comma), line.substr(comma + 1)).second)
                << line;
        }
        return result;
    }
    // Whatever can be seen of the database.
    std::string everything() const {
        return run("select " + file + " --format csv").output +
               run("transactions " + file + " --json").output +
               run("attributes " + file + " --json").output +
               run("metadata " + file + " --json").output;
    }
    rapidjson::Document definition(const std::string& attribute) const {
        return json("attributes " + file + " show " + attribute + " --json");
    }
};

TEST_F(Append, AnEmptyDatabaseTakesPointsAndAttributes) {
    expectSuccess("schema create " + file + " --schema vtx");
    const std::string table =
        "tarvo.id,x,y,z,tarvo.class,quality\n7,1.25,-2,3.5,2,0.5\n9,534999.5,0,-1,1,-0.25\n";
    expectSuccess(append(table, "--only-known"), "2 points added.\n");
    EXPECT_EQ(json("attributes " + file + " --json").Size(), 2u);
    EXPECT_EQ(rows("tarvo.xyz"),
              (Rows{{"7", "1.25000,-2.00000,3.50000"}, {"9", "534999.50000,0.00000,-1.00000"}}));
    expectSuccess("remove --all " + file);
    expectSuccess(append(table), "2 points added.\n");
    EXPECT_EQ(rows("tarvo.class,csv.quality"), (Rows{{"7", "2,0.50"}, {"9", "1,-0.25"}}));
    // Without ids, points get the next ones.
    expectSuccess(append("x,y,z\n0,0,0\n"));
    EXPECT_EQ(rows("tarvo.class,csv.quality"),
              (Rows{{"7", "2,0.50"}, {"9", "1,-0.25"}, {"10", "0,0.00"}}));
    expectSuccess(append("x,y,z\n"), "0 points added.\n");
}

TEST_F(Append, OldAndNewPointsKeepTheirValues) {
    make(
        "tarvo.id,x,y,z,tarvo.class,only.old,real\n1,1.25,2,3,4,-5,0.3333333333333333\n"
        "2,0,0,0,6,7,2.5\n");
    // Constant columns, which a new database would not store, and cells without a value.
    expectSuccess(
        append("tarvo.id,x,y,z,tarvo.class,only.new,gaps,tarvo.target_index\n"
               "11,1.5,2,3,5,3,,1\n12,-1.5,0,0,9,3,2.5,2\n"));
    EXPECT_EQ(rows("tarvo.xyz,tarvo.class,only.old,only.new,csv.gaps,tarvo.target_index"),
              (Rows{{"1", "1.25,2.00,3.00,4,-5,0,nan,0"},
                    {"2", "0.00,0.00,0.00,6,7,0,nan,0"},
                    {"11", "1.50,2.00,3.00,5,0,3,nan,1"},
                    {"12", "-1.50,0.00,0.00,9,0,3,2.5,2"}}));
    // What has no value becomes invalid where the attribute knows that, else the default value.
    expectSuccess(
        append("tarvo.id,x,y,z,tarvo.class,only.new,gaps,tarvo.target_index,real\n"
               "21,1,2,3,,,,,\n22,1,2,3,1,1,0.125,1,0.5\n"));
    const Rows all = rows("tarvo.class,only.new,csv.gaps,tarvo.target_index,csv.real");
    EXPECT_EQ(all.at("21"), "0,0,nan,0,nan");
    EXPECT_EQ(all.at("22"), "1,1,0.125,1,0.5");
    // A name as it stands in the header line.
    expectSuccess("attributes " + file + " duplicate only.new Mark");
    expectSuccess(append("tarvo.id,x,y,z,Mark\n31,1,2,3,2\n"));
    EXPECT_EQ(rows("Mark").at("31"), "2");
    EXPECT_EQ(rows("Mark").size(), 7u);
    expectSuccess("attributes " + file + " duplicate Mark csv.mark");
    expectSuccess(append("tarvo.id,x,y,z,Mark\n32,1,2,3,2\n"));
    EXPECT_EQ(rows("csv.mark,Mark").at("32"), "2,0") << "the name as an import gives it goes first";
}

// What all points of the first file have in common is not true of others.
TEST_F(Append, AColumnOfOneValueIsNotInventedForPointsWithoutIt) {
    make("x,y,z,q,zero\n1,1,1,5,0\n2,2,2,5,0\n");
    expectSuccess(append("x,y,z\n3,3,3\n"));
    const Rows all = rows("csv.q,csv.zero");
    ASSERT_EQ(all.size(), 3u);
    EXPECT_EQ(all.at("1"), "5,0");
    EXPECT_EQ(all.at("3"), "0,0");
}

TEST_F(Append, AFileWithoutPointsMakesADatabaseForThoseOfOthers) {
    LasBuilder builder(2, 0);
    builder.offset[1] = 4000000;
    expectSuccess("import " + folder.write("none.las", builder.build()) + " " + file);
    Bytes& point = builder.addPoint(-2147483647, 2147483647, 7);
    point[15] = 31;
    expectSuccess("import --append " + folder.write("one.las", builder.build()) + " " + file);
    EXPECT_EQ(rows("tarvo.xyz,tarvo.class"), (Rows{{"1", "-21474836.47,25474836.47,0.07,31"}}));
    // Flags and fields that no point of the first file had.
    EXPECT_EQ(definition("las.withheld")["maximum_value"].GetDouble(), 1);
    EXPECT_EQ(definition("las.user_data")["maximum_value"].GetDouble(), 255);
}

TEST_F(Append, ANumberForNoValueBecomesThatOfTheDatabase) {
    const auto las = [&](const std::string& name, std::int16_t noData, std::int16_t value) {
        LasBuilder builder(4, 0);
        builder.recordLength += 2;
        builder.addRecord("LASF_Spec", 4, LasBuilder::extraBytes(4, 1, "depth", 1, 0, noData));
        for (const std::int16_t depth : {noData, value}) {
            put(builder.addPoint(depth, 0, 0), 20, depth);
        }
        return folder.write(name, builder.build());
    };
    expectSuccess("import " + las("a.las", -9999, 5) + " " + file);
    expectSuccess("import --append " + las("b.las", 777, 6) + " " + file);
    EXPECT_EQ(rows("las.extra.depth"),
              (Rows{{"1", "-9999"}, {"2", "5"}, {"3", "-9999"}, {"4", "6"}}));
    // The same without such an attribute: old points have no value.
    expectSuccess("import --overwrite " + folder.write("c.csv", "x,y,z\n1.25,1,1\n") + " " + file);
    expectSuccess("import --append " + las("a.las", -9999, 5) + " " + file);
    EXPECT_EQ(rows("las.extra.depth"), (Rows{{"1", "-9999"}, {"2", "-9999"}, {"3", "5"}}));
}

TEST_F(Append, WhatDoesNotFitIsRefusedAndNothingChanges) {
    make("tarvo.id,x,y,z,tarvo.class,q\n1,1.25,2,3,4,0.5\n2,0,0,0,6,7\n");
    expectSuccess("attributes " + file + " add tarvo.rgba tarvo.deviation");
    const std::string before = everything();
    const std::size_t files = folder.count() + 1;  // with the table
    const std::string begin = "x,y,z,tarvo.class\n0,0,0,1\n";
    expectFailure(
        1, append(begin + "1,2,3,65536\n"),
        {"\"tarvo.class\" go from 1 to 65536; the database holds 0 to 65535",
         "attributes " + file + " show tarvo.class", "put --json", "--leave-out tarvo.class"});
    expectFailure(1, append(begin + "1,2,3,-1\n"), {"go from -1 to 1;"});
    expectFailure(1, append(begin + "1,2,3,1.5\n"),
                  {"\"tarvo.class\" can't hold 1 of the values, for example 1.5", "--round"});
    // The first column that holds one, and its first.
    expectFailure(1,
                  append("x,y,z,tarvo.rgba[0],tarvo.rgba[1]\n0,0,0,1,4.5\n0,0,0,2.5,2\n"
                         "0,0,0,3.5,3\n"),
                  {"\"tarvo.rgba\" can't hold 3 of the values, for example 2.5:"});
    expectFailure(1, append(begin + "1,2,3,65535.6\n", "--round"), {"65535.6"});
    expectFailure(1, append(begin + "1.125,2,3,1\n"),
                  {"\"tarvo.xyz\"", "1.125: its resolution is 0.01", "--round", "new database"});
    expectFailure(1, append(begin + "1,600000,3,1\n", "--round"),
                  {"\"tarvo.xyz\" go from 0 to 600000; the database holds -535000 to 535000",
                   "import all files into a new database"});
    // Every fault is told, one of an attribute with several elements too.
    expectFailure(1, append("x,y,z,tarvo.rgba[1],q\n0,0,0,256,2e20\n"),
                  {"\"tarvo.rgba\" go from 256 to 256", "\"csv.q\" go from 200000000000000000000"});
    expectFailure(1, append("x,y,z,tarvo.deviation\n1,1,1,-1\n1,1,1,-2\n"),
                  {"go from -2 to -2; the database holds -1 to 32767"});
    expectFailure(1, append("x,y,z,tarvo.rgba[4]\n0,0,0,1\n"), {"\"tarvo.rgba[4]\"", "length 4"});
    expectFailure(1, append("x,y,z,tarvo.class\n1,1,1,inf\n"), {"to inf;"});
    expectFailure(1, append("x,y,z,new\n1,1,1,inf\n"), {"\"csv.new\" contain infinite numbers"});
    expectFailure(1, append("tarvo.id,x,y,z\n3,1,1,1\n2,1,1,1\n"),
                  {"a point with the id 2 already", "--new-ids"});
    expectFailure(1, append("tarvo.id,x,y,z\n3,1,1,1\n3,1,1,1\n"), {"id 3", "--new-ids"});
    expectFailure(1, append("tarvo.id,x,y,z\n-3,1,1,1\n"), {"\"-3\" is no id"});
    expectFailure(1, append("tarvo.id,x,y,z\n,1,1,1\n"), {"has no id", "--new-ids"});
    expectFailure(1, append("x,y,z\n1,1,1\n1,,1\n"), {"no value of \"tarvo.xyz\""});
    expectFailure(1, append("x,y\n1,1\n"), {"\"tarvo.xyz\"", "\"x\", \"y\" and \"z\""});
    expectFailure(1, append("x,y,z\n1,1,no\n"), {"Line 2"});
    expectFailure(1, append("x,y,z\n1,1,1\n", folder.file("missing.las")), {"missing.las"});
    EXPECT_EQ(everything(), before);
    EXPECT_EQ(folder.count(), files) << "a file was left";
}

TEST_F(Append, RoundingHappensOnRequestOnly) {
    make("tarvo.id,x,y,z,tarvo.class,q\n1,1.25,2,3,4,0.5\n");
    const std::string table =
        "tarvo.id,x,y,z,tarvo.class,q\n2,0.004,0.006,-0.014,65535.4,0.26\n3,1,2,3,2.5,-0.1\n";
    expectFailure(1, append(table), {"--round"});
    // Not on the grid either: all but the coordinates and the class of the second point.
    expectFailure(1, append(table, "--round"), {"\"csv.q\" go from -0.1 to 0.26"});
    expectSuccess(append(table, "--round --leave-out csv.q"),
                  "2 points added, 5 values rounded.\n");
    EXPECT_EQ(rows("tarvo.xyz,tarvo.class"), (Rows{{"1", "1.25,2.00,3.00,4"},
                                                   {"2", "0.00,0.01,-0.01,65535"},
                                                   {"3", "1.00,2.00,3.00,3"}}));
    expectSuccess(append("x,y,z\n0.004,0,0\n", "--round"), "1 point added, 1 value rounded.\n");
}

// Steps without a decimal grid in common: the bound that is told must hold, and nothing moves
// unsaid.
TEST_F(Append, CoordinatesThatMoveSayByHowMuchAtMost) {
    const std::string note = "they move by up to ";
    const auto import = [&](const std::string& name, double scale, double shift,
                            const std::string& options) {
        LasBuilder builder(2, 0);
        for (double& axis : builder.scale)
            axis = scale;
        for (std::size_t i = 0; i < 3; ++i)
            builder.offset[i] = shift * static_cast<double>(i);
        for (std::int32_t raw = -1000; raw < 1000; ++raw)
            builder.addPoint(raw * 997, raw * 991, raw);
        const Result result =
            run("import " + options + folder.write(name, builder.build()) + " " + file);
        EXPECT_EQ(result.code, 0) << result.output;
        const std::size_t at = result.output.find(note);
        const double bound =
            at == std::string::npos ? 0 : std::atof(result.output.c_str() + at + note.size());
        std::istringstream lines(run("select --format csv -a tarvo.id,tarvo.xyz " + file).output);
        double farthest = 0;
        std::string line;
        std::getline(lines, line);
        while (std::getline(lines, line)) {
            std::istringstream numbers(line);
            double id = 0, value = 0;
            char comma = 0;
            numbers >> id;
            const double raw = std::fmod(id - 1, 2000) - 1000;
            for (std::size_t i = 0; i < 3; ++i) {
                numbers >> comma >> value;
                const double factor = i == 0 ? 997 : i == 1 ? 991 : 1;
                farthest = std::max(farthest,
                                    std::abs(value - (raw * factor * scale + builder.offset[i])));
            }
        }
        EXPECT_LE(farthest, std::max(bound * 1.01, 1e-9)) << name;
        return bound;
    };
    EXPECT_GT(import("third.las", 1.0 / 3, 100, "--overwrite "), 1e-8);
    EXPECT_GT(import("third.las", 1.0 / 3, 100, "--append "), 1e-8);
    EXPECT_EQ(import("alike.las", 1.0 / 3, 0, "--overwrite "), 0) << "on the steps of the file";
    EXPECT_EQ(import("decimal.las", 0.025, 100.003, "--overwrite "), 0);
    EXPECT_GT(import("noise.las", 0.01, 674521.9200134277, "--overwrite "), 1e-9);
}

TEST_F(Append, LargeWholeNumbersStayExact) {
    make("tarvo.id,x,y,z,n,f\n1,0,0,0,9223372036854775807,0.3333333333333333\n");
    expectSuccess(append("tarvo.id,x,y,z,n\n9223372036854775806,0,0,0,9223372036854775805\n"));
    EXPECT_EQ(rows("csv.n"),
              (Rows{{"1", "9223372036854775807"}, {"9223372036854775806", "9223372036854775805"}}));
    EXPECT_EQ(definition("csv.f")["resolution"].GetDouble(), 0);
    expectSuccess(append("x,y,z,f\n0,0,0,0\n", "--leave-out csv.f"));
    // A double has no place for the last digit.
    expectSuccess("attributes " + file + " add tarvo.voxel_linear_sums");
    expectFailure(1, append("x,y,z,tarvo.voxel_linear_sums[0]\n0,0,0,9007199254740993\n"),
                  {"floating-point"});
    expectSuccess(append("x,y,z,tarvo.voxel_linear_sums[0]\n0,0,0,9007199254740992\n"));
}

TEST_F(Append, IdsAreKeptOrGivenAnew) {
    const std::string table = "tarvo.id,x,y,z\n5,1,0,0\n6,2,0,0\n";
    make(table);
    expectFailure(1, append(table), {"id 5", "--new-ids"});
    expectSuccess(append(table, "--new-ids"));
    expectSuccess(append(table, "--leave-out tarvo.id"));
    EXPECT_EQ(rows("tarvo.xyz[0]"),
              (Rows{{"5", "1"}, {"6", "2"}, {"7", "1"}, {"8", "2"}, {"9", "1"}, {"10", "2"}}));
    expectSuccess(append("tarvo.id,x,y,z\n1,3,0,0\n100,4,0,0\n"));
    expectSuccess(append("x,y,z\n5,0,0\n"));
    EXPECT_EQ(rows("tarvo.xyz[0]").at("101"), "5");
}

TEST_F(Append, MetadataThatDiffersGetsANumber) {
    LasBuilder builder(2, 0);
    builder.addPoint(1, 2, 3);
    const std::string one = folder.write("one.las", builder.build());
    builder.addRecord("LASF_Projection", 2112, Bytes(30, 'w'));
    builder.addPoint(1, 2, 3);
    const std::string two = folder.write("two.las", builder.build());
    expectSuccess("import " + one + " " + file);
    const std::size_t own = json("metadata " + file + " --json").Size();
    const std::string header = run("metadata " + file + " get las.header").output;
    expectSuccess("import --append " + one + " " + file);
    EXPECT_EQ(json("metadata " + file + " --json").Size(), own) << "the same items again";
    expectSuccess("import --append " + two + " " + one + " " + two + " " + file);
    EXPECT_GT(json("metadata " + file + " --json").Size(), own + 1);
    EXPECT_EQ(run("metadata " + file + " get las.header").output, header);
    EXPECT_NE(run("metadata " + file + " get las.header.2").output, header);
    EXPECT_EQ(run("metadata " + file + " get las.header.3").code, 1);
    expectSuccess("select --count " + file, "7\n");
}

TEST_F(Append, OneTransactionSignedAndTitled) {
    make("x,y,z\n1,2,3\n");
    const std::string key = folder.write("key", "00 11 ff");
    expectSuccess(append("x,y,z\n1,2,3\n"));
    const rapidjson::Document plain = json("transactions " + file + " show --json");
    EXPECT_STREQ(plain["title"].GetString(), "Import");
    EXPECT_STREQ(plain["agent"].GetString(), "qrbtool " QRB_TEST_VERSION);
    expectSuccess(
        append("x,y,z,q\n1,2,3,4\n", "--title 'Second flight' --comment windy --key-file " + key));
    const rapidjson::Document list = json("transactions " + file + " --json");
    ASSERT_EQ(list.Size(), 4u);
    const rapidjson::Document last = json("transactions " + file + " show 4 --json");
    EXPECT_STREQ(last["title"].GetString(), "Second flight");
    EXPECT_STREQ(last["comments"].GetString(), "windy");
    rapidjson::Document settings;
    settings.Parse(last["settings"].GetString());
    ASSERT_TRUE(settings.IsObject()) << last["settings"].GetString();
    EXPECT_STREQ(settings["inputs"][0].GetString(), "table.csv");
    EXPECT_TRUE(settings["append"].GetBool());
    expectSuccess("changelog " + file + " verify --entry 4 --key 0011ff");
    expectFailure(1, "changelog " + file + " verify --entry 4 --key 0011fe", {"No valid"});
    expectFailure(1, "changelog " + file + " verify --entry 3 --key 0011ff", {"No valid"});
    expectFailure(2, append("x,y,z\n1,2,3\n", "--key ''"), {"The key is empty"});
    // A new database can be signed too.
    expectSuccess("import --overwrite --key 0a " + folder.file("table.csv") + " " + file);
    expectSuccess("changelog " + file + " verify --entry 2 --key 0a");
}

TEST_F(Append, TheCommandLineMustMakeSense) {
    const std::string table = folder.write("t.csv", "x,y,z\n1,2,3\n");
    const std::string import = "import " + table + " " + file;
    expectFailure(1, import + " --append", {"There is no file", "Leave --append out"});
    EXPECT_FALSE(std::filesystem::exists(file));
    expectSuccess(import);
    expectFailure(1, import, {"exists already", "--append", "--overwrite"});
    expectFailure(2, import + " --append --overwrite", {"--overwrite"});
    expectFailure(2, import + " --append --primary tarvo.xyz", {"--primary"});
    expectFailure(2, import + " --round --overwrite", {"--append"});
    expectFailure(2, import + " --only-known --overwrite", {"--append"});
    expectFailure(2, import + " --append --leave-out tarvo.nir", {"\"tarvo.nir\""});
    expectFailure(2, import + " --overwrite --leave-out tarvo.nir", {"\"tarvo.nir\""});
    expectFailure(2, import + " --overwrite --leave-out tarvo.xyz", {"can't be left out"});
    expectFailure(2, "import " + file + " " + file + " --append", {"an input and the output"});
    expectFailure(1, "import " + file + " " + table + " --append", {"not a point-cloud database"});
    expectSuccess("select --count " + file, "1\n");
}

TEST_F(Append, WithinATransactionItIsUndoneWithTheRest) {
    make("tarvo.id,x,y,z,tarvo.class\n1,1,2,3,1\n");
    const std::string table =
        folder.write("new.csv", "tarvo.id,x,y,z,tarvo.class\n2,1,2,3,70000\n");
    const std::string before = everything();
    const std::string begin = "transactions run " + file + " --title T -- ";
    expectFailure(1, begin + "'update --set tarvo.class=3' 'import " + table + " --append'",
                  {"70000"});
    expectFailure(2, begin + "'import " + table + "'", {"--append is required"});
    EXPECT_EQ(everything(), before);
    // What the steps before it changed counts.
    std::string definition = run("attributes " + file + " show tarvo.class --json").output;
    const std::string old = "\"maximum_value\":65535.0";
    ASSERT_NE(definition.find(old), std::string::npos) << definition;
    definition.replace(definition.find(old), old.size(), "\"maximum_value\":100000");
    const std::string wider = folder.write("wider.json", definition);
    const Result done = run(begin + "'attributes put --json " + wider + "' 'import " + table +
                            " --append' 'update --set tarvo.class=5 --filter tarvo.class<9'");
    EXPECT_EQ(done.code, 0) << done.output;
    EXPECT_NE(done.output.find("1 point added.\n1 point changed.\n"), std::string::npos)
        << done.output;
    EXPECT_EQ(rows("tarvo.class"), (Rows{{"1", "5"}, {"2", "70000"}}));
}

TEST_F(Append, StopsAndFullDisksLeaveTheDatabaseAsItWas) {
    LasBuilder builder(2, 0);
    for (std::int32_t i = 0; i < 100000; ++i) {
        put(builder.addPoint(i * 7919 % 100003, i, i % 997), 12, static_cast<std::uint16_t>(i));
    }
    const std::string cloud = folder.write("cloud.las", builder.build());
    expectSuccess("import " + cloud + " " + file);
    const std::string before = everything();
    const auto blocks = std::filesystem::file_size(file) / 1024 + 20;
    const Result full =
        runShell("bash -c 'trap \"\" XFSZ; ulimit -f " + std::to_string(blocks) +
                 "; exec " QRBTOOL_FILE " import " + cloud + " " + file + " --append'");
    EXPECT_EQ(full.code, 1);
    EXPECT_NE(full.output.find("free some space"), std::string::npos) << full.output;
    EXPECT_EQ(everything(), before);
    std::string import = "import";
    for (int i = 0; i < 120; ++i) {  // long enough to be reached by the signals
        import += " " + cloud;
    }
    import += " " + file + " --append";
    // The files are looked at for about a second; then points are inserted.
    for (const char* const seconds : {"0.2", "2.5"}) {
        const Result stopped = runShell("timeout --foreground -s INT " + std::string(seconds) +
                                        " " QRBTOOL_FILE " " + import);
        EXPECT_NE(stopped.code, 0);
        EXPECT_NE(stopped.output.find("Interrupted."), std::string::npos) << stopped.output;
    }
    EXPECT_NE(runShell("timeout -s KILL 2.5 " QRBTOOL_FILE " " + import).code, 0);
    EXPECT_EQ(everything(), before);
    expectSuccess("import " + cloud + " " + file + " --append", "100000 points added.\n");
    expectSuccess("select --count " + file, "200000\n");
}

TEST_F(Append, AnotherProcessThatChangesTheDatabaseIsNamed) {
    make("x,y,z\n1,2,3\n");
    const std::string table = folder.write("t.csv", "x,y,z\n1,2,3\n");
    const std::string pipe = folder.file("pipe");
    // The other process waits for the pipe with its transaction begun.
    const Result result =
        runShell("mkfifo " + pipe + "; " QRBTOOL_FILE " transactions run " + file +
                 " --title T -- 'metadata set a @" + pipe + "' & exec 3> " + pipe +
                 "; " QRBTOOL_FILE " import " + table + " " + file +
                 " --append; echo code $?; echo 1 >&3; exec 3>&-; wait");
    EXPECT_NE(result.output.find("Another program is changing the database"), std::string::npos)
        << result.output;
    EXPECT_NE(result.output.find("code 1\n"), std::string::npos) << result.output;
    expectSuccess("select --count " + file, "1\n");
    expectSuccess("metadata " + file + " get a", "1\n");
}

// A LAS file of one half of the points of another one; false: it is too small to have halves.
bool writePart(const std::string& from, const std::string& to, bool firstHalf) {
    std::ifstream stream(from, std::ios::binary);
    std::string bytes((std::istreambuf_iterator<char>(stream)), {});
    const auto number = [&](std::size_t at, std::size_t size) {
        std::uint32_t value = 0;
        std::memcpy(&value, bytes.data() + at, size);
        return value;
    };
    const std::uint32_t begin = number(96, 4);
    const std::uint32_t length = number(105, 2);
    const std::uint32_t count = number(107, 4);
    const std::uint32_t half = count / 2;
    const std::uint32_t kept = firstHalf ? half : count - half;
    std::string points = bytes.substr(begin + (firstHalf ? 0 : half) * length, kept * length);
    bytes.resize(begin);
    std::memcpy(bytes.data() + 107, &kept, 4);
    if (bytes[25] == 4) {
        std::memset(bytes.data() + 247, 0, 8);
        std::memcpy(bytes.data() + 247, &kept, 4);
    }
    std::ofstream(to, std::ios::binary) << bytes << points;
    return half > 0;
}

TEST_F(Append, HalvesOfRealCloudsMakeTheWhole) {
    forEachRealCloud([&](const std::filesystem::path& path) {
        const std::string cloud = path.string();
        if (!writePart(cloud, folder.file("1.las"), true) ||
            !writePart(cloud, folder.file("2.las"), false)) {
            return;
        }
        expectSuccess("import --overwrite " + cloud + " " + file);
        std::string names;
        const rapidjson::Document attributes = json("attributes " + file + " --json");
        for (const auto& one : attributes.GetArray()) {
            const std::string name = one["name"].GetString();
            names += name == "tarvo.id" ? "" : (names.empty() ? "" : ",") + name;
        }
        const Rows whole = rows(names);
        expectSuccess("import --overwrite " + folder.file("1.las") + " " + file);
        expectSuccess("import --append " + folder.file("2.las") + " " + file);
        const Rows halves = rows(names);
        EXPECT_EQ(halves.size(), whole.size());
        EXPECT_TRUE(halves == whole) << "values differ";
    });
}

}  // namespace
