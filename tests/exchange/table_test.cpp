#include "core/error.h"
#include "exchange/csv/source.h"
#include "exchange/table/filledcolumn.h"
#include "exchange/table/fit.h"
#include "exchange/table/valuecheck.h"
#include "numbers/numbertext.h"
#include "tests/cli/folder.h"

#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <limits>
#include <type_traits>

namespace {

using namespace tarvo::exchange;
using tarvo::cli::tests::Folder;
using tarvo::core::Failure;

ColumnSummary summaryOf(const std::vector<double>& values) {
    ColumnSummary summary(DataType::DOUBLE);
    summary.add(values.data(), values.size());
    return summary;
}

TEST(Decimal, AffineValuesAreTheNearestDoublesToTheDecimalNumbers) {
    const Affine centimetres(0.01, 674521.92);
    EXPECT_EQ(centimetres(1), 674521.93);
    EXPECT_EQ(centimetres(8340), 674605.32);
    EXPECT_EQ(Affine(1e-7, 0)(-946834654), -94.6834654);
    EXPECT_EQ(Affine(0.006, 0)(-30000), -180.0);
    EXPECT_EQ(Affine(0.01, 0)(29), 0.29);  // 29 * 0.01 is not
    EXPECT_EQ(Affine(0.25, 0)(std::int64_t{1} << 60), std::ldexp(1, 58));
}

TEST(Decimal, GridsHoldAllAxesAndTheirSteps) {
    const auto grid = [](std::vector<Affine> axes, double low, double high) {
        return commonGrid(axes, low, high);
    };
    auto one = grid({{0.01, 0}, {0.01, 674521.92}}, -5, 674600);
    ASSERT_TRUE(one);
    EXPECT_EQ(one->resolution, 0.01);
    EXPECT_EQ(one->minimum, -5.0);
    // Degrees beside metres.
    EXPECT_EQ(grid({{1e-7, 0}, {1e-7, 0}, {0.01, 0}}, -124, 180)->resolution, 1e-7);
    // Neither divides the other.
    EXPECT_EQ(grid({{0.01, 0}, {0.025, 0}}, 0, 10)->resolution, 0.005);
    EXPECT_EQ(grid({{0.01, 0.003}, {0.01, 0}}, 0, 10)->resolution, 0.001);
    // 3/1000 becomes a step whose inverse is whole.
    EXPECT_EQ(grid({{0.003, 0}}, 0, 10)->resolution, 0.001);
    // Offsets with noise: far finer than the scale, so that every raw number is told apart.
    const auto noisy = grid({{0.01, 674521.9200134277}, {0.01, 1206740.0800170898}}, 6e5, 1.3e6);
    ASSERT_TRUE(noisy);
    EXPECT_FALSE(noisy->exact);
    EXPECT_LE(noisy->resolution, 0.01 / 256);
    EXPECT_EQ(noisy->rounding, noisy->resolution / 2);
    EXPECT_EQ(one->rounding, 0);
    EXPECT_LT(noisy->minimum, 6e5) << "what is rounded stays within";
    EXPECT_GT(noisy->maximum, 1.3e6);
    EXPECT_FALSE(grid({{1e-9, 0.1234567890123}, {1e-9, 0.5}}, -1e9, 1e9));
    EXPECT_EQ(grid({{1.0 / 3, 0}}, 0, 100)->resolution, 1.0 / 3);
}

TEST(Summary, TellsDecimalsRangeAndOddValues) {
    EXPECT_EQ(summaryOf({1, 2.5, -0.125}).decimals(), 3);
    EXPECT_EQ(summaryOf({1, 2.5, -0.125}).minimum(), -0.125);
    EXPECT_EQ(summaryOf({245379.398437, 245385.911121}).decimals(), 6);
    EXPECT_EQ(summaryOf({1.0 / 3}).decimals(), -1);
    EXPECT_TRUE(summaryOf({std::nan(""), 4}).hasNaN());
    EXPECT_EQ(summaryOf({std::nan(""), 4}).maximum(), 4);
    EXPECT_TRUE(summaryOf({INFINITY}).hasInfinity());
    ColumnSummary big(DataType::UINT64);
    const std::uint64_t values[] = {5, ~0ull};
    big.add(values, 2);
    EXPECT_EQ(big.maximum(), 18446744073709551616.0) << "rounded outwards";
    constexpr std::int64_t exact = std::int64_t{1} << 53;
    ColumnSummary odd(DataType::INT64);
    const std::int64_t between[] = {-exact - 1, exact + 1};
    odd.add(between, 2);
    EXPECT_EQ(odd.minimum(), -static_cast<double>(exact + 2));
    EXPECT_EQ(odd.maximum(), static_cast<double>(exact + 2));
    ColumnSummary merged = summaryOf({-1.5});
    ColumnSummary bytes(DataType::UINT8);
    const std::uint8_t byte = 200;
    bytes.add(&byte, 1);
    merged.merge(bytes);
    EXPECT_EQ(merged.minimum(), -1.5);
    EXPECT_EQ(merged.maximum(), 200);
    // What only one of them has, whichever comes first.
    for (const auto& [odd, decimals] :
         {std::pair(std::nan(""), 0), {INFINITY, 0}, {1.0 / 3, -1}, {0.125, 3}})
        for (const bool first : {true, false}) {
            ColumnSummary whole = summaryOf(first ? std::vector<double>{odd, 3} : std::vector{1.0});
            whole.merge(summaryOf(first ? std::vector{1.0} : std::vector<double>{odd, 3}));
            EXPECT_EQ(whole.hasNaN(), std::isnan(odd)) << odd << first;
            EXPECT_EQ(whole.hasInfinity(), std::isinf(odd)) << odd << first;
            EXPECT_EQ(whole.decimals(), decimals) << odd << first;
            EXPECT_EQ(whole.minimum(), std::isfinite(odd) ? odd : 1);
        }
}

TEST(Fit, KeepsTheCataloguesDefinitionWhereItHoldsTheValues) {
    const auto fit = [](const char* name, const std::vector<double>& values) {
        Column column;
        column.attribute = name;
        return fitAttribute(column, summaryOf(values));
    };
    EXPECT_EQ(fit("tarvo.intensity", {0, 65535}).maximumValue, 65535);
    EXPECT_EQ(fit("tarvo.target_index", {0, 7}).minimumValue, 1) << "0 is its invalid value";
    EXPECT_EQ(fit("tarvo.scan_angle", {-90, 90}).resolution, 0.025);
    // Another grid, another range, another width.
    EXPECT_EQ(fit("tarvo.scan_angle", {-0.006, 90}).resolution, 0.001);
    EXPECT_EQ(fit("tarvo.class", {0, 70000}).maximumValue, 100000) << "with room";
    const auto time = fit("tarvo.timestamp", {81616201.910359, 81616203.368285});
    EXPECT_GE(time.maximumValue, 81616203.368285);
    EXPECT_EQ(time.resolution, 1e-6);
    EXPECT_EQ(fit("tarvo.timestamp", {1.0 / 3}).resolution, 0) << "stored unrounded";
    Column rgba;
    rgba.attribute = "tarvo.rgba";
    rgba.length = 4;
    EXPECT_EQ(fitAttribute(rgba, summaryOf({0, 255})).maximumValue, 255);
    EXPECT_EQ(fitAttribute(rgba, summaryOf({0, 256})).defaultValue, 65535) << "opaque";
    const auto own = fit("las.extra.a", {-1.25, 3});
    EXPECT_EQ(own.resolution, 0.01);
    EXPECT_EQ(own.minimumValue, -10);
    EXPECT_EQ(own.maximumValue, 10);
}

TEST(Fit, LeavesRoomForFilesThatAreAddedLater) {
    Column column;
    column.attribute = "las.user_data";
    const auto byCount = [&](const std::vector<double>& values) {
        return fitAttribute(column, summaryOf(values));
    };
    EXPECT_EQ(byCount({117, 135}).minimumValue, 0);
    EXPECT_EQ(byCount({117, 135}).maximumValue, 1000);
    EXPECT_EQ(byCount({7, 100}).maximumValue, 100) << "a power of ten itself";
    EXPECT_EQ(byCount({-1000, -5}).minimumValue, -1000);
    EXPECT_EQ(byCount({-7, -5}).maximumValue, 0);
    EXPECT_EQ(byCount({0}).maximumValue, 1) << "a flag that is not set";
    EXPECT_EQ(byCount({1e17 / 3, 1}).maximumValue, 1e17 / 3) << "no power of ten that counts";
    column.highest = 255;
    EXPECT_EQ(byCount({117, 135}).maximumValue, 255) << "what the format can hold";

    Column xyz;
    xyz.attribute = "tarvo.xyz";
    xyz.length = 3;
    const auto coordinates = [&](const std::vector<double>& values, std::vector<Affine> axes) {
        return fitCoordinates(xyz, summaryOf(values), axes).definition;
    };
    EXPECT_EQ(coordinates({1, 2.5}, {{0.1, 0}}).maximumValue, 535000);
    EXPECT_EQ(coordinates({1, 2.5}, {{0.1, 0}}).resolution, 0.1);
    EXPECT_EQ(coordinates({1, 5300000.5}, {{0.1, 0}}).minimumValue, -20037508.5);
    // Too many steps for the range of a catalogue: that of the points.
    EXPECT_EQ(coordinates({1, 2.5}, {{1e-12, 0}}).maximumValue, 2.5);
    xyz.lowest = -2147483648.0 / 3;
    xyz.highest = 2147483647.0 / 3;
    EXPECT_EQ(coordinates({0, 100}, {{1.0 / 3, 0}}).maximumValue, 100) << "keeps its last digits";
}

TEST(Fit, PointsThatAreThereGetAValueThatIsNone) {
    Column column;
    column.attribute = "las.extra.a";
    const auto fit = [&](const std::vector<double>& values) {
        return fitAttribute(column, summaryOf(values), DefaultFor::PointsThatAreThere);
    };
    EXPECT_EQ(fit({5, 9}).defaultValue, 0);
    EXPECT_TRUE(std::isnan(fit({5, std::nan("")}).defaultValue));
    column.hasInvalid = true;
    column.invalidValue = -99;
    EXPECT_EQ(fit({5, 9}).defaultValue, -99);
    column.hasInvalid = false;
    column.lowest = 5;
    column.highest = 9;
    EXPECT_EQ(fit({5, 9}).defaultValue, 0);
    EXPECT_EQ(fit({5, 9}).invalidValue, 0) << "off the range";
}

PointAttribute definition(double resolution, double minimum, double maximum) {
    PointAttribute result;
    result.length = 1;
    result.resolution = resolution;
    result.minimumValue = minimum;
    result.maximumValue = maximum;
    return result;
}

// "h" for what is held, "b" for what is between the values held, "o" for what is outside.
template <typename T>
std::string places(const PointAttribute& definition, const std::vector<T>& values,
                   bool nearest = false) {
    constexpr DataType type = std::is_same_v<T, double>  ? DataType::DOUBLE
                              : std::is_same_v<T, float> ? DataType::SINGLE
                              : std::is_signed_v<T>      ? DataType::INT64
                                                         : DataType::UINT64;
    std::string text;
    for (const T& value : values) {
        ValueCheck check(definition, nearest);
        check.add(type, &value, 1, {});
        const ValueFindings& found = check.findings();
        text += found.outside > 0 ? 'o' : found.between > 0 ? 'b' : 'h';
    }
    return text;
}

TEST(ValueCheck, TellsWhatADefinitionHolds) {
    using Doubles = std::vector<double>;
    const auto centimetres = definition(0.01, -100, 1e7);
    EXPECT_EQ(places(centimetres, Doubles{0.29, 0.57, 9999999.99, -99.99, 1e7}), "hhhhh");
    EXPECT_EQ(places(centimetres, Doubles{0.295, 9999999.995, 0.2901, -100.004, 1e7 + 0.004}),
              "bbboo");
    EXPECT_EQ(places(centimetres, Doubles{-100.004, -100.006, 1e7 + 0.004, 0.295}, true), "bobb");
    EXPECT_EQ(places(centimetres, std::vector<float>{0.25f, 0.29f, 123.45f}), "hhb");
    EXPECT_EQ(places(centimetres, std::vector<std::int64_t>{-100, 10000000, 10000001, -101}),
              "hhoo");
    // Far from zero, where a double has few digits left for the step, and off the multiples of it.
    const auto fine = definition(0.00025, 5000000, 5000100);
    EXPECT_EQ(places(fine, Doubles{5000000.00025, 5000033.33325, 5000033.333}), "hhh");
    EXPECT_EQ(places(fine, Doubles{5000000.0001, 5000033.3331}), "bb");
    // A minimum far off must not hide what lies between steps near zero.
    const auto wide = definition(1e-6, -715827832.666668, 715828082.333334);
    EXPECT_EQ(places(wide, Doubles{100.0 / 3, 33.333333, 5000000.25}), "bhh");
    const auto thirds = definition(1.0 / 3, 0.1, 1000);
    EXPECT_EQ(places(thirds, Doubles{0.1 + 7 / 3.0, 0.1 + 2000 / 3.0, 7 / 3.0}), "hhb");

    const auto bytes = definition(1, 0, 255);
    EXPECT_EQ(places(bytes, Doubles{0, 255, 0.5, 255.4, -1}), "hhboo");
    EXPECT_EQ(places(bytes, Doubles{255.4, 255.6, -0.4}, true), "bob");
    const auto ids = definition(1, 1, 18446744073709551616.0);
    EXPECT_EQ(places(ids, std::vector<std::uint64_t>{1, ~0ull, 0}), "hho");
    const auto numbers = definition(1, -9223372036854775808.0, 9223372036854775808.0);
    EXPECT_EQ(places(numbers, std::vector<std::int64_t>{INT64_MIN, INT64_MAX}), "hh");
    // The limit stands for the largest number of 64 bits, which a double is one beyond of.
    EXPECT_EQ(places(numbers, std::vector<std::uint64_t>{1ull << 63, INT64_MAX}), "oh");
    EXPECT_EQ(places(numbers, Doubles{0x1p63, -0x1p63, 0x1p62}), "ohh");
    EXPECT_EQ(places(numbers, Doubles{0x1p63, 0x1p62}, true), "oh");
    EXPECT_EQ(places(ids, Doubles{0x1p64, 0x1p63}), "oh");
    const auto thousands = definition(1000, 0, 1e18);
    EXPECT_EQ(places(thousands, std::vector<std::int64_t>{5000, 5001, -1000}), "hbo");

    const auto unrounded = definition(0, -10, 1e18);
    EXPECT_EQ(places(unrounded, Doubles{1.0 / 3, -10, -10.1, INFINITY}), "hhoo");
    EXPECT_EQ(places(unrounded, std::vector<std::int64_t>{1ll << 53, (1ll << 53) + 1}), "hb");
}

TEST(ValueCheck, PassesOverWhatIsNoValue) {
    auto depth = definition(1, 0, 100);
    depth.invalidValue = -1;
    ValueCheck check(depth, false);
    const double values[] = {-1, std::nan(""), 7, 999, 101, 3};
    check.add(DataType::DOUBLE, values, 6, 999.0);
    EXPECT_EQ(check.findings().missing, 2u);
    EXPECT_EQ(check.findings().outside, 1u);
    EXPECT_EQ(check.findings().low, 3);
    EXPECT_EQ(check.findings().high, 101);

    // The replacement and the largest number both have a place.
    FilledColumn filled(DataType::UINT64, 0.0, 5, batchSize);
    const std::uint64_t whole[] = {0, ~0ull};
    filled.fill(whole, 2);
    ASSERT_EQ(filled.type(), DataType::UINT64);
    EXPECT_EQ(static_cast<const std::uint64_t*>(filled.values())[0], 5u);
    EXPECT_EQ(static_cast<const std::uint64_t*>(filled.values())[1], ~0ull);
    FilledColumn negative(DataType::UINT8, 255.0, -1, batchSize);
    const std::uint8_t bytes[] = {255, 254};
    negative.fill(bytes, 2);
    ASSERT_EQ(negative.type(), DataType::INT64);
    EXPECT_EQ(static_cast<const std::int64_t*>(negative.values())[0], -1);
    EXPECT_EQ(static_cast<const std::int64_t*>(negative.values())[1], 254);
    for (const auto& [type, replacement] :
         {std::pair{DataType::UINT64, -1.0}, {DataType::UINT64, 0x1p64}, {DataType::INT8, 0x1p63}})
        EXPECT_EQ(FilledColumn(type, 0.0, replacement, batchSize).type(), DataType::DOUBLE);
    FilledColumn broken(DataType::INT16, -9.0, 0.5, batchSize);
    const std::int16_t shorts[] = {-9, 3};
    broken.fill(shorts, 2);
    ASSERT_EQ(broken.type(), DataType::DOUBLE);
    EXPECT_EQ(static_cast<const double*>(broken.values())[0], 0.5);
}

class Csv : public testing::Test {
protected:
    std::string failure(const std::string& text) {
        try {
            csv::CsvSource source(folder.write("a.csv", text));
            while (source.next() > 0) {
            }
        } catch (const Failure& error) {
            return error.what();
        }
        return {};
    }
    Folder folder;
};

TEST_F(Csv, SeparatorsQuotesAndNamesAreUnderstood) {
    for (const std::string separator : {",", ";", "\t"}) {
        std::string text =
            "\xef\xbb\xbf"
            "X|Y|\"z\"|tarvo.rgba[1]|\"Some, \"\"name\"\"\"|tarvo.id\r\n"
            "1.5|-2| +3 |7|\"8\"|18446744073709551615\r\n\r\n4|5|6|9||10";
        for (std::size_t at = 0; (at = text.find('|', at)) != std::string::npos;) {
            text.replace(at, 1, separator);
        }
        csv::CsvSource source(folder.write("a.csv", text));
        const auto& columns = source.columns();
        ASSERT_EQ(columns.size(), 6u);
        EXPECT_EQ(columns[2].descriptor(), "tarvo.xyz[2]");
        EXPECT_EQ(columns[3].length, 4u);
        EXPECT_EQ(columns[4].attribute, "csv.some___name_");
        ASSERT_EQ(source.next(), 2u);
        const auto bits = [&](std::size_t column) {
            return static_cast<const std::uint64_t*>(source.values(column));
        };
        EXPECT_EQ(columns[0].type, DataType::DOUBLE);
        EXPECT_EQ(std::bit_cast<double>(bits(0)[0]), 1.5);
        EXPECT_EQ(columns[1].type, DataType::INT64);
        EXPECT_EQ(static_cast<std::int64_t>(bits(1)[0]), -2);
        EXPECT_TRUE(std::isnan(std::bit_cast<double>(bits(4)[1]))) << "no value";
        EXPECT_EQ(columns[5].type, DataType::UINT64);
        EXPECT_EQ(bits(5)[0], ~0ull);
        EXPECT_EQ(source.next(), 0u);
    }
}

// Names may hold what separates the columns of other files.
TEST_F(Csv, SeparatorsWithinQuotesDoNotCount) {
    csv::CsvSource source(folder.write("a.csv", "\"a;b;c;d\",x,y\n1,2,3\n"));
    ASSERT_EQ(source.columns().size(), 3u);
    ASSERT_EQ(source.next(), 1u);
    csv::CsvSource other(folder.write("b.csv", "\" 1,5,2 \"; x\n7;8\n"));
    ASSERT_EQ(other.columns().size(), 2u);
    EXPECT_EQ(other.columns()[0].title, " 1,5,2 ");
    EXPECT_EQ(other.columns()[1].descriptor(), "tarvo.xyz[0]");
}

// The text is read in pieces, which end within lines.
TEST_F(Csv, BlankLinesAreNoRowsWhereverTheyStand) {
    std::string text = "n\n";
    constexpr std::size_t rows = 250000;
    for (std::size_t i = 0; i < rows; ++i)
        text += "1\n       \n";
    csv::CsvSource source(folder.write("a.csv", text));
    std::size_t found = 0;
    while (const std::uint32_t count = source.next())
        found += count;
    EXPECT_EQ(found, rows);
}

// Texts of whole numbers that a column of doubles would change.
TEST_F(Csv, OnlyNumbersThatADoubleHoldsAreTakenForOne) {
    for (const std::string text :
         {"9007199254740993", "-9007199254740993", "+0018014398509481985", "18446744073709551615",
          "100000000000000000000000000000000001", "123456789012345680001"})
        EXPECT_TRUE(changedAsDouble(text)) << text;
    EXPECT_EQ(changedAsDouble("-0009007199254740993"), "-9007199254740992");
    for (const std::string text :
         {"", "-", "+", "0", "00000000000000000000", "999999999999999", "9007199254740994",
          "-18446744073709551616", "9007199254740993.0", "9007199254740993e0",
          "0.12345678901234567"})
        EXPECT_FALSE(changedAsDouble(text)) << text;
    // What is written of doubles reads back.
    for (double value = 1.2345678901234567e14; value < 1e36; value *= 3.3) {
        std::string text;
        tarvo::numbers::appendPlain(text, std::floor(value));
        EXPECT_FALSE(changedAsDouble(text)) << text;
    }
}

TEST_F(Csv, FaultsAreNamedByLineAndColumn) {
    EXPECT_NE(failure("").find("empty"), std::string::npos);
    EXPECT_NE(failure("x,y,z\n1,2,3\n1,2\n").find("Line 3"), std::string::npos);
    EXPECT_NE(failure("x,y,z\n1,2,abc\n").find("\"abc\" in the column \"z\""), std::string::npos);
    EXPECT_NE(failure("x,y,z\n1,2,+-3\n").find("\"+-3\""), std::string::npos);
    EXPECT_NE(failure("x,y,X\n").find("\"X\""), std::string::npos);
    EXPECT_NE(failure("x,y,z\n1,\"2,3\n").find("quote"), std::string::npos);
    for (const char* const number : {"4096", "4000000000"})
        EXPECT_NE(failure("x,y,z[" + std::string(number) + "]\n1,2,3\n").find("element"),
                  std::string::npos);
    EXPECT_EQ(failure("x,y,a[4095]\n1,2,3\n"), "");
}

}  // namespace
