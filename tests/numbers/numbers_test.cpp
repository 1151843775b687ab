#include "numbers/decimal.h"
#include "numbers/digits.h"
#include "numbers/numbertext.h"

#include <gtest/gtest.h>

#include <bit>
#include <charconv>
#include <cmath>
#include <cstdlib>
#include <iterator>
#include <random>

namespace tarvo::numbers {
namespace {

std::uint64_t seed() {
    const char* const text = std::getenv("QRB_SEED");
    return text ? std::strtoull(text, nullptr, 10) : 7;
}

std::string plain(double value) {
    std::string text;
    appendPlain(text, value);
    return text;
}

std::string fixed(double value, int places) {
    std::string text;
    appendFixed(text, value, places);
    return text;
}

TEST(Numbers, TextsKeepEveryDigit) {
    RecordProperty("seed", std::to_string(seed()));
    std::mt19937_64 random(seed());
    for (int i = 0; i < 50'000; ++i) {
        const auto number = std::bit_cast<double>(random());
        if (!std::isfinite(number))
            continue;
        for (const std::string& text : {numberText(number), plain(number)}) {
            const auto back = readNumber(text);
            ASSERT_TRUE(back &&
                        std::bit_cast<std::uint64_t>(*back) == std::bit_cast<std::uint64_t>(number))
                << text << ", seed " << seed();
        }
        const Decimal decimal = shortestDecimal(number);
        EXPECT_EQ(
            readNumber(std::to_string(decimal.digits) + "e" + std::to_string(decimal.exponent)),
            number);
    }
}

TEST(Numbers, HaveAnExponentOnlyWhereDigitsBecomeMany) {
    EXPECT_EQ(numberText(100000), "100000");
    EXPECT_EQ(numberText(-535000.25), "-535000.25");
    EXPECT_EQ(numberText(1e-7), "0.0000001");
    EXPECT_EQ(numberText(9e-8), "9e-08");
    EXPECT_EQ(numberText(1e20), "100000000000000000000");
    EXPECT_EQ(numberText(1e21), "1e+21");
    EXPECT_EQ(numberText(9223372036854775808.0), "9223372036854775808");
    EXPECT_EQ(numberText(0), "0");
    EXPECT_EQ(numberText(NAN), "nan");
    EXPECT_EQ(numberText(-INFINITY), "-inf");
    EXPECT_EQ(plain(1e-9), "0.000000001");
    EXPECT_EQ(plain(1e25), "10000000000000000905969664");
    EXPECT_EQ(plain(1e31), "1e+31");
    EXPECT_EQ(plain(245384.64506943894), "245384.64506943894");
}

TEST(Numbers, AreRoundedWithoutASignOfZero) {
    EXPECT_EQ(fixed(-0.001, 2), "0.00");
    EXPECT_EQ(fixed(-0.006, 2), "-0.01");
    EXPECT_EQ(fixed(0.125, 3), "0.125");
    EXPECT_EQ(fixed(1e300, 0).size(), 301u);
    EXPECT_EQ(roundedText(1234.5678, 6), "1234.57");
    EXPECT_EQ(roundedText(2, 6), "2");
    EXPECT_EQ(wholeText(Wide(~0ull)), "18446744073709551615");
    EXPECT_EQ(wholeText(-(Wide(1) << 63)), "-9223372036854775808");
    EXPECT_EQ(wholeText(0), "0");
}

// The short way to digits against the standard library's, most of all where the short one must give
// up: near the middle of two texts, and beyond the digits of a double.
TEST(Numbers, HaveTheSameDigitsByEveryWay) {
    RecordProperty("seed", std::to_string(seed()));
    std::mt19937_64 random(seed());
    const auto expected = [](double value, int places) {
        char buffer[mostCharacters];
        const std::string text(
            buffer,
            std::to_chars(buffer, std::end(buffer), value, std::chars_format::fixed, places).ptr);
        return text.find_first_not_of("-0.") == std::string::npos && text[0] == '-' ? text.substr(1)
                                                                                    : text;
    };
    int shortWays = 0;
    for (int i = 0; i < 400'000; ++i) {
        const int places = static_cast<int>(random() % 18);
        const auto steps =
            static_cast<double>(static_cast<std::int64_t>(random()) >> random() % 64);
        double value = steps / std::pow(10.0, random() % 3 ? places : places + 1);
        switch (random() % 8) {
            case 0:
                value = (steps + 0.5) / std::pow(10.0, places);
                break;
            case 1:
                value = std::nextafter(value, random() % 2 ? INFINITY : -INFINITY);
                break;
            case 2:
                value = std::bit_cast<double>(random());
                break;
        }
        if (!std::isfinite(value))
            continue;
        char digits[roomForDigits];
        shortWays += writeExactFixed(digits, value, places) != nullptr;
        ASSERT_EQ(fixed(value, places), expected(value, places)) << places << ", seed " << seed();
    }
    EXPECT_GT(shortWays, 100'000);
    for (int i = 0; i < 100'000; ++i) {
        const std::uint64_t whole = random() >> (1 + random() % 63);
        const auto negative = static_cast<std::int64_t>(whole);
        char text[roomForDigits];
        ASSERT_EQ(std::string(text, writeWhole(text, whole)), std::to_string(whole));
        ASSERT_EQ(std::string(text, writeWhole(text, 0 - negative)), std::to_string(0 - negative));
    }
    for (const std::int64_t edge : {INT64_MIN, INT64_MIN + 1, std::int64_t(-1), std::int64_t(0)}) {
        char text[roomForDigits];
        EXPECT_EQ(std::string(text, writeWhole(text, edge)), std::to_string(edge));
    }
}

TEST(Numbers, AreReadWholeOrNotAtAll) {
    EXPECT_EQ(readNumber(" +1.5e-3\t"), 0.0015);
    EXPECT_EQ(readNumber("-7"), -7);
    for (const char* text :
         {"", " ", "1,5", "1 000", "abc", "1e999", "0x10", "--1", "+-1", "1.5x", "nan", "inf", "+"})
        EXPECT_FALSE(readNumber(text)) << text;
}

TEST(Numbers, KnowTheirDecimalPlaces) {
    EXPECT_EQ(shortestDecimal(0.01).digits, 1);
    EXPECT_EQ(shortestDecimal(0.01).places(), 2);
    EXPECT_EQ(shortestDecimal(-1234567.1).digits, -12345671);
    EXPECT_EQ(shortestDecimal(1000).exponent, 3);
    EXPECT_EQ(shortestDecimal(1000).places(), 0);
    EXPECT_EQ(shortestDecimal(0).exponent, 0);
}

}  // namespace
}  // namespace tarvo::numbers
