#include "core/delimitedpoints.h"

#include "numbers/numbertext.h"
#include "tests/qrb/library.h"

#include <bit>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <random>
#include <stdexcept>
#include <thread>

namespace tarvo::core {
namespace {

using qrb::pointcloud::DataType;
using qrb::pointcloud::PointAttribute;

class DelimitedPoints : public LibraryTest {
protected:
    DelimitedPoints() { m_cloud = std::make_unique<qrb::Pointcloud>(m_context); }

    // Points in a row along "p", with random values of random definitions.
    void make(std::uint32_t count, std::mt19937_64& random) {
        qrb::pointcloud::CreateSettings settings(m_context);
        settings.primaryAttribute = attribute("p", 0, count, 1);
        settings.chunkMode = 1;
        settings.chunkSize = 3000;
        m_cloud->create(file("a.qrbx"), settings);
        auto& transactions = m_cloud->transactions();
        transactions.begin("all", "test");
        std::vector<std::vector<double>> values;
        const auto add = [&](PointAttribute one) {
            one.name = "a" + std::to_string(values.size());
            m_cloud->pointAttributes().add(one);
            auto& column = values.emplace_back(std::size_t{count} * one.length);
            for (double& value : column) {
                const double part = static_cast<double>(random() >> 11) * 0x1p-53;
                value = random() % 8 == 0 && !std::isnan(one.invalidValue) ? one.invalidValue
                        : random() % 8 == 0
                            ? one.minimumValue
                            : one.minimumValue * (1 - part) + one.maximumValue * part;
            }
        };
        const auto definition = [&](double resolution, double minimum, double maximum,
                                    double invalid, std::uint32_t length = 1) {
            PointAttribute one = attribute("", minimum, maximum, resolution, length);
            one.invalidValue = invalid;
            add(one);
        };
        definition(1, 0, 255, NAN, 3);
        definition(1, 1, 65535, 0);
        definition(1, 0, 4e9, NAN);
        definition(1, 0, 0x1p53, NAN);
        definition(1, -1e5, 1e5, -1e6, 2);
        definition(1, -0x1p53, 0x1p53, 0x1p54);
        definition(1, 0, 100, -0.5);
        definition(0.001, 636000, 652000, NAN, 3);
        definition(0.1, -10, 10, -9999.25);
        definition(0.01, 1234567.125, 1234569.125, NAN);
        definition(0.3, 1, 1e6, 0);
        definition(0, -1e30, 1e30, NAN);
        for (int i = 0; i < 12; ++i) {
            const double resolution = std::pow(10, -static_cast<int>(random() % 10)) *
                                      static_cast<double>(1 + random() % 5);
            const double low = std::round(static_cast<double>(random() % 4000) - 2000) * resolution;
            definition(resolution, low, low + static_cast<double>(random() % 1000000) * resolution,
                       random() % 2 ? NAN : low - resolution * 7);
        }
        std::vector<double> places(count);
        for (std::uint32_t i = 0; i < count; ++i)
            places[i] = i;
        auto query = m_cloud->insert();
        query.bind("p", DataType::DOUBLE, places.data(), 8);
        for (std::size_t i = 0; i < values.size(); ++i)
            query.bind("a" + std::to_string(i), DataType::DOUBLE, values[i].data(),
                       static_cast<std::int32_t>(values[i].size() / count * 8));
        ASSERT_EQ(query.next(count), count);
        query.close();
        transactions.commit();
    }
    std::vector<PointColumn> columns() const {
        std::vector<PointColumn> columns;
        for (const std::string& name : m_cloud->pointAttributes().list())
            for (PointColumn& column : columnsOf(m_cloud->pointAttributes().get(name)))
                columns.push_back(std::move(column));
        return columns;
    }
    std::string text(const PointSelection& selection, const std::vector<PointColumn>& columns,
                     const DelimitedForm& form, std::uint64_t points) const {
        std::string text;
        const auto thread = std::this_thread::get_id();
        EXPECT_EQ(writeDelimited(*m_cloud, selection, columns, form,
                                 [&](std::string_view piece) {
                                     EXPECT_EQ(std::this_thread::get_id(), thread);
                                     text += piece;
                                 }),
                  points);
        return text;
    }

