#include "engine/base/error.h"
#include "engine/query/buffers.h"
#include "engine/schema/attribute.h"
#include "engine/schema/column.h"

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <functional>
#include <limits>
#include <random>

using namespace tarvo::engine;
using namespace tarvo::engine::schema;

namespace {

constexpr double noInvalid = std::numeric_limits<double>::quiet_NaN();

AttributeRecord makeRecord(double resolution, double minimum, double maximum, double invalid) {
    AttributeRecord record;
    record.name = "tarvo.probe";
    record.length = 1;
    record.resolution = resolution;
    record.minimumValue = minimum;
    record.maximumValue = maximum;
    record.invalidValue = invalid;
    return record;
}

Grid makeGrid(double resolution, double minimum, double maximum, double invalid = noInvalid) {
    return Grid(makeRecord(resolution, minimum, maximum, invalid));
}

ErrorCode failureOf(const std::function<void()>& call, std::string* text = nullptr) {
    try {
        call();
    } catch (const Failure& failure) {
        if (text)
            *text = std::string(failure.what()) + " " + failure.details();
        return failure.code();
    }
    return ErrorCode(0);
}

}  // namespace

TEST(Grid, DecimalStepsGiveTheNearestDouble) {
    const Grid grid = makeGrid(0.01, -1e7, 1e7);
    const std::uint64_t code = grid.code(636001.76);
    EXPECT_EQ(grid.value(code), 636001.76);
    EXPECT_EQ(code, 1000000000u + 63600176u);
    EXPECT_EQ(grid.value(grid.code(-0.07)), -0.07);
    EXPECT_EQ(makeGrid(0.001, 0, 70).value(3), 0.003);
    EXPECT_EQ(makeGrid(0.00025, -535000, 535000).value(0), -535000);
    EXPECT_EQ(makeGrid(0.00025, -535000, 535000).maximumCode(), 4280000000u);
    EXPECT_EQ(makeGrid(0.01, 0, 655.35).maximumCode(), 65535u);
    EXPECT_EQ(makeGrid(0.01, 0, 655.35).width(), 2u);
    EXPECT_EQ(makeGrid(0.01, 0, 1e10).maximumCode(), 1000000000000u);
}

TEST(Grid, ZeroWithAnExponentIsReadAsZero) {
    const std::string tooSmall = "0." + std::string(400, '0') + "1";
    for (const std::string zero : {"0e-324", "0.0e300", "0e308", "0.00000000000000000000e-300",
                                   tooSmall.c_str(), "-0.0e5"}) {
        AttributeRecord record;
        recordFromJson(R"({"name": "a", "default_value": )" + zero + "}", record);
        EXPECT_EQ(record.defaultValue, 0) << zero;
    }
}

TEST(Grid, NumbersWithManyDigitsAreReadExactly) {
    const struct {
        std::string text;
        double value;
    } numbers[] = {{"1000000000000000000000000000000000e-20", 1e13},
                   {"123456789012345678901234567890e278", 1.2345678901234567890123456789e307},
                   {"123456789012345678901234567890e290", std::numeric_limits<double>::infinity()},
                   {"0.1000000000000000055511151231257827021181583404541015625", 0.1},
                   {"22250738585072011360574097967091319759348195463516456e-360",
                    2.2250738585072011360574097967091319759348195463516456e-308},
                   {"11111111111111111111111111111111111111111e-380", 0},
                   {"17976931348623157081452742373170435679807056752584499e256",
                    std::numeric_limits<double>::max()}};
    for (const auto& number : numbers) {
        AttributeRecord record;
        recordFromJson(R"({"name": "a", "default_value": )" + number.text + "}", record);
        EXPECT_EQ(record.defaultValue, number.value) << number.text;
    }
}

TEST(Grid, EveryCodeSurvivesTheWayThroughItsValue) {
    struct {
        double resolution, minimum, maximum;
    } const grids[] = {{1, -128, 127},       {0.1, -50, 50.05}, {0.3, 1, 1e6},
                       {1.0 / 3, -7, 7},     {2.5e-7, 0, 0.25}, {7, -1e9, 1e9},
                       {0.00025, -1e6, 1e6}, {0.5, 0.25, 1000}};
    std::mt19937_64 random(20240611);
    for (const auto& g : grids) {
        const Grid grid = makeGrid(g.resolution, g.minimum, g.maximum);
        double before = -INFINITY;
        for (int i = 0; i < 20000; ++i) {
            const std::uint64_t code = grid.maximumCode() <= 10000
                                           ? std::min<std::uint64_t>(i, grid.maximumCode())
                                           : random() % (grid.maximumCode() + 1);
            const double value = grid.value(code);
            ASSERT_EQ(grid.code(value), code) << g.resolution << " " << value;
            ASSERT_EQ(grid.firstAtLeast(value).code, code);
            ASSERT_EQ(grid.firstAbove(value).none, code == grid.maximumCode());
            ASSERT_EQ(grid.firstAbove(value).code, code + 1);
            if (grid.maximumCode() <= 10000 && code == static_cast<std::uint64_t>(i)) {
                ASSERT_GT(value, before);
                before = value;
            }
        }
    }
}

