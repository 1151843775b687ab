#include "core/key.h"
#include "core/error.h"

#include <gtest/gtest.h>

#include <string>

namespace tarvo::core {
namespace {

using Bytes = std::vector<std::uint8_t>;

std::string refusal(const char* text) {
    try {
        keyOfText(text);
    } catch (const Failure& failure) {
        return failure.details();
    }
    return "taken";
}

TEST(Key, IsPairsOfHexadecimalDigits) {
    EXPECT_EQ(keyOfText("00 fF,1a\n-2B:7c"), (Bytes{0x00, 0xff, 0x1a, 0x2b, 0x7c}));
    EXPECT_EQ(keyOfText("01020300"), (Bytes{1, 2, 3, 0}));
    EXPECT_EQ(keyOfText(" "), Bytes{});
}

TEST(Key, IsNeverBentInSilence) {
    EXPECT_EQ(refusal("abc"), "The digit at place 3 has no partner.");
    EXPECT_EQ(refusal("ab c d0"), "The digit at place 4 has no partner.");
    EXPECT_EQ(refusal("0x12"), "The digit at place 1 has no partner.");
    EXPECT_EQ(refusal("12 zz"), "The character at place 4 is none.");
    EXPECT_EQ(refusal("secret"), "The character at place 1 is none.");
}

TEST(Key, OfAFileIsItsBytesUnlessTheyWriteOne) {
    EXPECT_EQ(keyOfFile("01 02\r\n03\n"), (Bytes{1, 2, 3}));
    EXPECT_EQ(keyOfFile("abc"), (Bytes{'a', 'b', 'c'}));
    EXPECT_EQ(keyOfFile(std::string_view("\0\xff\n", 3)), (Bytes{0, 0xff, '\n'}));
    EXPECT_EQ(keyOfFile(""), Bytes{});
}

}  // namespace
}  // namespace tarvo::core
