// The record in which a file of ours tells what its fields are: believed as a whole or not at all.

#include "exchange/las/ownrecord.h"
#include "exchange/las/source.h"
#include "tests/cli/folder.h"
#include "tests/exchange/lasbuilder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

namespace {

using namespace tarvo::exchange;
using namespace tarvo::exchange::tests;
using tarvo::cli::tests::Folder;

class OwnRecord : public testing::Test {
protected:
    // The attributes of a file of two extra dimensions and a record of ours with this text.
    std::vector<std::string> columnsWith(const std::string& text) {
        LasBuilder las(4, 1);
        Bytes extra = LasBuilder::extraBytes(3, 0, "first");
        const Bytes second = LasBuilder::extraBytes(5, 0, "second");
        extra.insert(extra.end(), second.begin(), second.end());
        las.addRecord("LASF_Spec", 4, extra);
        las.addRecord("qrbtool", 1, Bytes(text.begin(), text.end()));
        las.recordLength = 28 + 2 + 4;
        las.addPoint(1, 2, 3);
        const las::LasSource source(folder.write("a.las", las.build()));
        std::vector<std::string> names;
        for (const Column& column : source.columns()) {
            names.push_back(column.descriptor());
        }
        notes = source.notes();
        EXPECT_EQ(source.metaData().size(), 2u);  // the header and the description of extra bytes
        return names;
    }
    static std::string entry(const std::string& attribute, int element, int length) {
        return R"({"attribute":")" + attribute + R"(","element":)" + std::to_string(element) +
               R"(,"length":)" + std::to_string(length) + R"(,"title":"T","description":"D"})";
    }
    static std::string record(const std::string& entries, const std::string& absent = "") {
        return R"({"extra_bytes":[)" + entries + R"(],"absent":[)" + absent + "]}";
    }

    Folder folder;
    std::vector<std::string> notes;
};

TEST_F(OwnRecord, NamesExtraBytesAndDropsFieldsThatSayNothing) {
    const auto names = columnsWith(record(entry("my.pair", 0, 2) + "," + entry("my.pair", 1, 2),
                                          R"("tarvo.class","las.withheld","tarvo.xyz")"));
    EXPECT_TRUE(notes.empty());
    const std::vector<std::string> expected = {"tarvo.xyz[0]",         "tarvo.xyz[1]",
                                               "tarvo.xyz[2]",         "tarvo.intensity",
                                               "tarvo.target_index",   "tarvo.target_count",
                                               "tarvo.scan_direction", "las.edge_of_flight_line",
                                               "las.synthetic",        "las.key_point",
                                               "tarvo.scan_angle",     "las.user_data",
                                               "las.point_source_id",  "tarvo.timestamp",
                                               "my.pair[0]",           "my.pair[1]"};
    EXPECT_EQ(names, expected);
    // Extra bytes that hold more than the field of the point format stand in its place.
    const auto wide =
        columnsWith(record(entry("tarvo.intensity", 0, 1) + "," + entry("my.other", 0, 1)));
    EXPECT_EQ(std::count(wide.begin(), wide.end(), "tarvo.intensity"), 1);
    EXPECT_EQ(wide[wide.size() - 2], "tarvo.intensity");
}

TEST_F(OwnRecord, IsBelievedAsAWholeOrNotAtAll) {
    const auto plain = columnsWith("");
    ASSERT_EQ(plain.size(), 18u);
    EXPECT_EQ(plain.back(), "las.extra.second");
    const std::string good = entry("my.b", 0, 1);
    const std::string endless(100'000, '[');
    for (const std::string& text :
         {std::string("no JSON"), std::string("[]"), std::string("{}"), endless,
          record(good),                                               // one of two
          record(good + "," + good),                                  // twice
          record(good + "," + entry("tarvo.xyz", 0, 3)),              // coordinates
          record(good + "," + entry("tarvo.rgba", 9, 4)),             // no such element
          record(good + "," + entry("my.a", 0, 2000000000)),          // endless
          record(good + "," + entry("my.b", 1, 2)),                   // of two lengths
          record(good + "," + entry("tarvo.intensity", 0, 2)),        // not the field's length
          record(good + "," + entry("Not A Name", 0, 1)),             //
          record(good + "," + R"({"attribute":7})"),                  //
          record(good + "," + entry("my.c", 0, 1)).substr(0, 60)}) {  // cut
        EXPECT_EQ(columnsWith(text), plain) << text.substr(0, 200);
        EXPECT_EQ(notes.size(), 1u) << text.substr(0, 200);
    }
}

}  // namespace
