// What is told of a redefinition beforehand is what it then does.
#include "core/redefinition.h"
#include "core/changelogentries.h"
#include "numbers/numbertext.h"
#include "tests/qrb/library.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <limits>
#include <map>
#include <random>
#include <stdexcept>
#include <vector>

namespace {

using namespace tarvo;
using namespace tarvo::qrb::pointcloud;
using core::countChanges;

constexpr double none = std::numeric_limits<double>::quiet_NaN();

class ToldRedefinition : public LibraryTest {
protected:
    using Values = std::map<std::uint64_t, std::vector<double>>;  // of each point, by its id

    void create() {
        std::filesystem::remove(file("a.qrbx"));
        CreateSettings settings(m_context);
        settings.primaryAttribute = attribute("p", 0, 1'000'000, 1);
        m_cloud.create(file("a.qrbx"), settings);
    }
    // In the pending transaction; no values: the points have the default.
    void insert(std::size_t count, const PointAttribute& q, const std::vector<double>& values) {
        std::vector<double> places(count);
        for (double& place : places)
            place = m_place = std::fmod(m_place + 7919, 1'000'000);
        auto query = m_cloud.insert();
        query.bind("p", DataType::DOUBLE, places.data(), sizeof(double));
        if (!values.empty())
            query.bind(q.name, DataType::DOUBLE, values.data(),
                       static_cast<std::int32_t>(sizeof(double) * q.length));
        ASSERT_EQ(query.next(static_cast<std::uint32_t>(count)), count);
        query.close();
    }
    Values read(const PointAttribute& q) const {
        Values result;
        std::uint64_t id = 0;
        std::vector<double> values(q.length);
        auto query = m_cloud.select();
        query.bind("tarvo.id", DataType::UINT64, &id, sizeof id);
        query.bind(q.name, DataType::DOUBLE, values.data(),
                   static_cast<std::int32_t>(sizeof(double) * q.length));
        while (query.next(1))
            result[id] = values;
        return result;
    }
    std::string changelog() const {
        m_cloud.changelog().exportToTextfile(file("log.txt"));
        std::ifstream in(file("log.txt"));
        return {std::istreambuf_iterator<char>(in), {}};
    }

    qrb::Context m_context{"OFF", ""};
    qrb::Pointcloud m_cloud{m_context};
    double m_place = 1;
};

// A number and whether it counts as a value.
bool isSame(double a, const PointAttribute& before, double b, const PointAttribute& after) {
    const auto invalid = [](double value, const PointAttribute& q) {
        return std::isnan(value) || value == q.invalidValue;
    };
    const bool number = (std::isnan(a) && std::isnan(b)) || std::fabs(a - b) <= 1e-9;
    return number && invalid(a, before) == invalid(b, after);
}

class Definitions {
public:
    explicit Definitions(std::uint64_t seed) : m_random(seed) {}

