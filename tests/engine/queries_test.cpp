// Queries at their edges: refused and made again, beyond the cache, at the ends of ranges, beside
// changes of their database.
#include "tests/engine/store.h"

#include "engine/query/commit.h"
#include "engine/query/fill.h"
#include "engine/query/stat.h"

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <set>

namespace tarvo::engine {
namespace {

using namespace testing;

class Queries : public ::testing::Test {
protected:
    void create(const std::vector<schema::AttributeRecord>& extra, std::uint32_t chunkSize = 100) {
        session::Session::create(file, settings(1, chunkSize), "test", extra);
        session = std::make_unique<session::Session>(file, session::OpenSettings{0}, "test");
    }
    // Points in a row whose attribute has these values.
    void insertValues(const char* attribute, std::vector<double> values,
                      std::vector<std::uint64_t> ids = {}) {
        std::vector<double> xyz(values.size() * 3);
        for (std::size_t i = 0; i < values.size(); ++i)
            xyz[i * 3] = static_cast<double>(i % 1000);
        query::InsertQuery query(*session);
        query.bind("xyz", QRB_DATA_TYPE_DOUBLE, xyz.data(), 24);
        query.bind(attribute, QRB_DATA_TYPE_DOUBLE, values.data(), 8);
        if (!ids.empty())
            query.bind("tarvo.id", QRB_DATA_TYPE_UINT64, ids.data(), 8);
        query.next(static_cast<std::uint32_t>(values.size()));
    }
    double extreme(const char* attribute, query::Extreme which, bool cleaned,
                   std::uint32_t node = 1) {
        double value = -12345;
        query::readExtreme(*session, node, attribute, which, cleaned, QRB_DATA_TYPE_DOUBLE, &value);
        return value;
    }

