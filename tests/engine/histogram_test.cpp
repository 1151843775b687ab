// Histograms at the ends of their bins, against a count of the values themselves.
#include "tests/engine/database.h"

#include "engine/report/chart.h"
#include "engine/report/histogram.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <set>

namespace tarvo::engine {
namespace {

using namespace testing;
using report::Bin;
using report::Histogram;

// The histogram of an attribute that has these values.
Histogram histogramOf(const schema::AttributeRecord& attribute, std::vector<double> values) {
    TemporaryFolder folder;
    const std::string file = folder.file("a.qrbx");
    session::Session::create(file, settings(1, 50), "test", {attribute});
    session::Session session(file, {}, "test");
    session.begin("t", "test", "", "");
    std::vector<double> xyz(values.size() * 3);
    for (std::size_t i = 0; i < values.size(); ++i)
        xyz[i * 3] = static_cast<double>(i % 1000);
    {
        query::InsertQuery query(session);
        query.bind("xyz", QRB_DATA_TYPE_DOUBLE, xyz.data(), 24);
        query.bind(attribute.name, QRB_DATA_TYPE_DOUBLE, values.data(), 8);
        query.next(static_cast<std::uint32_t>(values.size()));
    }
    query::commit(session);
    const report::Facts facts = report::gatherFacts(session);
    for (Histogram& histogram : report::makeHistograms(session, facts, 1))
        if (facts.state->attributes[histogram.column.attribute].record.name == attribute.name)
            return std::move(histogram);
    return {};
}

// Each value stands in exactly the bin that says so. halfOpen: the end of a bin belongs to the
// next.
void expectCounted(const Histogram& histogram, const std::vector<double>& values, bool halfOpen) {
    ASSERT_FALSE(histogram.bins.empty());
    std::uint64_t sum = 0;
    for (std::size_t b = 0; b < histogram.bins.size(); ++b) {
        const Bin& bin = histogram.bins[b];
        const double from = std::strtod(bin.from.c_str(), nullptr);
        const double to = std::strtod(bin.to.c_str(), nullptr);
        const bool open = halfOpen && b + 1 < histogram.bins.size();
        EXPECT_LE(from, to);
        if (b > 0) {
            const double before = std::strtod(histogram.bins[b - 1].to.c_str(), nullptr);
            EXPECT_TRUE(halfOpen ? before <= from : before < from) << "bin " << b;
        }
        const auto expected = std::count_if(values.begin(), values.end(), [&](double value) {
            return value >= from && (open ? value < to : value <= to);
        });
        EXPECT_EQ(bin.count, static_cast<std::uint64_t>(expected)) << bin.from << " " << bin.to;
        sum += bin.count;
    }
    EXPECT_EQ(sum, values.size());
    EXPECT_EQ(histogram.count, values.size());
    double mean = 0;
    for (const double value : values)
        mean += value / static_cast<double>(values.size());
    EXPECT_NEAR(histogram.mean, mean, 1e-9 + std::abs(mean) * 1e-12);
    EXPECT_EQ(std::strtod(histogram.minimum.c_str(), nullptr),
              *std::min_element(values.begin(), values.end()));
    EXPECT_EQ(std::strtod(histogram.maximum.c_str(), nullptr),
              *std::max_element(values.begin(), values.end()));
}

// `different` values, the i-th of them i + 1 times.
std::vector<double> staircase(int different, double first, double step) {
    std::vector<double> values;
    for (int i = 0; i < different; ++i)
        values.insert(values.end(), static_cast<std::size_t>(i + 1), first + i * step);
    return values;
}

TEST(Histograms, GiveFewValuesABinEachAndMoreARange) {
    for (const bool named : {false, true}) {
        schema::AttributeRecord attribute = record("n", -100, 1000);
        if (named)
            attribute.namedValues = "0=none\n3=three";
        const int most = named ? 64 : 16;
        for (const int different : {1, 2, most - 1, most, most + 1, 100})
            for (const double step : {1.0, 3.0}) {
                SCOPED_TRACE(std::to_string(different) + (named ? " named values, " : " values, ") +
                             std::to_string(step) + " apart");
                const std::vector<double> values = staircase(different, -9, step);
                const Histogram histogram = histogramOf(attribute, values);
                expectCounted(histogram, values, false);
                EXPECT_EQ(histogram.singleValues, different <= most);
                if (different <= most) {
                    EXPECT_EQ(histogram.bins.size(), static_cast<std::size_t>(different));
                } else {
                    EXPECT_LE(histogram.bins.size(), 64u);
                    EXPECT_GT(histogram.bins.size(), 16u);
                }
                for (const Bin& bin : histogram.bins)
                    EXPECT_EQ(bin.name, named && bin.from == "0" && bin.to == "0"   ? "none"
                                        : named && bin.from == "3" && bin.to == "3" ? "three"
                                                                                    : "");
            }
    }
}

TEST(Histograms, CutScaledAndFloatValuesAtTheEndsOfTheirBins) {
    const std::vector<double> scaled = staircase(90, -7.25, 0.25);
    expectCounted(histogramOf(record("n", -10, 40, 0.25), scaled), scaled, false);
    std::vector<double> real = staircase(65, -2, 0.0625);
    for (const double edge : {-2.0, 2.0, 1.9999999, 1e-300})
        real.push_back(edge);
    expectCounted(histogramOf(record("n", -10, 40, 0), real), real, true);
}

TEST(Histograms, CountInvalidValuesApart) {
    // With as many valid ones as have a bin each: a bin a step, several steps a bin, floats.
    for (const auto& [resolution, step] : {std::pair(1.0, 1.0), {1, 5}, {0, 0.5}})
        for (const double invalid : {-1.0, 50.0, 200.0}) {
            SCOPED_TRACE(std::to_string(step) + " apart, " + std::to_string(invalid));
            schema::AttributeRecord attribute = record("n", 0, 100, resolution);
            attribute.invalidValue = invalid;
            const std::vector<double> valid = staircase(16, 3, step);
            std::vector<double> values = valid;
            values.insert(values.begin() + 5, 7, invalid);
            const Histogram histogram = histogramOf(attribute, values);
            EXPECT_EQ(histogram.invalid, 7u);
            EXPECT_EQ(histogram.bins.size(), 16u);
            EXPECT_TRUE(histogram.singleValues);
            expectCounted(histogram, valid, false);
        }
}

TEST(Histograms, TakeTheirNamesFromLinesThatCanBeRead) {
    schema::AttributeRecord attribute = record("n", 0, 1000);
    attribute.invalidValue = 999;
    attribute.namedValues =
        "0=none\r\n0=twice\n1x=one\n=two\n2\n 3 =\tthree \t\r\n4=a=b\r\n"
        "2000=far\n999=lost\r\n100=end";
    std::vector<double> values{0, 1, 2, 3, 4, 999};
    const Histogram few = histogramOf(attribute, values);
    std::vector<std::string> names;
    for (const Bin& bin : few.bins)
        names.push_back(bin.from + ":" + bin.name);
    EXPECT_EQ(names, (std::vector<std::string>{"0:none", "1:", "2:", "3:three", "4:a=b"}));
    EXPECT_EQ(few.invalidName, "lost");
    // A bin of several values has none, a last one of a single value has its own.
    values = staircase(101, 0, 1);
    const Histogram ranges = histogramOf(attribute, values);
    expectCounted(ranges, values, false);
    EXPECT_EQ(ranges.bins.front().name, "");
    EXPECT_EQ(ranges.bins.back().from, "100");
    EXPECT_EQ(ranges.bins.back().name, "end");
}

TEST(Histograms, HaveABinPerStepUpTo64) {
    for (const auto& [different, bins] : {std::pair(63, 63u), {64, 64u}, {65, 33u}, {128, 64u}}) {
        const std::vector<double> values = staircase(different, 5, 1);
        const Histogram histogram = histogramOf(record("n", 0, 1000), values);
        EXPECT_EQ(histogram.bins.size(), bins) << different;
        expectCounted(histogram, values, false);
    }
}

// Beyond what differences and quotients of numbers can be.
TEST(Histograms, HoldFloatsOfAnyRange) {
    const double most = 1.7e308;
    std::vector<double> values;
    for (int i = -20; i <= 20; ++i)
        values.push_back(most / 20 * i);
    Histogram histogram = histogramOf(record("n", -most, most, 0), values);
    ASSERT_EQ(histogram.bins.size(), 64u);
    std::uint64_t sum = 0;
    for (const Bin& bin : histogram.bins) {
        EXPECT_LE(bin.count, 1u);
        sum += bin.count;
    }
    EXPECT_EQ(sum, 41u);
    EXPECT_EQ(histogram.bins.front().from, "-1.7e+308");
    EXPECT_EQ(histogram.bins.back().to, "1.7e+308");
    values.clear();
    for (int i = 0; i < 20; ++i)
        values.push_back(5e-324 * i);
    histogram = histogramOf(record("n", 0, 1, 0), values);
    ASSERT_EQ(histogram.bins.size(), 1u);
    EXPECT_EQ(histogram.bins[0].count, 20u);
    EXPECT_EQ(histogram.bins[0].to, "9.4e-323");
}

TEST(Histograms, AreThoseOfEveryElement) {
    TemporaryFolder folder;
    const std::string file = folder.file("a.qrbx");
    session::Session::create(file, settings(1, 50), "test", {record("many", 0, 255, 1, 150)});
    session::Session session(file, {}, "test");
    session.begin("t", "test", "", "");
    std::vector<std::uint8_t> values(150);
    for (std::size_t i = 0; i < values.size(); ++i)
        values[i] = static_cast<std::uint8_t>(i + 1);
    const double xyz[] = {1, 2, 3};
    query::InsertQuery query(session);
    query.bind("xyz", QRB_DATA_TYPE_DOUBLE, xyz, 24);
    query.bind("many", QRB_DATA_TYPE_UINT8, values.data(), 150);
    query.next(1);
    query::commit(session);
    const report::Facts facts = report::gatherFacts(session);
    std::vector<std::string> found;
    std::vector<std::string> expected;
    for (const Histogram& histogram : report::makeHistograms(session, facts, 1)) {
        ASSERT_EQ(histogram.bins.size(), 1u);
        found.push_back(std::to_string(histogram.column.attribute) + " " +
                        std::to_string(histogram.column.element) + " " + histogram.bins[0].from);
    }
    for (const char* first : {"0 0 1", "0 1 2", "0 2 3", "1 0 1"})
        expected.push_back(first);
    for (int i = 0; i < 150; ++i)
        expected.push_back("2 " + std::to_string(i) + " " + std::to_string(i + 1));
    EXPECT_EQ(found, expected);
}

TEST(Histograms, ReadAShareOfTheLeavesThatKeepsToTheLimit) {
    struct Case {
        std::uint64_t points, limit, step;
    };
    for (const Case& c : {Case{0, 0, 1},
                          {1, 0, 1},
                          {100, 0, 100},
                          {99, 100, 1},
                          {100, 100, 1},
                          {101, 100, 2},
                          {200, 100, 2},
                          {201, 100, 3},
                          {5, 1, 5}}) {
        report::Facts facts;
        auto state = std::make_shared<session::State>();
        state->pointCount = c.points;
        facts.state = state;
        EXPECT_EQ(report::sampleStep(facts, c.limit), c.step) << c.points << " " << c.limit;
    }
}

TEST(Histograms, ShowABarForWhatOccursAtAll) {
    Histogram histogram;
    for (const std::uint64_t count : {std::uint64_t(1'000'000), std::uint64_t(1), std::uint64_t(0)})
        histogram.bins.push_back({"", "", count, ""});
    drawing::Image image = report::drawBars(histogram);
    const unsigned lowest = image.height() - 2;  // above the axis
    const auto height = [&](unsigned bin) {
        unsigned pixels = 0;
        for (unsigned y = 0; y <= lowest; ++y)
            pixels += image.at(bin * image.width() / 3 + 5, y).alpha != 0;
        return pixels;
    };
    EXPECT_EQ(height(0), lowest + 1);
    EXPECT_EQ(height(1), 1u);
    EXPECT_EQ(height(2), 0u);
}

}  // namespace
}  // namespace tarvo::engine
