// Which files an import reads: by their content, out of folders, from standard input.
#include "tests/cli/commandtest.h"

namespace {

using namespace tarvo::cli::tests;

class Inputs : public CommandTest {
protected:
    std::string points() const {
        return expectSuccess("select " + file + " --format csv -a tarvo.xyz[0]");
    }
    const std::string ply =
        "ply\nformat ascii 1.0\nelement vertex 1\nproperty int x\nproperty int y\n"
        "property int z\nelement face 1\nproperty list uchar int f\nend_header\n1 2 3\n0\n";
};

TEST_F(Inputs, AFolderIsReadByContentAndName) {
    const std::string clouds = folder.file("clouds");
    std::filesystem::create_directories(clouds + "/below");
    folder.write("clouds/c.dat", "7 8 9\n");
    folder.write("clouds/a.txt", ply);
    folder.write("clouds/b.las", "y,x,z\n4,5,6\n");
    folder.write("clouds/readme.txt", "A note, and no cloud\n");
    folder.write("clouds/empty", "");
    folder.write("clouds/below/d.xyz", "1 2 3\n");
    const std::string told = expectSuccess("import " + clouds + " " + file);
    EXPECT_NE(told.find("below, empty, readme.txt."), std::string::npos) << told;
    EXPECT_NE(told.find("1 of the element \"face\""), std::string::npos) << told;
    EXPECT_EQ(points(), "tarvo.xyz[0]\n1\n5\n7\n");
    expectSuccess("import --append --format text " + clouds + " " + file);
    EXPECT_EQ(points(), "tarvo.xyz[0]\n1\n5\n7\n7\n");
    // The database stands in the folder.
    expectSuccess("import " + clouds + " " + clouds + "/all.qrbx");
    expectSuccess("import --append " + clouds + " " + clouds + "/all.qrbx");
    expectFailure(1, "import " + clouds + "/below/.. " + clouds + "/readme.txt",
                  "not a point-cloud database");
    std::filesystem::create_directories(folder.file("none"));
    expectFailure(1, "import " + folder.file("none") + " " + file + " --append", "no point cloud");
}

TEST_F(Inputs, ManyFilesNeedFewOpenOnes) {
    constexpr int files = 200;
    std::filesystem::create_directories(folder.file("clouds"));
    expectSuccess("import " + folder.write("a.xyz", "1000 2 3\n") + " " + file);
    expectSuccess("export " + file + " " + folder.file("a.laz"));
    std::vector<double> expected;
    for (int i = 0; i < files; ++i) {
        const std::string name = "clouds/" + std::to_string(1000 + i);
        if (i % 3 == 0) {
            std::filesystem::copy_file(folder.file("a.laz"), folder.file(name + ".laz"));
        } else {
            folder.write(name, i % 3 == 1 ? ply : std::to_string(i) + " 2 3\n");
        }
        expected.push_back(i % 3 == 0 ? 1000 : i % 3 == 1 ? 1 : i);
    }
    const auto importLimited = [&](const std::string& words) {
        const Result result = runShell("ulimit -n 64 && " QRBTOOL_FILE " import " + words + " " +
                                       folder.file("clouds") + " " + file);
        EXPECT_EQ(result.code, 0) << result.output;
        // Each has told of its faces.
        std::size_t notes = 0;
        for (std::size_t at = 0; (at = result.output.find("\"face\"", at)) != std::string::npos;
             ++at) {
            ++notes;
        }
        EXPECT_EQ(notes, 67u);
    };
    const auto expectPoints = [&](const std::vector<double>& wanted) {
        std::istringstream text(points());
        std::vector<double> found;
        std::string line;
        std::getline(text, line);
        while (std::getline(text, line)) {
            found.push_back(std::stod(line));
        }
        std::ranges::sort(found);
        EXPECT_EQ(found, wanted);
    };
    std::ranges::sort(expected);
    importLimited("--overwrite");
    expectPoints(expected);
    importLimited("--append");
    for (int i = 0; i < files; ++i) {
        expected.push_back(expected[static_cast<std::size_t>(i)]);
    }
    std::ranges::sort(expected);
    expectPoints(expected);
}

TEST_F(Inputs, WhatIsWrongWithThemIsToldFirst) {
    const std::string input = folder.write("a.xyz", "1 2 3\n");
    const std::string told = expectSuccess("import " + input + " " + file);
    const std::string line = "qrbtool: 1 point imported into \"" + file + "\" in ";
    EXPECT_EQ(told.substr(0, line.size()), line) << told;
    EXPECT_EQ(told.substr(told.size() - 4), " s.\n") << told;
    expectFailure(1, "import " + input + " " + file, "exists already");
    expectFailure(1, "import no.las " + input + " " + file, "no.las");
    expectFailure(1, "import --format las no.las " + file, "no.las");
    expectFailure(1, "import " + folder.write("a.ply", ply) + " --columns x,y,z " + file,
                  "tells by itself");
    expectFailure(2, "import " + input + " --leave-out no.such " + file, "no.such");
    expectFailure(1, "import " + input + " --primary no.such " + file, "no.such");
    expectFailure(2, "import " + input + " --leave-out tarvo.xyz " + file, "can't be left out");
}

TEST_F(Inputs, StandardInputIsReadOnce) {
    const std::string input = folder.write("input", ply);
    const std::size_t before = folder.count();
    const auto piped = [&](const std::string& words) {
        return runShell(std::string(QRBTOOL_FILE) + " " + words + " < " + input);
    };
    EXPECT_EQ(piped("import - " + file).code, 0);
    EXPECT_EQ(piped("import --append - " + file).code, 0);
    EXPECT_EQ(points(), "tarvo.xyz[0]\n1\n1\n");
    const Result twice = piped("import --append - - " + file);
    EXPECT_EQ(twice.code, 2);
    EXPECT_NE(twice.output.find("once"), std::string::npos) << twice.output;
    EXPECT_EQ(folder.count(), before + 1);
}

TEST_F(Inputs, ColumnsAreMapped) {
    const std::string text = folder.write("points.xyz", "1 2 3 40 5\n6 7 8 90 1\n");
    expectSuccess("import " + text + " " + file +
                  " --map \"column 4=tarvo.reflectance\" --map text.column_5=-");
    EXPECT_EQ(expectSuccess("select " + file + " --format csv -a tarvo.reflectance"),
              "tarvo.reflectance\n40.00\n90.00\n");
    EXPECT_NE(expectSuccess("transactions " + file + " show 2").find("column 4=tarvo.reflectance"),
              std::string::npos);
    const std::string more = folder.write("more.csv", "x,y,z,Echo\n1,1,1,70\n");
    expectSuccess("import " + more + " " + file + " --append --map Echo=tarvo.reflectance");
    EXPECT_EQ(expectSuccess("select " + file + " --format csv -a tarvo.reflectance"),
              "tarvo.reflectance\n40.00\n90.00\n70.00\n");
    expectFailure(1, "import " + more + " " + file + " --append --map echo=own.a",
                  "\"z\", \"Echo\".");
    expectFailure(2, "import " + more + " " + file + " --append --map Echo", "COLUMN=ATTRIBUTE");
}

// Nobody writes to the pipe and nobody closes it.
TEST_F(Inputs, WaitingForStandardInputCanBeInterrupted) {
    const std::string pipe = folder.file("pipe");
    const Result result = runShell(
        "mkfifo " + pipe + " && timeout --foreground -k 20 -s INT 1 " QRBTOOL_FILE " import - " +
        file + " <> " + pipe);
    EXPECT_EQ(result.code, 124) << result.output;
    EXPECT_FALSE(std::filesystem::exists(file));
}

TEST_F(Inputs, WhatIsNoPointCloudIsNamed) {
    expectSuccess("import " + folder.write("a.xyz", "1 2 3\n") + " " + file);
    const auto expectNone = [&](const std::string& bytes, const std::string& text) {
        expectFailure(1, "import " + folder.write("other", bytes) + " " + folder.file("new.qrbx"),
                      text);
        EXPECT_FALSE(std::filesystem::exists(folder.file("new.qrbx")));
    };
    expectNone(read(file), "a database file");
    expectNone("", "empty");
    expectNone("PK\3\4 and more", "ZIP");
    expectNone(std::string("1\0 \0002\0 \0003\0\n\0", 12), "UTF-16");
    expectNone("1 2 3\n4 5 nan\n", "no value of the primary attribute");
    expectNone("1 2 3\n4 5 inf\n", "infinite");
    // Nothing is left that an import could not do without.
    const std::string endless = folder.write("inf.csv", "x,y,z,my.a\n1,2,3,inf\n");
    expectFailure(1, "import " + endless + " " + folder.file("new.qrbx"), "--leave-out my.a");
    expectSuccess("import --leave-out my.a " + endless + " " + folder.file("new.qrbx") +
                  " --overwrite");
    std::filesystem::remove(folder.file("new.qrbx"));
    expectNone("9\n1 2 3\n", "1 of 9 points");
    const std::string many = folder.file("many");
    std::filesystem::create_directory(many);
    folder.write("many/a.xyz", "1 2 3\n");
    folder.write("many/b.xyz", "1 2 3\n4 5\n");
    expectFailure(1, "import " + many + " " + folder.file("new.qrbx"), "To go without this file");
    expectFailure(1, "info " + folder.file("a.xyz"), "\"qrbtool import\" makes a database of it");
    const std::string longName = folder.file(std::string(248, 'n') + ".qrbx");
    std::filesystem::copy_file(file, longName);
    expectFailure(1, "import " + folder.file("a.xyz") + " " + longName + " --append",
                  "has 253 bytes, too many");
    expectNone("Made by hand\n1 2 3 4\n", "A text without names begins with numbers.");
    expectNone("x,y,z\n1,2,\xff\n", "\"?\" in the column");
    // Of a field as long as a file the beginning is told.
    const Result far =
        run("import " + folder.write("far.csv", "x,y,z\n1,2," + std::string(100'000, 'a')) + " " +
            folder.file("new.qrbx"));
    EXPECT_EQ(far.code, 1);
    EXPECT_NE(far.output.find("aaa...\" in the column \"z\""), std::string::npos);
    EXPECT_LT(far.output.size(), 1000U);
    EXPECT_NE(run("import " + folder.write("gap.csv", "x,y,z,my.a[0],my.a[2]\n1,2,3,4,5\n") + " " +
                  folder.file("gap.qrbx"))
                  .output.find("no column holds my.a[1]"),
              std::string::npos);
    expectFailure(1,
                  "import --columns x,y,z " + folder.write("a.ply", ply) + " " + file + " --append",
                  "to texts without a header line");
    expectFailure(2, "import --format dxf " + folder.file("a.ply") + " " + file, "dxf");
}

TEST_F(Inputs, WholeNumbersOfTheWidestTypeAreKept) {
    const std::string table = "x,y,z,b\n1,2,3,-1\n4,5,6,9223372036854775807\n";
    expectSuccess("import " + folder.write("wide.csv", table) + " " + file);
    expectSuccess("select " + file + " -a csv.b --format csv", "csv.b\n-1\n9223372036854775807\n");
    std::string header = "x,y,z";
    for (int i = 0; i < 4096; ++i) {
        header += ",c" + std::to_string(i);
    }
    expectFailure(
        1,
        "import " + folder.write("very.csv", header + "\n1,2,3\n") + " " + folder.file("new.qrbx"),
        "4097 attributes");
}

TEST_F(Inputs, ColumnsOfATextAreNamed) {
    const std::string text = folder.write("a.txt", "7;1,5;2;3;250\n8;4;5;6;251\n");
    expectSuccess("import --columns -,x,y,z,my.value " + text + " " + file);
    EXPECT_EQ(
        expectSuccess("select " + file + " --format csv -a tarvo.xyz,my.value"),
        "tarvo.xyz[0],tarvo.xyz[1],tarvo.xyz[2],my.value\n1.5,2.0,3.0,250\n4.0,5.0,6.0,251\n");
    expectSuccess("import --append --columns my.value,x,y,z,- " + text + " " + file);
    EXPECT_EQ(expectSuccess("select " + file + " --format csv -a my.value --filter 'tarvo.id > 2'"),
              "my.value\n7\n8\n");
    EXPECT_NE(expectSuccess("changelog " + file).find("my.value"), std::string::npos);
}

}  // namespace
