#include "exchange/format.h"
#include "tests/exchange/sourcetest.h"

#include <algorithm>
#include <cmath>

namespace {

using namespace tarvo::exchange;
using namespace tarvo::exchange::tests;

class Text : public SourceTest {};

TEST_F(Text, SeparatorsCommentsAndDecimalCommasAreUnderstood) {
    for (const std::string text :
         {"1.5 -2 3 4\n5 6 7 8\n", "\t1.5\t-2   3 4  \r\n# a\n\n5 6 7 8", "1,5 -2 3 4\n5 6 7 8\n",
          "1,5;-2;3;4\n5;6;7;8\n", "1.5,-2,3,4\n5,6,7,8\n", "1.5, -2, 3, 4\n5, 6, 7, 8\n",
          "// a, b\n  # c\n2\n1.5 -2 3 4\n5 6 7 8\n", "1\n1.5 -2 3 4\n1\n5 6 7 8\n",
          "\xef\xbb\xbf\x31.5 -2 3 4\n5 6 7 8", "# made\nx,y,z,intensity\n1.5,-2,3,4\n5,6,7,8\n",
          "x y z intensity\n1.5 -2 3 4\n5 6 7 8\n", "15e-1 -2 3 4\n5 6 7 +8\n",
          "% made\n; by hand\n1.5 -2 3 4 # a\n5 6 7 8\t# b c\n",
          "x;y;z;tarvo.intensity\n1,5;-2;3;4\n5;6;7;8\n",
          "x,y,z,tarvo.intensity\n\"1,5\",-2,3,\"4,0\"\n5,6,7,8\n",
          "; x y\nX Y Z intensity\n1,5 -2 3 4\n5 6 7 8\n"}) {
        Table table = read(text);
        EXPECT_EQ(table["tarvo.xyz[0]"], (std::vector<double>{1.5, 5})) << text;
        EXPECT_EQ(table["tarvo.xyz[1]"], (std::vector<double>{-2, 6})) << text;
        EXPECT_EQ(table["tarvo.intensity"], (std::vector<double>{4, 8})) << text;
        EXPECT_EQ(table.size(), 4u) << text;
        EXPECT_EQ(notes, "") << text;
    }
}

TEST_F(Text, ColumnsAreNamedByTheirNumberOrByTheUser) {
    const auto names = [&](const std::string& text, const std::vector<std::string>& columns = {}) {
        std::string all;
        for (const auto& [name, values] : read(text, columns)) {
            all += name + " ";
        }
        return all;
    };
    const std::string xyz = "tarvo.xyz[0] tarvo.xyz[1] tarvo.xyz[2] ";
    const std::string rgb = "tarvo.rgba[0] tarvo.rgba[1] tarvo.rgba[2] ";
    const std::string normal =
        "tarvo.surface_normal[0] tarvo.surface_normal[1] tarvo.surface_normal[2] ";
    EXPECT_EQ(names("1 2 3\n"), xyz);
    EXPECT_EQ(names("1 2 3 4 5\n"), xyz + "text.column_4 text.column_5 ");
    EXPECT_NE(notes.find("further columns mean"), std::string::npos);
    EXPECT_EQ(names("1 2 3 4 5 6\n"), rgb + xyz);
    EXPECT_EQ(names("1 2 3 .4 5 6\n"), xyz + "text.column_4 text.column_5 text.column_6 ")
        << "no colours";
    EXPECT_EQ(names("1 2 3 4 5 6 7\n"), "tarvo.intensity " + rgb + xyz);
    EXPECT_EQ(names("1 2 3 4 5 6 7 0 0 1\n"), "tarvo.intensity " + rgb + normal + xyz);
    EXPECT_EQ(names("1 2 3 4 5\n", {"y", "x", "-", "Z", "My value"}), xyz + "text.my_value ");
    EXPECT_EQ(names("1 2 3 9 5\n", {"x", "y", "z", "tarvo.id", "tarvo.rgba[3]"}),
              "tarvo.id tarvo.rgba[3] " + xyz);
    EXPECT_NE(failure("1 2 3\n", {"x", "y"}).find("3 columns, but 2"), std::string::npos);
    EXPECT_NE(failure("1 2 3\n", {"x", "y", "x"}).find("twice"), std::string::npos);
    EXPECT_NE(failure("x,y,z\n1,2,3\n", {"x", "y", "z"}).find("without a header line"),
              std::string::npos);
}

TEST_F(Text, FaultsAreNamedByLine) {
    expectFailure("1 2 3\n4 5\n", "Line 2");
    expectFailure("1 2 3\n4 5 a\n", "Line 2");
    expectFailure("1 2 3\n4 5 a\n", "\"a\"");
    expectFailure("1,5 2 3\n4.5 5 6\n", "points and commas");
    expectFailure("x;y;z\n1,5;2;3\n4.5;5;6\n", "points and commas");
    expectFailure("x,y,z\n\"1,234\",2,3\n", "\"1,234\"");
    for (const char* const words : {"Made, by hand\n1,2,3\n", "# a\nx y z and more\n1 2 3\n"})
        expectFailure(words, "taken for the names");
    expectFailure("3\n1 2 3\n4 5 6\n", "2 of 3 points");
    expectFailure("99999999999999999999\n1 2 3\n", "");
    expectFailure("# nothing\n7\n", "");
    read("1\n1 2 3\n4 5 6\n");
    EXPECT_NE(notes.find("1 point is announced; all 2"), std::string::npos) << notes;
    Table table = read("1;2;3;\n1;2;3;4\n");
    EXPECT_TRUE(std::isnan(table["tarvo.intensity"][0])) << "no value";
    expectSurvival("3\n1,5;2;3;4\n#\n1;2;3;4\n7;8;9;10\n");
}

// Batches and the reader's pieces end anywhere.
TEST_F(Text, LongFilesAreReadInBatches) {
    std::string text;
    for (int i = 0; i < 200000; ++i) {
        text += std::to_string(i) + ".25 1 2\n";
    }
    Table table = read(text);
    ASSERT_EQ(table["tarvo.xyz[0]"].size(), 200000u);
    EXPECT_EQ(table["tarvo.xyz[0]"][199999], 199999.25);
}

// They are seen whole before a point comes: whoever waits can stop it there, and only there.
TEST_F(Text, OpeningTellsItsProgressAndCanBeEnded) {
    struct Enough {};
    std::string lines;
    for (int i = 0; i < 200000; ++i) {
        lines += "1.25 2.5 3.75 0\n";
    }
    std::string table = "x,y,z,own\n" + lines;
    std::replace(table.begin(), table.end(), ' ', ',');
    const std::string scan =
        "200000\n1\n0 0 0\n1 0 0\n0 1 0\n0 0 1\n1 0 0 0\n0 1 0 0\n0 0 1 0\n0 0 0 1\n" + lines;
    for (const std::string& text : {lines, table, scan}) {
        const std::string name = folder.write("long", text);
        std::vector<double> told;
        const auto source =
            openSource(name, {}, {}, [&](double fraction) { told.push_back(fraction); });
        ASSERT_GT(told.size(), 2u);
        EXPECT_GT(told.back(), 0.5);
        EXPECT_LE(told.back(), 1);
        const std::size_t atOpening = told.size();
        EXPECT_GT(source->next(), 0u);
        EXPECT_EQ(told.size(), atOpening);
        const OpenProgress stop = [](double fraction) {
            if (fraction > 0.2) {
                throw Enough();
            }
        };
        EXPECT_THROW(openSource(name, {}, {}, stop), Enough);
    }
}

TEST_F(Text, KindsAreToldByContent) {
    const auto kind = [](const std::string& text) {
        const FileKind found = kindOf(text);
        return found.format + (found.isCertain ? "!" : "?") + found.what;
    };
    EXPECT_EQ(kind("LASF"), "las!");
    EXPECT_EQ(kind("ply\r\nformat"), "ply!");
    EXPECT_EQ(kind("ASTM-E57"), "e57!");
    EXPECT_EQ(kind("2\n3\n0 0 0\n1 0 0\n0 1 0\n0 0 1\n1 0 0 0\n0 1 0 0\n0 0 1 0\n0 0 0 1\n"),
              "ptx!");
    EXPECT_EQ(kind("2\n1 2 3\n"), "text!");
    EXPECT_EQ(kind("a,X,y,\"z\"\n"), "csv!");
    EXPECT_EQ(kind("# made\nx;y;z\n"), "text!");
    EXPECT_EQ(kind("X Y Z i\n1 2 3 4\n"), "text!");
    EXPECT_EQ(kind("# Notes\nSome words, and more\n").substr(0, 4), "csv?");
    EXPECT_EQ(kind(""), "!an empty file");
    EXPECT_EQ(kind(std::string("SQLite format 3\0abc", 19)), "!a database file");
    EXPECT_EQ(kind("PK\3\4abc"), "!a ZIP archive");
    EXPECT_EQ(kind("%PDF-1.4"), "!a PDF document");
    EXPECT_EQ(kind("# .PCD v.7\nVERSION .7\n"), "!a PCD file");
    for (const char* const text : {"x,y,z\r1,2,3\r", "ply\rformat ascii 1.0\r"})
        EXPECT_EQ(kind(text), "!a text whose lines end with carriage returns alone");
    EXPECT_EQ(kind(std::string("\xff\xfe"
                               "1\0 \0",
                               6)),
              "!a text in UTF-16");
    EXPECT_EQ(kind(std::string("1\0 \0002\0 \0003\0\n\0", 12)), "!a text in UTF-16");
    EXPECT_EQ(kind(std::string("\1\2\3\4", 4)), "!not of a format that is known");
}

TEST_F(Text, RealFilesHaveTheirPoints) {
    if (realFile("").empty()) {
        GTEST_SKIP() << "QRB_TEST_DATA names no folder of real files.";
    }
    const auto table = [&](const char* name) { return realTable(name); };
    Table autzen = table("autzen.pts");
    EXPECT_EQ(autzen["tarvo.xyz[0]"].size(), 10u);
    EXPECT_EQ(autzen["tarvo.xyz[2]"][1], 512.009995);
    EXPECT_EQ(autzen["tarvo.intensity"][0], -1613);
    EXPECT_EQ(autzen["tarvo.rgba[2]"][2], 103);
    EXPECT_EQ(table("test.pts")["tarvo.xyz[0]"].size(), 19u);
    EXPECT_EQ(table("bunny_8.pts")["tarvo.xyz[0]"].size(), 9u) << "one more than it says";
    EXPECT_NE(notes.find("8 points"), std::string::npos);
    Table data = table("data.xyz");
    EXPECT_EQ(data["tarvo.xyz[1]"][0], 3751290);
    EXPECT_EQ(data.size(), 3u);
}

}  // namespace