    TemporaryFolder folder;
    const std::string file = folder.file("a.qrbx");
    std::unique_ptr<session::Session> session;
};

TEST_F(Queries, ARefusedInsertWithIdsTakesNoneOfThemAndCanBeMadeAgain) {
    create({record("n", 0, 100)});
    session->begin("t", "test", "", "");
    insertValues("n", {1, 2, 3}, {10, 20, 30});
    // An id that is there, one that comes twice, a value out of range behind good ones.
    EXPECT_EQ(outcomeOf([&] {
                  insertValues("n", {4, 5, 6}, {40, 50, 20});
              }).code,
              ErrorCode::Exists);
    EXPECT_EQ(outcomeOf([&] {
                  insertValues("n", {4, 5, 6}, {40, 50, 40});
              }).code,
              ErrorCode::Exists);
    EXPECT_EQ(outcomeOf([&] {
                  insertValues("n", {4, 5, 101}, {40, 50, 60});
              }).code,
              ErrorCode::Range);
    EXPECT_EQ(session->state()->pointCount, 3u);
    insertValues("n", {4, 5, 6}, {40, 50, 60});
    EXPECT_EQ(outcomeOf([&] { insertValues("n", {7}, {60}); }).code, ErrorCode::Exists);
    insertValues("n", {7});  // the next free one
    query::commit(*session, {}, {});
    EXPECT_EQ(session->state()->pointCount, 7u);
    EXPECT_EQ(countOf(*session, "tarvo.id == 61"), 1u);
    EXPECT_EQ(countOf(*session, "n >= 4 && tarvo.id >= 40 && tarvo.id <= 60"), 3u);
    session->begin("u", "test", "", "");
    EXPECT_EQ(outcomeOf([&] { insertValues("n", {8}, {61}); }).code, ErrorCode::Exists);
    insertValues("n", {8}, {5});
    insertValues("n", {9});
    query::commit(*session, {}, {});
    EXPECT_EQ(countOf(*session, "tarvo.id == 5 || tarvo.id == 62"), 2u);
}

TEST_F(Queries, AFillOfMorePointsThanTheCacheHoldsChangesThemAllOnce) {
    create({record("n", 0, 100), record("flag", 0, 1)}, 5000);
    session->begin("t", "test", "", "");
    constexpr std::size_t part = 100'000;
    constexpr std::size_t parts = 9;
    std::vector<double> values(part);
    for (std::size_t i = 0; i < part; ++i)
        values[i] = static_cast<double>(i % 10);
    for (std::size_t i = 0; i < parts; ++i)
        insertValues("n", values);
    query::commit(*session, {}, {});
    session->begin("fill", "test", "", "");
    {
        query::FillQuery fill(*session, {}, "n > 0");
        const double value = 3;
        fill.bind("n", QRB_DATA_TYPE_DOUBLE, &value);
        std::uint64_t changed = 0;
        while (const std::uint32_t count = fill.next(70'001))
            changed += count;
        EXPECT_EQ(changed, part * parts * 9 / 10);
        EXPECT_EQ(fill.progress(), 100u);
    }
    {
        query::FillQuery invert(*session, {}, "n == 3");
        invert.invert("flag");
        std::uint64_t changed = 0;
        while (const std::uint32_t count = invert.next(70'001))
            changed += count;
        EXPECT_EQ(changed, part * parts * 9 / 10);
    }
    query::commit(*session, {}, {});
    EXPECT_EQ(countOf(*session, "n == 3 && flag == 1"), part * parts * 9 / 10);
    EXPECT_EQ(countOf(*session, "n == 0 && flag == 0"), part * parts / 10);
}

TEST_F(Queries, ExtremesCountInvalidValuesOnlyUncleaned) {
    schema::AttributeRecord below = record("below", 0, 100);
    below.invalidValue = -1;
    schema::AttributeRecord above = record("above", 0, 100);
    above.invalidValue = 200;
    schema::AttributeRecord within = record("within", 0, 100, 0.5);
    within.invalidValue = 50;
    schema::AttributeRecord never = record("never", -10, 10);
    create({below, above, within, never});
    session->begin("t", "test", "", "");
    insertValues("below", {5, -1, 70});
    insertValues("above", {5, 200, 70});
    insertValues("within", {5, 50, 70.5});
    insertValues("never", {-7, 8, 0});
    query::commit(*session, {}, {});
    using query::Extreme;
    struct Case {
        const char* name;
        double minimum, maximum, cleanMinimum, cleanMaximum;
    };
    // The points that another insert brought have the default, 0.
    for (const Case& c : {Case{"below", -1, 70, 0, 70}, Case{"above", 0, 200, 0, 70},
                          Case{"within", 0, 70.5, 0, 70.5}, Case{"never", -7, 8, -7, 8}}) {
        SCOPED_TRACE(c.name);
        EXPECT_EQ(extreme(c.name, Extreme::Minimum, false), c.minimum);
        EXPECT_EQ(extreme(c.name, Extreme::Maximum, false), c.maximum);
        EXPECT_EQ(extreme(c.name, Extreme::Minimum, true), c.cleanMinimum);
        EXPECT_EQ(extreme(c.name, Extreme::Maximum, true), c.cleanMaximum);
    }
    EXPECT_EQ(outcomeOf([&] { extreme("below", Extreme::Minimum, false, 99); }).code,
              ErrorCode::NotFound);
    EXPECT_EQ(outcomeOf([&] { extreme("missing", Extreme::Minimum, false); }).code,
              ErrorCode::NotFound);
}

TEST_F(Queries, ExtremesOfNothingButInvalidValuesAreTheInvalidOne) {
    schema::AttributeRecord lost = record("lost", 0, 100);
    lost.invalidValue = 255;
    lost.defaultValue = 255;
    create({lost, record("n", 0, 9)});
    session->begin("t", "test", "", "");
    insertValues("n", {1, 2});
    query::commit(*session, {}, {});
    for (const auto which : {query::Extreme::Minimum, query::Extreme::Maximum}) {
        EXPECT_EQ(extreme("lost", which, false), 255);
        EXPECT_EQ(outcomeOf([&] { extreme("lost", which, true); }).code, ErrorCode::NotFound);
    }
}

// Each operator beside, on and beyond every end of whole, scaled and float values.
TEST_F(Queries, ComparisonsHoldAtTheEndsOfRangesAndBetweenSteps) {
    create({record("whole", -3, 3), record("scaled", -1, 1, 0.25), record("real", -2, 2, 0)}, 4);
    struct Column {
        const char* name;
        std::vector<double> values;
    };
    const Column columns[] = {{"whole", {-3, -2, -1, 0, 1, 2, 3, 3, -3}},
                              {"scaled", {-1, -0.75, -0.25, 0, 0.25, 0.5, 1}},
                              {"real", {-2, -1e-300, 0, 1e-9, 0.1, 2}}};
    for (const Column& column : columns) {
        SCOPED_TRACE(column.name);
        session->begin("t", "test", "", "");
        insertValues(column.name, column.values);
        query::commit(*session, {}, {});
        std::vector<double> all;
        {
            query::SelectQuery query(*session, {}, "");
            double value = 0;
            query.bind(column.name, QRB_DATA_TYPE_DOUBLE, &value, 8);
            while (query.next(1) == 1)
                all.push_back(value);
        }
        std::set<double> bounds{-1e300, 1e300, 0.1, -0.1, 0.125, 0.3};
        for (const double value : column.values)
            for (const double beside : {0.0, 1e-6, -1e-6, 0.5, -0.5})
                bounds.insert(value + beside);
        using Holds = bool (*)(double, double);
        const std::pair<const char*, Holds> operators[] = {
            {"<", [](double a, double b) { return a < b; }},
            {"<=", [](double a, double b) { return a <= b; }},
            {">", [](double a, double b) { return a > b; }},
            {">=", [](double a, double b) { return a >= b; }},
            {"==", [](double a, double b) { return a == b; }},
            {"!=", [](double a, double b) { return a != b; }}};
        for (const double bound : bounds)
            for (const auto& [text, holds] : operators) {
                char number[40];
                std::snprintf(number, sizeof number, "%.17g", bound);
                std::uint64_t expected = 0;
                for (const double value : all)
                    expected += holds(value, bound);
                EXPECT_EQ(countOf(*session, std::string(column.name) + " " + text + " " + number),
                          expected)
                    << text << " " << number;
                expected = 0;
                for (const double value : all)
                    expected += holds(bound, value);
                EXPECT_EQ(countOf(*session, std::string(number) + " " + text + " " + column.name),
                          expected)
                    << number << " " << text;
            }
    }
}

TEST_F(Queries, AScanThatReadsAheadKeepsItsStateWhileATransactionGoesOn) {
    create({record("n", 0, 100)}, 50);
    session->begin("t", "test", "", "");
    std::vector<double> values(20'000, 1);
    insertValues("n", values);
    query::commit(*session, {}, {});
    for (const bool commits : {false, true}) {
        query::SelectQuery query(*session, {}, "n == 1");
        std::uint64_t id = 0;
        double n = 0;
        query.bind("tarvo.id", QRB_DATA_TYPE_UINT64, &id, 8);
        query.bind("n", QRB_DATA_TYPE_DOUBLE, &n, 8);
        std::set<std::uint64_t> ids;
        const auto read = [&](int count) {
            for (int i = 0; i < count && query.next(1) == 1; ++i) {
                EXPECT_TRUE(ids.insert(id).second) << id;
                EXPECT_EQ(n, 1);
            }
        };
        read(100);
        session->begin("beside", "test", "", "");
        read(3000);
        {
            query::FillQuery fill(*session, {}, "tarvo.id > 5000");
            const double value = 2;
            fill.bind("n", QRB_DATA_TYPE_DOUBLE, &value);
            while (fill.next(100'000) > 0) {
            }
        }
        read(3000);
        insertValues("n", {1, 1, 1});
        EXPECT_EQ(countOf(*session, "n == 1"), 5003u);
        read(3000);
        if (commits)
            query::commit(*session, {}, {});
        else
            session->rollback();
        read(1'000'000);
        EXPECT_EQ(ids.size(), 20'000u);
        EXPECT_EQ(countOf(*session, "n == 1"), commits ? 5003u : 20'000u);
    }
}

// Values between whole numbers, read as whole numbers, are the nearest ones.
TEST_F(Queries, ValuesReadAsWholeNumbersAreRounded) {
    create({record("level", -10, 10, 0.1)});
    session->begin("points", "test", "", "");
    insertValues("level", {1.9, 1.2, -0.6, -0.4, -9.9, 0});
    query::SelectQuery query(*session, {}, "");
    std::int32_t values[6] = {};
    query.bind("level", QRB_DATA_TYPE_INT32, values, sizeof values[0]);
    ASSERT_EQ(query.next(6), 6u);
    std::sort(std::begin(values), std::end(values));
    EXPECT_EQ(std::vector<std::int32_t>(std::begin(values), std::end(values)),
              (std::vector<std::int32_t>{-10, -1, 0, 0, 1, 2}));
}

TEST_F(Queries, AFillEndsWherePointsWereAddedSinceItBegan) {
    create(amplitudeOnly());
    session->begin("points", "test", "", "");
    insertValues("amplitude", std::vector<double>(500, 1));
    query::commit(*session);
    session->begin("fill", "test", "", "");
    query::FillQuery fill(*session, {}, "");
    const double value = 7;
    fill.bind("amplitude", QRB_DATA_TYPE_DOUBLE, &value);
    ASSERT_EQ(fill.next(100), 100u);
    insertValues("amplitude", std::vector<double>(300, 2));
    (void)session->change();
    session->settle();
    EXPECT_EQ(outcomeOf([&] { fill.next(100); }).code, ErrorCode::State);
    session->rollback();
}

// A caller that goes on after an error must not take what follows for the rest.
TEST_F(Queries, ASelectThatFailedFailsAgain) {
    create(amplitudeOnly(), 20);
    session->begin("points", "test", "", "");
    insertValues("amplitude", std::vector<double>(1000));
    query::commit(*session);
    session.reset();
    // The ids of some leaves in the middle.
    runSql(file,
           "UPDATE blob SET data = CAST(substr(data, 1, length(data) / 2) || x'0badc0de' || "
           "substr(data, length(data) / 2 + 5) AS BLOB) WHERE id / 3 = "
           "(SELECT last_blob / 6 FROM snapshot WHERE id = 2)");
    session = std::make_unique<session::Session>(file, session::OpenSettings{0}, "test");
    query::SelectQuery query(*session, {}, "");
    std::uint64_t id = 0;
    query.bind("tarvo.id", QRB_DATA_TYPE_UINT64, &id, 8);
    std::uint64_t read = 0;
    const Outcome first = outcomeOf([&] {
        while (query.next(1) > 0)
            ++read;
    });
    ASSERT_EQ(first.code, ErrorCode::Damaged);
    for (int i = 0; i < 10; ++i)
        EXPECT_FALSE(outcomeOf([&] { query.next(1); }).text.empty()) << read;
}

}  // namespace
}  // namespace tarvo::engine
