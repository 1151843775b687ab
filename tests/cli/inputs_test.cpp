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
    expectNone("9\n1 2 3\n", "1 of 9 points");
    expectFailure(1,
                  "import --columns x,y,z " + folder.write("a.ply", ply) + " " + file + " --append",
                  "to texts without a header line");
    expectFailure(2, "import --format dxf " + folder.file("a.ply") + " " + file, "dxf");
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
