#include "core/valueformat.h"

#include "core/defaultattribute.h"
#include "numbers/numbertext.h"
#include "tests/qrb/library.h"

#include <bit>
#include <cmath>

namespace tarvo::core {
namespace {

using qrb::pointcloud::DataType;
using qrb::pointcloud::PointAttribute;

PointAttribute grid(double resolution, double minimum, double maximum, double invalid = NAN) {
    PointAttribute attribute;
    attribute.length = 1;
    attribute.resolution = resolution;
    attribute.minimumValue = minimum;
    attribute.maximumValue = maximum;
    attribute.defaultValue = minimum;
    attribute.invalidValue = invalid;
    return attribute;
}

std::string text(const PointAttribute& attribute, double value) {
    return ValueFormat(attribute).text(std::bit_cast<std::uint64_t>(value));
}

TEST(ValueFormat, HasThePlacesOfTheResolution) {
    const std::pair<double, int> places[] = {{1, 0},       {2, 0},    {0.25, 2}, {0.001, 3},
                                             {0.00025, 5}, {12.5, 1}, {1e-7, 7}, {1.0 / 3, 16}};
    for (const auto& [resolution, expected] : places)
        EXPECT_EQ(decimalsOfResolution(resolution), expected) << resolution;
    EXPECT_EQ(text(grid(0.01, -10, 10), -0.001), "0.00");
    EXPECT_EQ(text(grid(0.01, -10, 10), -1.5), "-1.50");
    EXPECT_EQ(text(grid(2.5, 0, 10), 7.5), "7.5");
    EXPECT_EQ(text(grid(1000, 0, 5000), 4000), "4000");
}

// A grid whose own places would round its values.
TEST(ValueFormat, ShowsValuesThatThePlacesWouldHide) {
    EXPECT_EQ(text(grid(0, 0, 1e6), 245384.64506943894), "245384.64506943894");
    EXPECT_EQ(text(grid(0, 0, 1e6), 0.000000125), "0.000000125");
    EXPECT_EQ(text(grid(0, -1e300, 1e300), 3), "3");
    EXPECT_EQ(text(grid(1e-17, 0, 1e-10), 3e-17), "0.00000000000000003");
    EXPECT_EQ(text(grid(1.0 / 360, 0, 1), 129.0 / 360), "0.35833333333333334");
    EXPECT_EQ(text(grid(1.0 / 3, 0, 1), 1.0 / 3), "0.3333333333333333");
    EXPECT_EQ(text(grid(1, 0.5, 10.5), 3.5), "3.5");
    EXPECT_EQ(text(grid(0.01, 1234567.125, 1234569.125), 1234568.125), "1234568.125");
    EXPECT_EQ(text(grid(0.1, 0, 10, -9999.25), -9999.25), "-9999.25");
    EXPECT_EQ(text(grid(0.1, 0, 10, -1), -1), "-1.0");
    EXPECT_EQ(text(grid(0, 0, 1), NAN), "nan");
}

TEST(ValueFormat, ReadsWholeNumbersInATypeThatHoldsThemAll) {
    EXPECT_EQ(ValueFormat(grid(1, 0, 100)).type(), DataType::UINT64);
    EXPECT_EQ(ValueFormat(grid(1, -1, 100)).type(), DataType::INT64);
    EXPECT_EQ(ValueFormat(grid(1, 0, 100, -1)).type(), DataType::INT64);
    EXPECT_EQ(ValueFormat(grid(1, 0, 100, 0x1p64)).type(), DataType::UINT64);
    EXPECT_EQ(ValueFormat(grid(1, -0x1p63, 0x1p63)).type(), DataType::INT64);
    EXPECT_EQ(ValueFormat(grid(1, 0, 100, -0.5)).type(), DataType::DOUBLE);
    EXPECT_EQ(ValueFormat(grid(1, 0, 0x1p63, -1)).type(), DataType::DOUBLE);
    EXPECT_EQ(ValueFormat(grid(1, 0, 0x1p70)).type(), DataType::DOUBLE);
    EXPECT_EQ(ValueFormat(grid(0.5, 0, 100)).type(), DataType::DOUBLE);
    const ValueFormat whole(grid(1, 0, 100));
    EXPECT_EQ(whole.text(~0ull), "18446744073709551615");
    EXPECT_EQ(ValueFormat(grid(1, -5, 5)).text(static_cast<std::uint64_t>(-7)), "-7");
}

TEST(ValueFormat, SubtractsWithoutOverflow) {
    const ValueFormat large(grid(1, -0x1p63, 0x1p63));
    EXPECT_EQ(large.differenceText(1ull << 63, ~0ull >> 1), "18446744073709551615");
    const ValueFormat real(grid(0.01, -10, 10));
    EXPECT_EQ(
        real.differenceText(std::bit_cast<std::uint64_t>(-1.25), std::bit_cast<std::uint64_t>(0.5)),
        "1.75");
}

TEST(ValueFormat, NamesElements) {
    EXPECT_EQ(elementNames("a", 1), std::vector<std::string>{"a"});
    EXPECT_EQ(elementNames("a", 2), (std::vector<std::string>{"a[0]", "a[1]"}));
    EXPECT_EQ(elementNames("a", 12, 10).size(), 10u);
    EXPECT_EQ(elementNames("a", 12).back(), "a[11]");
}

class Values : public LibraryTest {};

// Least, greatest, default and invalid value of each default attribute and some between: what the
// database makes of them, their texts give back to the last bit.
TEST_F(Values, OfEveryDefaultAttributeAreShownAsTheyAreStored) {
    const qrb::Context context("OFF", "");
    qrb::pointcloud::CreateSettings settings(context);
    settings.primaryAttribute = attribute("xyz", -100, 100, 0.25, 3);
    qrb::Pointcloud cloud(context);
    cloud.create(file("a.qrbx"), settings);
    auto& transactions = cloud.transactions();
    transactions.begin("all", "test");
    std::vector<PointAttribute> all;
    for (const catalogue::AttributeEntry& entry : catalogue::attributes()) {
        if (entry.name != "tarvo.id")
            cloud.pointAttributes().addDefault(entry.name);
        all.push_back(cloud.pointAttributes().get(entry.name));
    }
    constexpr std::uint32_t count = 50;
    const auto values = [](const PointAttribute& one) {
        const double invalid = std::isnan(one.invalidValue) ? one.minimumValue : one.invalidValue;
        std::vector values{one.minimumValue, one.defaultValue, invalid, one.maximumValue};
        for (double part = 0.5; values.size() < count; part = std::fmod(part + 0.618033989, 1))
            values.push_back(one.minimumValue * (1 - part) + one.maximumValue * part);
        // A point id is never 0 and never there twice, and points are read in the order of theirs.
        for (std::size_t p = 0; one.name == "tarvo.id" && p < count; ++p)
            values[p] = static_cast<double>(p) * 0x1p32 + 1;
        return values;
    };
    std::vector<double> places(std::size_t{3} * count);
    for (std::size_t p = 0; p < count; ++p)
        places[3 * p] = static_cast<double>(p);
    std::vector<std::vector<double>> given;
    qrb::pointcloud::QueryInsert insert = cloud.insert();
    insert.bind("xyz", DataType::DOUBLE, places.data(), 3 * sizeof(double));
    for (const PointAttribute& one : all) {
        given.emplace_back();
        for (const double value : values(one))
            given.back().insert(given.back().end(), one.length, value);
        insert.bind(one.name, DataType::DOUBLE, given.back().data(),
                    static_cast<std::int32_t>(one.length * sizeof(double)));
    }
    ASSERT_EQ(insert.next(count), count);
    insert.close();
    transactions.commit();

    for (const PointAttribute& one : all) {
        const ValueFormat format(one);
        const auto stride = static_cast<std::int32_t>(one.length * sizeof(double));
        std::vector<std::uint64_t> bits(std::size_t{count} * one.length);
        std::vector<double> stored(bits.size());
        auto shown = cloud.select("");
        shown.bind(one.name, format.type(), bits.data(), stride);
        ASSERT_EQ(shown.next(count), count);
        auto read = cloud.select("");
        read.bind(one.name, DataType::DOUBLE, stored.data(), stride);
        ASSERT_EQ(read.next(count), count);
        const std::vector<double> expected = values(one);
        for (std::size_t i = 0; i < bits.size(); ++i) {
            const std::size_t p = i / one.length;
            const std::string text = format.text(bits[i]);
            EXPECT_EQ(numbers::readNumber(text), stored[i]) << one.name << " " << text;
            EXPECT_LE(text.size(), format.width()) << one.name;
            // The greatest value need not lie on the grid.
            EXPECT_NEAR(
                stored[i], expected[p],
                p < 3 ? 0 : std::max(one.resolution * 0.500001, std::abs(expected[p]) * 1e-15))
                << one.name << " " << text;
        }
    }
}

}  // namespace
}  // namespace tarvo::core
