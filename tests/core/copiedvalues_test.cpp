// Values of every derived type through a copy: at the ends of their range and where single
// precision ends.
#include "core/creationsettings.h"
#include "core/databasecopy.h"
#include "core/newdatabase.h"
#include "tests/qrb/library.h"

#include <cmath>
#include <limits>
#include <vector>

namespace {

using namespace tarvo;
using namespace tarvo::qrb::pointcloud;

class CopiedValues : public LibraryTest {
protected:
    // The values of one attribute, by the order of their points, in a database and in a copy of it.
    template <typename T>
    void expectKept(const PointAttribute& definition, DataType derived, DataType type,
                    const std::vector<T>& values) {
        SCOPED_TRACE(std::string(dataTypeName(derived)) + " " + definition.name);
        EXPECT_EQ(definition.dataType(), derived);
        qrb::Pointcloud source(m_context);
        CreateSettings settings(m_context);
        settings.primaryAttribute = attribute("p", 0, 100'000, 1);
        source.create(file("source.qrbx"), settings);
        TransactionGuard transaction(source.transactions(), "Begin", "tests");
        source.pointAttributes().add(definition);
        std::vector<std::uint32_t> order(values.size());
        for (std::uint32_t i = 0; i < order.size(); ++i)
            order[i] = i;
        auto query = source.insert();
        query.bind("p", DataType::UINT32, order.data(), 4);
        query.bind(definition.name, type, values.data(), sizeof(T));
        ASSERT_EQ(query.next(static_cast<std::uint32_t>(values.size())), values.size());
        query.close();
        transaction.commit();

        core::Selection what;
        what.attributes = source.pointAttributes().list();
        {
            core::NewDatabase target(m_context, file("copy.qrbx"), true);
            target.create(core::creationSettings(source).value());
            TransactionGuard copying(target.cloud().transactions(), "Copy", "tests");
            EXPECT_EQ(copyDatabase(source, target.cloud(), what), values.size());
            copying.commit();
            target.publish();
        }
        const std::vector<T> before = read<T>(source, definition.name, type, values.size());
        qrb::Pointcloud copied(m_context);
        copied.open(file("copy.qrbx"), OpenSettings(m_context));
        const std::vector<T> after = read<T>(copied, definition.name, type, values.size());
        std::size_t differing = 0;
        for (std::size_t i = 0; i < values.size(); ++i) {
            const auto same = [](T a, T b) { return a == b || (a != a && b != b); };
            EXPECT_TRUE(same(before[i], values[i]) || differing > 5) << "the source, " << values[i];
            if (!same(after[i], before[i]) && ++differing < 5)
                ADD_FAILURE() << "copied " << before[i] << " as " << after[i];
        }
        EXPECT_EQ(differing, 0u) << "of " << values.size();
        copied.close();
        source.close();
        std::filesystem::remove(file("source.qrbx"));
    }

    template <typename T>
    static std::vector<T> read(const qrb::Pointcloud& cloud, const std::string& name, DataType type,
                               std::size_t size) {
        std::vector<T> result(size);
        std::uint32_t order = 0;
        T value{};
        auto query = cloud.select();
        query.bind("p", DataType::UINT32, &order, 4);
        query.bind(name, type, &value, sizeof(T));
        while (query.next(1))
            result.at(order) = value;
        return result;
    }

    PointAttribute whole(double minimum, double maximum) const {
        return attribute("q", minimum, maximum, 1);
    }

    const qrb::Context m_context{"OFF", ""};
};

TEST_F(CopiedValues, OfWholeNumbersAreKeptAtTheirEnds) {
    using Wide = std::vector<std::int64_t>;
    const auto check = [&](double minimum, double maximum, DataType derived, const Wide& values) {
        expectKept(whole(minimum, maximum), derived, DataType::INT64, values);
    };
    check(0, 255, DataType::UINT8, {0, 1, 127, 128, 254, 255});
    check(-128, 127, DataType::INT8, {-128, -127, -1, 0, 126, 127});
    check(0, 65535, DataType::UINT16, {0, 255, 256, 32767, 32768, 65534, 65535});
    check(-32768, 32767, DataType::INT16, {-32768, -32767, -129, -1, 0, 32766, 32767});
    check(0, 4294967295.0, DataType::UINT32, {0, 65536, 16777217, 2147483648, 4294967295});
    check(-2147483648.0, 2147483647.0, DataType::INT32,
          {-2147483648, -16777217, -1, 16777217, 2147483647});
    constexpr std::int64_t largest = std::numeric_limits<std::int64_t>::max();
    constexpr std::int64_t exact = std::int64_t(1) << 53;
    check(-9223372036854775808.0, 9223372036854774784.0, DataType::INT64,
          {-largest - 1, -largest, -exact - 1, -1, 0, exact + 1, 9223372036854774784});
    constexpr std::uint64_t end = std::numeric_limits<std::uint64_t>::max();
    expectKept(whole(0, 18446744073709551615.0), DataType::UINT64, DataType::UINT64,
               std::vector<std::uint64_t>{0, (1ull << 53) + 1, 1ull << 63, end - 1, end});
}

TEST_F(CopiedValues, OfInvalidPointsAreKept) {
    PointAttribute q = whole(0, 200);
    q.invalidValue = 255;
    expectKept(q, DataType::UINT8, DataType::INT64, std::vector<std::int64_t>{0, 255, 200});
    q.invalidValue = -1;
    expectKept(q, DataType::INT16, DataType::INT64, std::vector<std::int64_t>{0, -1, 200});
    PointAttribute steps = attribute("q", 0, 10, 0.1);
    steps.invalidValue = -9999.9;
    expectKept(steps, DataType::DOUBLE, DataType::DOUBLE, std::vector<double>{0, -9999.9, 9.9, 10});
    steps.invalidValue = -9999.5;
    expectKept(steps, DataType::SINGLE, DataType::DOUBLE, std::vector<double>{0, -9999.5, 9.9, 10});
}

// Of more than 2^23 steps neighbours can fall together in single precision.
TEST_F(CopiedValues, OfManyStepsAreNotRoundedThroughSinglePrecision) {
    std::vector<double> values;
    const auto fill = [&](double from, double perUnit) {
        values.clear();
        for (int i = 0; i < 3000; ++i)
            values.push_back(std::round(from * perUnit + i) / perUnit);
    };
    for (const double from : {0.0, 800'000.0, 1'048'575.0, 1'599'600.0}) {
        fill(from, 10);
        expectKept(attribute("q", 0, 1'600'000.5, 0.1), DataType::SINGLE, DataType::DOUBLE, values);
    }
    for (const double from : {-16'000.0, -8'388.0, 0.0, 8'388.0, 15'999.0}) {
        fill(from, 1000);
        expectKept(attribute("q", -16'005.5, 16'005.5, 0.001), DataType::SINGLE, DataType::DOUBLE,
                   values);
    }
}

TEST_F(CopiedValues, OfDoublesAreKeptToTheLastBit) {
    constexpr double none = std::numeric_limits<double>::quiet_NaN();
    const double largest = std::numeric_limits<double>::max() / 4;
    expectKept(attribute("q", -largest, largest, 0), DataType::DOUBLE, DataType::DOUBLE,
               std::vector<double>{-largest, largest, 0.1, 1.0 / 3, 16777217, -5e-324, 2.5e-308,
                                   std::nextafter(1.0, 2.0), none});
    expectKept(attribute("q", -1e6, 1e6, 1e-6), DataType::DOUBLE, DataType::DOUBLE,
               std::vector<double>{-1e6, -999999.999999, 0.000001, 123456.789012, 1e6});
}

}  // namespace
