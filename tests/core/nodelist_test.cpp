#include "core/nodelist.h"
#include "core/error.h"

#include <gtest/gtest.h>

namespace tarvo::core {
namespace {

using Nodes = std::vector<std::uint32_t>;

std::string refusal(const char* text) {
    try {
        parseNodeList(text);
    } catch (const Failure& failure) {
        return failure.what();
    }
    return "taken";
}

TEST(NodeList, NamesEachNodeOnce) {
    EXPECT_EQ(parseNodeList(" "), Nodes{});
    EXPECT_EQ(parseNodeList(" 9, 1-3 ,2"), (Nodes{1, 2, 3, 9}));
    EXPECT_EQ(parseNodeList("1,,2,"), (Nodes{1, 2}));
    EXPECT_EQ(parseNodeList("3-1"), Nodes{});
    EXPECT_EQ(parseNodeList("4294967294-4294967295"), (Nodes{4294967294u, 4294967295u}));
}

TEST(NodeList, RangesGoAcrossGaps) {
    qrb::pointcloud::IndexNode root, leaf;
    for (const std::uint32_t id : {2u, 12u, 15u}) {
        leaf.id = id;
        root.children.push_back(leaf);
    }
    leaf.id = 20;
    root.children.front().children.push_back(leaf);
    EXPECT_EQ(existingNodes("10-20", root), (Nodes{12, 15, 20}));
    EXPECT_EQ(existingNodes("0-2, 13, 14-16,13", root), (Nodes{2, 13, 15}));
    EXPECT_EQ(existingNodes("30-40", root), Nodes{});
}

TEST(NodeList, RefusesByTheWordsThatAreWrong) {
    EXPECT_EQ(refusal("1,x"), "Failed to parse: \"x\"");
    EXPECT_EQ(refusal("4294967296"), "Failed to parse: \"4294967296\"");
    EXPECT_EQ(refusal("1.5"), "Failed to parse: \"1.5\"");
    EXPECT_EQ(refusal("1-2-3"), "Invalid input: \"1-2-3\"");
    EXPECT_EQ(refusal("5-"), "Invalid input: \"5-\"");
    EXPECT_EQ(refusal("-5"), "Invalid input: \"-5\"");
    EXPECT_EQ(refusal("1, ,2"), "Invalid input: \" \"");
    EXPECT_EQ(refusal("0-4294967295"), "The list names too many nodes: \"0-4294967295\"");
}

}  // namespace
}  // namespace tarvo::core