    qrb::Context m_context{"OFF", ""};
    std::unique_ptr<qrb::Pointcloud> m_cloud;
};

// A text by the standard library's digits alone, point by point.
std::string slowText(const qrb::Pointcloud& cloud, const PointSelection& selection,
                     const std::vector<PointColumn>& columns, const DelimitedForm& form) {
    std::string text;
    std::vector<double> invalid;
    for (const PointColumn& column : columns)
        invalid.push_back(cloud.pointAttributes().get(column.attribute).invalidValue);
    for (const PointColumn& column : columns)
        text += (text.empty() ? "" : std::string(1, form.separator)) + column.name;
    constexpr std::uint32_t page = 500;
    PointPages pages(cloud, selection, columns, page);
    std::uint32_t count = 0;
    for (std::uint64_t i = 0; i < form.limit; ++i) {
        const auto row = static_cast<std::uint32_t>(i % page);
        if (row == 0)
            count = pages.next();
        if (row == count)
            break;
        text += '\n';
        for (std::size_t c = 0; c < columns.size(); ++c) {
            if (c > 0)
                text += form.separator;
            const std::uint64_t bits = pages.value(row, c);
            const double value = std::bit_cast<double>(bits);
            const int places = columns[c].format.places();
            if (columns[c].format.type() == DataType::UINT64)
                text += std::to_string(bits);
            else if (columns[c].format.type() == DataType::INT64)
                text += std::to_string(static_cast<std::int64_t>(bits));
            else if (value == invalid[c])
                text += columns[c].format.text(bits);
            else if (places < 0)
                numbers::appendPlain(text, value);
            else {
                char digits[400];
                std::snprintf(digits, sizeof digits, "%.*f", places, value);
                const bool zero =
                    std::string_view(digits).find_first_not_of("-0.") == std::string_view::npos;
                text += digits + (zero && digits[0] == '-');
            }
        }
    }
    return text + '\n';
}

TEST_F(DelimitedPoints, AreTheSameTextByManyThreadsAsOneByOne) {
    const char* const given = std::getenv("QRB_SEED");
    const std::uint64_t seed = given ? std::strtoull(given, nullptr, 10) : 3;
    SCOPED_TRACE("seed " + std::to_string(seed));
    std::mt19937_64 random(seed);
    constexpr std::uint32_t count = 40'000;
    make(count, random);
    const auto all = columns();
    EXPECT_TRUE(text({}, all, {';'}, count) == slowText(*m_cloud, {}, all, {';'}));
    for (const std::uint64_t limit : {0, 1, 8192, 16384, 20'000}) {
        const PointSelection some{"p >= 9000 && a1 > 5000", {}};
        const std::string expected = slowText(*m_cloud, some, all, {',', limit});
        EXPECT_TRUE(text(some, all, {',', limit}, limit) == expected) << limit;
    }
    EXPECT_EQ(text({"p < 3", {}}, {}, {}, 3), "\n\n\n\n");
}

// The line that a full disk or a user ends, and what was read before a fault.
TEST_F(DelimitedPoints, EndWhereTheyAreTold) {
    std::mt19937_64 random(1);
    make(40'000, random);
    int pieces = 0;
    EXPECT_THROW((void)writeDelimited(*m_cloud, {}, columns(), {},
                                      [&](std::string_view) {
                                          if (++pieces == 2)
                                              throw std::runtime_error("full");
                                      }),
                 std::runtime_error);
    EXPECT_EQ(pieces, 2);
    EXPECT_THROW((void)writeDelimited(
                     *m_cloud, {}, columns(), {}, [](std::string_view) {},
                     [](int) { throw std::runtime_error("cancelled"); }),
                 std::runtime_error);
    EXPECT_THROW((void)writeDelimited(*m_cloud, {"nothing == 3", {}}, columns(), {},
                                      [&](std::string_view) { ++pieces; }),
                 qrb::Error);
    EXPECT_EQ(pieces, 2);
}

}  // namespace
}  // namespace tarvo::core