    int below(int count) { return std::uniform_int_distribution<int>(0, count - 1)(m_random); }
    template <typename List>
    auto pick(const List& list) {
        return list[static_cast<std::size_t>(below(static_cast<int>(std::size(list))))];
    }
    void vary(PointAttribute& q) {
        const double resolutions[] = {1, 1, 1, 0.5, 0.25, 0.1, 0.01, 2, 0};
        if (below(2))
            q.resolution = pick(resolutions);
        if (below(2))
            q.minimumValue = below(41) - 20 + (below(4) ? 0 : 0.5);
        if (below(2) || q.maximumValue < q.minimumValue)
            q.maximumValue = q.minimumValue + below(60);
        if (below(2))
            q.invalidValue = below(2) ? none : below(101) - 50;
        if (below(3) == 0)
            q.length = static_cast<std::uint32_t>(1 + below(3));
        if (below(4) == 0)
            q.storageClass = below(4) ? PointAttribute::DYNAMIC : PointAttribute::VARIABLE;
        else if (below(12) == 0)
            q.storageClass = PointAttribute::CONSTANT;
        q.defaultValue = q.resolution == 0 || below(2) || std::isnan(q.invalidValue)
                             ? q.minimumValue
                             : q.invalidValue;
        if (below(3) == 0)
            q.title = "other";
    }
    double value(const PointAttribute& q) {
        if (below(6) == 0 && (q.resolution == 0 || !std::isnan(q.invalidValue)))
            return std::isnan(q.invalidValue) ? none : q.invalidValue;
        return std::uniform_real_distribution<double>(q.minimumValue, q.maximumValue)(m_random);
    }

private:
    std::mt19937_64 m_random;
};

TEST_F(ToldRedefinition, IsWhatHappensToRandomValues) {
    const char* const given = std::getenv("QRB_SEED");
    const std::uint64_t seed = given ? std::strtoull(given, nullptr, 10) : std::random_device{}();
    SCOPED_TRACE("QRB_SEED=" + std::to_string(seed));
    Definitions random(seed);
    int changing = 0, keeping = 0;
    for (int round = 0; round < 150 && !HasFailure(); ++round) {
        create();
        PointAttribute q = attribute("q", 0, 20, 1);
        random.vary(q);
        std::size_t count = 40;
        std::vector<double> values;
        const double constant = random.value(q);
        while (values.size() < count * q.length)
            values.push_back(q.storageClass == PointAttribute::CONSTANT ? constant
                                                                        : random.value(q));
        TransactionGuard transaction(m_cloud.transactions(), "t", "tests");
        if (random.below(3) == 0)
            insert(10, q, {});  // from before the attribute was there
        m_cloud.pointAttributes().add(q);
        insert(count, q, values);
        for (int step = 0; step < 4 && !HasFailure(); ++step) {
            const PointAttribute stored = m_cloud.pointAttributes().get("q");
            PointAttribute definition = stored;
            random.vary(definition);
            SCOPED_TRACE(stored.toJson() + "\n" + definition.toJson());
            const Values before = read(stored);
            const auto told = countChanges(m_cloud, stored, definition);
            try {
                m_cloud.pointAttributes().put(definition);
            } catch (const qrb::Error&) {
                continue;  // no constant, where points differ; a grid without room
            }
            ASSERT_TRUE(told);
            const Values after = read(definition);
            std::uint64_t changed = 0, points = 0, dropped = 0;
            for (const auto& [id, old] : before) {
                const std::vector<double>& now = after.at(id);
                std::uint64_t here = 0;
                for (std::size_t e = 0; e < old.size(); ++e) {
                    dropped += e >= now.size();
                    here += e >= now.size() || !isSame(old[e], stored, now[e], definition);
                }
                changed += here;
                points += here > 0;
            }
            EXPECT_EQ(told->changed(), changed);
            EXPECT_EQ(told->points, points);
            EXPECT_EQ(told->dropped, dropped);
            EXPECT_EQ(core::describe(*told, stored, definition).empty(), changed == 0);
            (changed > 0 ? changing : keeping) += 1;
        }
        m_cloud.close();
    }
    EXPECT_GT(changing, 50);
    EXPECT_GT(keeping, 20);
}

// The sentence, the figure in the changelog, and what needs no look at the values.
TEST_F(ToldRedefinition, NamesFiguresAndReadsOnlyWhatItMust) {
    create();
    PointAttribute q = attribute("q", 0, 255, 1);
    q.invalidValue = 255;
    TransactionGuard transaction(m_cloud.transactions(), "t", "tests");
    m_cloud.pointAttributes().add(q);
    std::vector<double> values(2000, 7);
    values[0] = 255;
    values[1] = 3;
    insert(values.size(), q, values);
    int read = 0;
    const auto told = [&](const auto& change) {
        PointAttribute definition = q;
        change(definition);
        read = 0;
        const auto changes = countChanges(m_cloud, q, definition, [&](int) { ++read; });
        return changes ? core::describe(*changes, q, definition) : "untold";
    };
    EXPECT_EQ(told([](auto& d) { d.title = "t"; }), "");
    EXPECT_EQ(told([](auto& d) { d.minimumValue = -300, d.maximumValue = 700; }), "");
    EXPECT_EQ(told([](auto& d) { d.maximumValue = 7, d.length = 2; }), "");
    EXPECT_EQ(read, 0) << "the statistics prove that all are kept";
    EXPECT_EQ(told([](auto& d) { d.maximumValue = 3; }),
              "1,998 values of \"q\" lie outside 0 to 3 and would become the invalid value 255.");
    EXPECT_GT(read, 0);
    EXPECT_EQ(told([](auto& d) { d.minimumValue = 4, d.defaultValue = 4; }),
              "1 value of \"q\" lies outside 4 to 255 and would become the invalid value 255.");
    EXPECT_EQ(
        told([](auto& d) { d.invalidValue = none, d.minimumValue = 7, d.defaultValue = 9; }),
        "2 values of \"q\" would change: 1 lies outside 7 to 255 and would become the default "
        "value 9; 1 is invalid and would become the default value 9.");
    EXPECT_EQ(told([](auto& d) { d.resolution = 2; }),
              "1,999 values of \"q\" would be rounded to the resolution 2.");
    EXPECT_EQ(told([](auto& d) { d.invalidValue = 7; }),
              "1,999 values of \"q\" would change: 1,998 are 7 and would count as invalid; 1 is "
              "invalid and would become the invalid value 7.");
    EXPECT_EQ(told([](auto& d) { d.maximumValue = -1; }), "untold");

    // Who cancels has changed nothing.
    PointAttribute narrow = q;
    narrow.maximumValue = 3;
    EXPECT_THROW(countChanges(m_cloud, q, narrow, [](int) { throw std::runtime_error("no"); }),
                 std::runtime_error);
    m_cloud.pointAttributes().put(narrow);
    transaction.commit();
    EXPECT_NE(changelog().find("Attribute \"q\": redefined, 1,998 values changed\n"),
              std::string::npos)
        << changelog();
}

TEST_F(ToldRedefinition, CountsThePointsThatLoseElements) {
    create();
    PointAttribute q = attribute("q", 0, 9, 1, 3);
    TransactionGuard transaction(m_cloud.transactions(), "t", "tests");
    m_cloud.pointAttributes().add(q);
    insert(5, q, {1, 2, 3, 4, 5, 6, 7, 8, 9, 0, 0, 0, 9, 9, 9});
    PointAttribute definition = q;
    definition.length = 2;
    // The statistics tell that the rest is kept: no value needs to be read.
    auto changes =
        countChanges(m_cloud, q, definition, [](int) { ADD_FAILURE() << "values are read"; });
    ASSERT_TRUE(changes);
    EXPECT_EQ(core::describe(*changes, q, definition),
              "5 values of 5 points in \"q\" would be dropped with the elements from number 2 on.");
    definition.length = 3;
    definition.maximumValue = 5;
    changes = countChanges(m_cloud, q, definition);
    ASSERT_TRUE(changes);
    EXPECT_EQ(core::describe(*changes, q, definition),
              "7 values of 3 points in \"q\" lie outside 0 to 5 and would become the default value "
              "0.");
    definition.length = 1;
    changes = countChanges(m_cloud, q, definition);
    ASSERT_TRUE(changes);
    EXPECT_EQ(core::describe(*changes, q, definition),
              "12 values of 5 points in \"q\" would change: 2 lie outside 0 to 5 and would become "
              "the default value 0; 10 would be dropped with the elements from number 1 on.");
    m_cloud.pointAttributes().put(definition);
    transaction.commit();
    EXPECT_NE(changelog().find("Attribute \"q\": redefined, 12 values changed\n"),
              std::string::npos)
        << changelog();
}

// The extremes of points without invalid ones prove nothing of what becomes invalid between them.
TEST_F(ToldRedefinition, SeesAValueBetweenTheExtremesThatBecomesInvalid) {
    create();
    PointAttribute q = attribute("q", 0, 255, 1);
    TransactionGuard transaction(m_cloud.transactions(), "t", "tests");
    m_cloud.pointAttributes().add(q);
    insert(4, q, {10, 20, 20, 30});
    const auto told = [&](double invalid) {
        PointAttribute definition = q;
        definition.invalidValue = invalid;
        const auto changes = countChanges(m_cloud, q, definition);
        return changes ? core::describe(*changes, q, definition) : "untold";
    };
    EXPECT_EQ(told(20), "2 values of \"q\" are 20 and would count as invalid.");
    for (const double end : {10.0, 30.0})
        EXPECT_EQ(told(end), "1 value of \"q\" is " + numbers::numberText(end) +
                                 " and would count as invalid.");
    for (const double none : {9.0, 21.0, 31.0, 300.0})
        EXPECT_EQ(told(none), "") << none;
}

}  // namespace