// Numbers with about as many digits as a double has: rounding must not lead to the neighbour.
TEST(Grid, FineGridsGiveBackEveryValue) {
    struct {
        double resolution, minimum, maximum;
    } const grids[] = {{1e-8, 0, 9e7},
                       {1e-3, -9e12, 0},
                       {1e-8, 81616201.91035877, 81616203.36828478},
                       {1e-9, 1.5e8, 1.5e8 + 1000},
                       {0.3, 0, 2.7e15}};
    std::mt19937_64 random(20261122);
    for (const auto& g : grids) {
        const Grid grid = makeGrid(g.resolution, g.minimum, g.maximum);
        for (int i = 0; i < 20000; ++i) {
            const double value = grid.value(random() % (grid.maximumCode() + 1));
            ASSERT_EQ(grid.value(grid.code(value)), value) << g.resolution;
        }
    }
}

TEST(Grid, IntegersAreExactInSixtyFourBits) {
    const Grid ids = makeGrid(1, 0, 18446744073709551616.0);
    EXPECT_EQ(ids.maximumCode(), ~0ull);
    EXPECT_EQ(ids.code(Grid::Wide(9007199254740993)), 9007199254740993u);
    EXPECT_EQ(ids.code(18446744073709551616.0), ~0ull);
    EXPECT_TRUE(ids.firstAbove(18446744073709551616.0).none);
    EXPECT_EQ(ids.firstAbove(18446744073709551616.0).code, ~0ull);

    const Grid all = makeGrid(1, -9223372036854775808.0, 9223372036854775807.0 - 1024);
    EXPECT_EQ(all.integerValue(0), Grid::Wide(INT64_MIN));
    EXPECT_EQ(all.code(Grid::Wide(INT64_MIN) + 1), 1u);
    EXPECT_EQ(failureOf([&] { all.code(Grid::Wide(INT64_MIN) - 1); }), ErrorCode::Range);
    EXPECT_EQ(failureOf([] { makeGrid(1, -1, 18446744073709551616.0); }), ErrorCode::Argument);
    EXPECT_EQ(all.kind(), Grid::Kind::Integer);
    EXPECT_EQ(makeGrid(1, 0.5, 7.5).kind(), Grid::Kind::Scaled);
}

TEST(Grid, InvalidValueTakesTheCodeBehindTheOthersOnlyOffTheGrid) {
    const Grid off = makeGrid(1, 0, 255, -1);
    EXPECT_TRUE(off.invalidIsOffGrid());
    EXPECT_EQ(off.width(), 2u);
    EXPECT_EQ(off.code(-1.0), 256u);
    EXPECT_EQ(off.value(256), -1);
    EXPECT_EQ(off.integerValue(256), Grid::Wide(-1));

    const Grid on = makeGrid(0.1, -10, 10, 0.3);
    EXPECT_FALSE(on.invalidIsOffGrid());
    EXPECT_EQ(on.code(0.3), 103u);
    EXPECT_TRUE(on.isInvalid(103));
    EXPECT_EQ(on.value(103), 0.3);

    EXPECT_EQ(makeGrid(0.1, 0, 10, 0.05).invalidCode(), 101u);
    EXPECT_EQ(makeGrid(1, 0, 100, 0.5).value(101), 0.5);
    EXPECT_EQ(makeGrid(1, 0, 100, 0.5).integerValue(101), Grid::Wide(101));
    // Only just beside the step: what the grid makes of it.
    EXPECT_EQ(makeGrid(0.1, -10, 10, 0.30000000000000004).value(103), 0.3);
    EXPECT_EQ(makeGrid(0.1, -10, 10, 0.30000000000000004).code(0.3), 103u);
    EXPECT_EQ(off.code(Grid::Wide(-1)), 256u);
    EXPECT_EQ(failureOf([&] { off.code(Grid::Wide(256)); }), ErrorCode::Range);
    EXPECT_EQ(off.code(255.5), 255u);
    EXPECT_EQ(makeGrid(0.1, 0, 10, -1).code(10.05), 100u);
    EXPECT_EQ(makeGrid(0.1, 0, 10, 11).code(11.0), 101u);

    std::string text;
    EXPECT_EQ(failureOf([] { makeGrid(1, 0, 18446744073709551616.0, -1); }, &text),
              ErrorCode::Argument);
    EXPECT_EQ(text,
              "The attribute \"tarvo.probe\" has no code left for its invalid value -1. Its range "
              "is 0 to 18446744073709551616 with a resolution of 1. Choose an invalid value within "
              "the range, or narrow the range.");
}

