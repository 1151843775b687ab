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
