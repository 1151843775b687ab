#include "numbers/sizetext.h"

#include <gtest/gtest.h>

namespace {

using namespace tarvo::numbers;

TEST(SizeText, UnitsAreOf1024AndReadBack) {
    EXPECT_EQ(sizeText(0), "0 B");
    EXPECT_EQ(sizeText(1023), "1023 B");
    EXPECT_EQ(sizeText(1536), "1.50 KB");
    EXPECT_EQ(sizeText(std::uint64_t{5000} << 40), "5000.00 TB");
    EXPECT_EQ(sizeOfText("0"), 0u);
    EXPECT_EQ(sizeOfText(" 1.5 kb "), 1536u);
    for (const char* const text :
         {"64M", "64m", "64MB", "64 MiB", "65536k", "67108864", "67108864B"})
        EXPECT_EQ(sizeOfText(text), 64u << 20) << text;
    EXPECT_EQ(sizeOfText("1T"), std::uint64_t{1} << 40);
}

TEST(SizeText, OtherTextsAreNoSizes) {
    for (const char* const text :
         {"", " ", "M", "-1", "+1", "1e3", "1.2.3", ".", "64Q", "64MM", "64iB", "64BB", "0x10",
          "nan", "9007199254740993", "9000T", "99999999999999999999999999", "1 2", "1M 2"})
        EXPECT_FALSE(sizeOfText(text)) << text;
    EXPECT_FALSE(sizeOfText(std::string(100'000, '9')));
}

}  // namespace