TEST(Grid, HoldsTheWholeRangeOfSignedNumbers) {
    const Grid all = makeGrid(1, -0x1p63, 0x1p63);
    EXPECT_EQ(all.integerValue(all.maximumCode()), Grid::Wide(INT64_MAX));
    EXPECT_EQ(all.code(Grid::Wide(INT64_MAX)), ~0ull);
    EXPECT_EQ(all.code(0x1p63), ~0ull);
    EXPECT_EQ(makeGrid(1, -0x1p63, 0x1p63, 0x1p63).invalidCode(), ~0ull);
    EXPECT_EQ(makeGrid(1, -0x1p63, 0x1p63, -1).invalidCode(), ~0ull >> 1);
}

// Values of a definition that is taken come and go in the type that it asks for.
TEST(Grid, TheTypeOfADefinitionHoldsAllItsValues) {
    const double numbers[] = {
        0,          1,          -1,     100,    127,     128,     -128,
        -129,       255,        256,    65535,  65536,   0x1p31,  -0x1p31,
        0x1p31 - 1, 0x1p32 - 1, 0x1p32, 0x1p53, 0x1p63,  -0x1p63, 0x1p63 - 1024,
        0x1p64,     noInvalid,  -0.5,   0.3,    4000.001};
    int taken = 0;
    int refused = 0;
    const auto check = [&](double resolution, double minimum, double maximum, double invalid) {
        AttributeRecord record;
        record.name = "tarvo.probe";
        record.length = 1;
        record.resolution = resolution;
        record.minimumValue = minimum;
        record.maximumValue = maximum;
        record.invalidValue = invalid;
        record.defaultValue = minimum;
        std::string text;
        if (failureOf([&] { validate(record); }, &text) == ErrorCode::Argument) {
            ++refused;
            EXPECT_NE(text.find("tarvo.probe"), std::string::npos);
            return;
        }
        ++taken;
        const Attribute attribute(record, 1);
        const Grid& grid = attribute.grid;
        const std::uint32_t type = dataType(record);
        for (const std::uint64_t code : {attribute.defaultCode(), grid.maximumCode(),
                                         grid.hasInvalid() ? grid.invalidCode() : 0}) {
            std::uint8_t value[8] = {};
            query::writeValue(attribute, code, type, value);
            std::uint64_t back = 0;
            query::readCodes(attribute, type, value, 8, 1, reinterpret_cast<std::uint8_t*>(&back),
                             8);
            // Some steps are finer than what a double tells apart.
            EXPECT_EQ(grid.value(back), grid.value(code))
                << resolution << ": " << minimum << " " << maximum << " " << invalid;
        }
    };
    for (const double resolution : {1.0, 0.1, 0.001, 2.5})
        for (const double minimum : numbers)
            for (const double maximum : numbers)
                for (const double invalid : numbers)
                    if (minimum <= maximum)
                        check(resolution, minimum, maximum, invalid);
    EXPECT_GT(taken, 10'000);
    EXPECT_GT(refused, 200);

    AttributeRecord record;
    record.name = "tarvo.probe";
    record.length = 1;
    record.maximumValue = 0x1p63;
    record.invalidValue = -1;
    std::string text;
    EXPECT_EQ(failureOf([&] { validate(record); }, &text), ErrorCode::Argument);
    EXPECT_NE(text.find("-1 to 9223372036854775808"), std::string::npos) << text;
}

// Columns reach buffers as their values one by one do, or are refused as these are: also codes that
// only damaged files have.
TEST(Grid, ColumnsAreWrittenAsTheirValuesAre) {
    std::mt19937_64 random(5);
    int refused = 0;
    const double definitions[][4] = {
        {1, 0, 200, noInvalid}, {1, 0, 255, 7},    {1, -100, 100, -1000},
        {1, -1, 254, 0.5},      {1, 1, 0x1p64, 0}, {1, -0x1p63, 0x1p63, 5},
        {0.01, -10, 655, -20},  {0.3, 1, 1e6, 0},  {0, -1e9, 1e9, 3}};
    for (const auto& [resolution, minimum, maximum, invalid] : definitions) {
        const Attribute attribute(makeRecord(resolution, minimum, maximum, invalid), 1);
        const Grid& grid = attribute.grid;
        for (const bool damaged : {false, true}) {
            Column column(grid.width(), 1300);
            const std::uint64_t first = grid.firstAtLeast(-INFINITY).code;
            const std::uint64_t span = grid.maximumCode() - first;
            for (std::size_t i = 0; i < column.size(); ++i)
                column.set(i, damaged || span == ~0ull ? random()
                              : random() % 4 == 0 && grid.hasInvalid()
                                  ? grid.invalidCode()
                                  : first + random() % (span + 1));
            std::vector<std::uint32_t> list;
            for (std::uint32_t i = 0; i < column.size(); i += 1 + random() % 2)
                list.push_back(i);
            for (std::uint32_t type = QRB_DATA_TYPE_UINT8; type <= QRB_DATA_TYPE_DOUBLE; ++type)
                for (const std::size_t gap : {0, 3}) {
                    const bool listed = random() % 2 != 0;
                    const query::Rows rows{2, list.size() - 2, listed ? &list : nullptr};
                    const std::size_t stride = query::sizeOfType(type) + gap;
                    std::vector<std::uint8_t> got(rows.count * stride), expected(got.size());
                    std::string said, wanted;
                    const ErrorCode code = failureOf(
                        [&] {
                            query::writeValues(attribute, codec::Block(column), rows, type,
                                               got.data(), static_cast<std::ptrdiff_t>(stride));
                        },
                        &said);
                    const ErrorCode one = failureOf(
                        [&] {
                            for (std::size_t i = 0; i < rows.count; ++i)
                                query::writeValue(attribute, column[listed ? list[2 + i] : 2 + i],
                                                  type, expected.data() + i * stride);
                        },
                        &wanted);
                    EXPECT_EQ(code, one) << type;
                    EXPECT_EQ(said, wanted);
                    refused += code != ErrorCode(0);
                    EXPECT_TRUE(code != ErrorCode(0) || got == expected)
                        << resolution << " from " << minimum << " as type " << type;
                }
        }
    }
    EXPECT_GT(refused, 50);
}

TEST(Grid, ErrorsTellNumbersAsTheyWereGiven) {
    AttributeRecord record;
    record.name = "tarvo.probe";
    record.length = 1;
    record.maximumValue = 100;
    record.invalidValue = -1;
    const Attribute attribute(record, 1);
    std::uint64_t value = 0;
    std::string text;
    EXPECT_EQ(failureOf(
                  [&] {
                      query::writeValue(attribute, attribute.grid.invalidCode(),
                                        QRB_DATA_TYPE_UINT64, &value);
                  },
                  &text),
              ErrorCode::Range);
    EXPECT_NE(text.find("The value -1 of"), std::string::npos) << text;
    EXPECT_EQ(failureOf([&] { (void)attribute.grid.code(100000.0); }, &text), ErrorCode::Range);
    EXPECT_NE(text.find("The value 100000 is"), std::string::npos) << text;
}

TEST(Grid, ValuesBesideTheRangeRoundOntoItAndOthersAreRefused) {
    const Grid grid = makeGrid(0.1, 0, 1.05);
    EXPECT_EQ(grid.maximumCode(), 10u);
    EXPECT_EQ(grid.code(-0.05), 0u);
    EXPECT_EQ(grid.code(1.09), 10u);
    std::string text;
    EXPECT_EQ(failureOf([&] { grid.code(1.2); }, &text), ErrorCode::Range);
    const std::string out = "The value 1.2 is out of the range of the attribute \"tarvo.probe\". ";
    EXPECT_EQ(text, out + "The range is 0 to 1.05.");
    EXPECT_EQ(failureOf([&] { makeGrid(0.1, 0, 1.05, -7).code(1.2); }, &text), ErrorCode::Range);
    EXPECT_EQ(text, out + "The range is 0 to 1.05, the invalid value is -7.");
    EXPECT_EQ(failureOf([&] { makeGrid(1, -5, 0, 300).code(1.2); }, &text), ErrorCode::Range);
    EXPECT_EQ(text, out + "The range is -5 to 0, the invalid value is 300.");
    EXPECT_EQ(failureOf([&] { makeGrid(0, 0, 1).code(1.2); }, &text), ErrorCode::Range);
    EXPECT_EQ(text, out + "The range is 0 to 1.");
    const std::string number = "The attribute \"tarvo.probe\" can't hold NaN (not a number). ";
    EXPECT_EQ(failureOf([&] { grid.code(noInvalid); }, &text), ErrorCode::Range);
    EXPECT_EQ(text, number + "Its definition has no invalid value.");
    EXPECT_EQ(failureOf([&] { makeGrid(1, 0, 9, -1).code(noInvalid); }, &text), ErrorCode::Range);
    EXPECT_EQ(text, number + "Its invalid value is -1.");
    // Half a step, as far as doubles tell.
    EXPECT_EQ(makeGrid(0.1, 0, 2.3).code(2.35), 23u);
    EXPECT_EQ(makeGrid(0.02, 0, 0.06).code(0.07), 3u);
    EXPECT_EQ(makeGrid(0.1, 0.7, 1).code(0.65), 0u);
    EXPECT_EQ(makeGrid(0.001, 0, 1).code(1.0005), 1000u);
    EXPECT_EQ(failureOf([&] { grid.code(-INFINITY); }), ErrorCode::Range);
    EXPECT_EQ(makeGrid(1, 0, 255).code(255.5), 255u);
    EXPECT_EQ(failureOf([] { makeGrid(1, 0, 255).code(256.0); }), ErrorCode::Range);
}

TEST(Grid, RefusesRangesThatCannotBeStored) {
    for (const auto& bad : {std::array<double, 3>{1e-10, 0, 1e10},
                            {-1, 0, 1},
                            {noInvalid, 0, 1},
                            {1, 1, 0},
                            {1, noInvalid, 1},
                            {0.01, 0, INFINITY},
                            {0.01, -1.7e308, 1.7e308},
                            {0.5, 0, 4503599627370496.0}})
        EXPECT_EQ(failureOf([&] { makeGrid(bad[0], bad[1], bad[2]); }), ErrorCode::Argument)
            << bad[0];
    EXPECT_EQ(makeGrid(0.5, 0, 4503599627370495.0).maximumCode(), (1ull << 53) - 2);
    const auto refusal = [](double resolution, double minimum, double maximum) {
        std::string text;
        (void)failureOf([&] { makeGrid(resolution, minimum, maximum); }, &text);
        return text;
    };
    const std::string name = "The attribute \"tarvo.probe\" ";
    const std::string hint =
        " Give the distance of two neighbouring values, or 0 for floating-point numbers.";
    EXPECT_EQ(refusal(1, 0, INFINITY), name +
                                           "has a limit that is not a finite number. Its range is "
                                           "0 to inf with a resolution of 1.");
    EXPECT_EQ(
        refusal(0.5, 1, 0),
        name + "has a minimum above its maximum. Its range is 1 to 0 with a resolution of 0.5.");
    EXPECT_EQ(refusal(-1, 0, 1),
              name + "has a resolution of -1, which is neither positive nor 0." + hint);
    EXPECT_EQ(refusal(INFINITY, 0, 1),
              name + "has a resolution of inf, which is neither positive nor 0." + hint);
    EXPECT_EQ(refusal(1, -1, 18446744073709551616.0),
              name +
                  "has a range that doesn't fit into 64 bits. Its range is -1 to "
                  "18446744073709551616 with a resolution of 1.");
    EXPECT_EQ(refusal(1e-10, 0, 1e10),
              name +
                  "has a range of more than 2^53 steps. Its range is 0 to 10000000000 with a "
                  "resolution of 1e-10. Narrow the range, or make the resolution coarser or 0.");
    EXPECT_EQ(makeGrid(1, 5, 5).maximumCode(), 0u);
    EXPECT_EQ(makeGrid(0.1, 5, 5).code(5.05), 0u);
}

// Columns of values are what one value after the other is.
TEST(Grid, ValuesAreThoseOfTheirCodes) {
    std::mt19937_64 random(11);
    struct {
        double resolution, minimum, maximum, invalid;
    } const grids[] = {{1, -128, 127, -1000},
                       {1, -128, 127, 5},
                       {0.01, -1e7, 1e7, -2e7},
                       {0.01, -1e7, 1e7, 0.07},
                       {0.3, 1, 1e6, 0},
                       {0.5, 0.25, 1000, 1001},
                       {0.33333333, -1e5, 1e5, 2e5},
                       {0.3333333333, -1e9, 1e9, 2e9},
                       {0, -1e9, 1e9, noInvalid},
                       {0, -1e9, -0.0, 7},
                       {1, 0, 9e15, -1}};
    for (const auto& g : grids) {
        SCOPED_TRACE(g.resolution);
        const Grid grid = makeGrid(g.resolution, g.minimum, g.maximum, g.invalid);
        const std::uint64_t first = grid.firstAtLeast(-INFINITY).code;
        std::vector<std::uint64_t> codes{first, grid.maximumCode(), grid.invalidCode()};
        for (int i = 0; i < 100; ++i)
            codes.push_back(first + random() % (grid.maximumCode() - first + 1));
        std::vector<double> values(codes.size());
        grid.values(codes, values.data());
        for (std::size_t i = 0; i < codes.size(); ++i) {
            if (std::isnan(g.invalid) && codes[i] == grid.invalidCode()) {
                EXPECT_TRUE(std::isnan(values[i]) && std::isnan(grid.value(codes[i])));
                continue;
            }
            EXPECT_EQ(values[i], grid.value(codes[i]));
            EXPECT_EQ(grid.code(values[i]), codes[i]);
            if (!grid.isInvalid(codes[i]) && g.resolution > 0) {
                // No step drifts away.
                EXPECT_NEAR(values[i], g.minimum + static_cast<double>(codes[i]) * g.resolution,
                            g.resolution * 1e-3);
            }
        }
        EXPECT_EQ(grid.value(grid.maximumCode()) <= g.maximum + g.resolution / 2, true);
        const std::uint64_t most = std::max(grid.maximumCode(), grid.invalidCode());
        EXPECT_LE(most, grid.width() == 8 ? ~0ull : (1ull << (8 * grid.width())) - 1);
    }
}

TEST(Grid, FloatsKeepTheirOrderAndNaNLiesBehindThem) {
    const Grid grid = makeGrid(0, -1e30, 1e30, -1);
    std::mt19937_64 random(7);
    std::normal_distribution<double> normal(0, 1e3);
    for (int i = 0; i < 1000; ++i) {
        const double a = normal(random), b = normal(random);
        ASSERT_EQ(grid.code(a) < grid.code(b), a < b);
        ASSERT_EQ(grid.value(grid.code(a)), a);
        ASSERT_EQ(grid.firstAtLeast(a).code, grid.code(a));
        ASSERT_EQ(grid.firstAbove(a).code, grid.code(a) + 1);
    }
    EXPECT_EQ(grid.code(-0.0), grid.code(0.0));
    EXPECT_EQ(grid.code(noInvalid), grid.invalidCode());
    EXPECT_EQ(grid.code(-1.0), grid.invalidCode());
    EXPECT_EQ(grid.value(grid.invalidCode()), -1);
    EXPECT_TRUE(grid.invalidIsOffGrid());
    EXPECT_TRUE(std::isnan(makeGrid(0, 0, 1).value(makeGrid(0, 0, 1).code(noInvalid))));
}

TEST(Statistics, LeaveInvalidCodesOut) {
    const Grid grid = makeGrid(1, 0, 300, 7);
    Column column(2, 100);
    for (std::size_t i = 0; i < 100; ++i)
        column.set(i, i % 10 == 0 ? 7 : 50 + i);
    EXPECT_EQ(statistics(column, grid), (ElementStatistics{51, 149, true, true}));
    for (std::size_t i = 0; i < 100; ++i)
        column.set(i, 7);
    EXPECT_EQ(statistics(column, grid), (ElementStatistics{0, 0, false, true}));
    EXPECT_EQ(statistics(Column(2, 0), grid), ElementStatistics{});

    // Merging tells the same as one pass over both parts.
    std::mt19937 random(3);
    for (int round = 0; round < 200; ++round) {
        Column whole(2, 20), left(2, 8), right(2, 12);
        for (std::size_t i = 0; i < 20; ++i) {
            whole.set(i, random() % (1 + round % 9));
            (i < 8 ? left : right).set(i < 8 ? i : i - 8, whole[i]);
        }
        ElementStatistics merged = statistics(left, grid);
        merged.merge(statistics(right, grid));
        ASSERT_EQ(merged, statistics(whole, grid));
    }
}
