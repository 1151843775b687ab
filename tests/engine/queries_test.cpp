// Queries at their edges: refused and made again, beyond the cache, at the ends of ranges, beside
// changes of their database.
#include "tests/engine/store.h"

#include "engine/query/commit.h"
#include "engine/query/fill.h"
#include "engine/query/redefine.h"
#include "engine/query/remove.h"
#include "engine/query/stat.h"
#include "engine/query/update.h"
#include "engine/report/check.h"

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

// As a caller has them who keeps a point in one record.
TEST_F(Queries, IdsOfOnesOwnAreTakenAtTheirStride) {
    create(amplitudeOnly(), 20);
    struct Row {
        std::uint64_t id;
        double xyz[3];
    };
    Row rows[] = {{30, {3, 0, 0}}, {10, {1, 0, 0}}, {20, {2, 0, 0}}};
    session->begin("own ids", "test", "", "");
    query::InsertQuery insertion(*session);
    insertion.bind("tarvo.id", QRB_DATA_TYPE_UINT64, &rows[0].id, sizeof(Row));
    insertion.bind("xyz", QRB_DATA_TYPE_DOUBLE, rows[0].xyz, sizeof(Row));
    EXPECT_EQ(insertion.next(3), 3u);
    query::commit(*session);
    for (const Row& row : rows)
        EXPECT_EQ(countOf(*session, "tarvo.id == " + std::to_string(row.id) +
                                        " && xyz[0] == " + std::to_string(row.xyz[0])),
                  1u);
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

// Also what is the invalid value, which need not be whole.
TEST_F(Queries, ValuesThatAWholeNumberTypeCantHoldAreRefusedFromItsEndsOn) {
    schema::AttributeRecord n = record("n", 0, 100);
    n.invalidValue = 200.6;
    create({record("real", -1e20, 1e20, 0), n});
    session->begin("t", "test", "", "");
    insertValues("real", {0});
    const double two63 = 9223372036854775808.0;
    struct Case {
        double value;
        std::uint32_t type;
        bool fits;
    };
    for (const Case& c : {Case{255.4, QRB_DATA_TYPE_UINT8, true},
                          {256, QRB_DATA_TYPE_UINT8, false},
                          {-0.4, QRB_DATA_TYPE_UINT8, true},
                          {-1, QRB_DATA_TYPE_UINT8, false},
                          {127, QRB_DATA_TYPE_INT8, true},
                          {128, QRB_DATA_TYPE_INT8, false},
                          {-128, QRB_DATA_TYPE_INT8, true},
                          {-129, QRB_DATA_TYPE_INT8, false},
                          {-two63, QRB_DATA_TYPE_INT64, true},
                          {two63, QRB_DATA_TYPE_INT64, false},
                          {two63, QRB_DATA_TYPE_UINT64, true},
                          {2 * two63, QRB_DATA_TYPE_UINT64, false}}) {
        query::FillQuery fill(*session, {}, "");
        fill.bind("real", QRB_DATA_TYPE_DOUBLE, &c.value);
        ASSERT_EQ(fill.next(1), 1u);
        query::SelectQuery select(*session, {}, "");
        std::int64_t value = 0;
        select.bind("real", c.type, &value, 8);
        EXPECT_EQ(outcomeOf([&] { select.next(1); }).code,
                  c.fits ? ErrorCode::Internal : ErrorCode::Range)
            << c.value;
    }
    query::FillQuery fill(*session, {}, "");
    fill.bind("n", QRB_DATA_TYPE_DOUBLE, &n.invalidValue);
    ASSERT_EQ(fill.next(1), 1u);
    query::SelectQuery select(*session, {}, "");
    std::int32_t value = 0;
    select.bind("n", QRB_DATA_TYPE_INT32, &value, 4);
    ASSERT_EQ(select.next(1), 1u);
    EXPECT_EQ(value, 201);
}

TEST_F(Queries, AFindIsOneNodeWhateverItsCaseAndOnlyWithinTheNodesListed) {
    create(amplitudeOnly(), 1);
    session->begin("t", "test", "", "");
    insertValues("amplitude", {1, 2, 3, 4});
    query::commit(*session);
    const Points found = readAll(*session, "find fullest leaf");
    EXPECT_EQ(found, readAll(*session, " Find FULLEST Leaf\n"));
    // Of leaves that hold as many it is the first.
    ASSERT_EQ(found.size(), 1u);
    EXPECT_EQ(found.begin()->second.amplitude, 1);
    const query::IndexEntry tree = query::readIndex(*session, "");
    std::vector<std::uint32_t> leaves;
    const auto collect = [&](auto&& self, const query::IndexEntry& entry) -> void {
        if (entry.children.empty())
            leaves.push_back(entry.id);
        for (const query::IndexEntry& child : entry.children)
            self(self, child);
    };
    collect(collect, tree);
    ASSERT_EQ(leaves.size(), 4u);
    for (const std::uint32_t leaf : leaves) {
        query::Scope scope;
        scope.nodes.emplace().insert(leaf);
        EXPECT_EQ(readAll(*session, "find fullest leaf", scope).size(), leaf == leaves[0]);
    }
}

TEST_F(Queries, AnInsertThatFitsLeavesTheNodesTheirNumbers) {
    create(amplitudeOnly(), 100);
    session->begin("t", "test", "", "");
    insertValues("amplitude", std::vector<double>(350, 1));
    query::commit(*session);
    const auto numbers = [this] {
        std::set<std::uint32_t> ids;
        const auto collect = [&](auto&& self, const query::IndexEntry& entry) -> void {
            ids.insert(entry.id);
            for (const query::IndexEntry& child : entry.children)
                self(self, child);
        };
        collect(collect, query::readIndex(*session, ""));
        return ids;
    };
    const std::set<std::uint32_t> before = numbers();
    session->begin("more", "test", "", "");
    insertValues("amplitude", {2});
    query::commit(*session);
    EXPECT_EQ(numbers(), before);
}

TEST_F(Queries, PointsOfThisTransactionAreRemovedByTheIdsTheyWereGiven) {
    create({record("n", 0, 100)});
    session->begin("t", "test", "", "");
    insertValues("n", {1, 2, 3});
    const auto remove = [this](std::vector<std::uint64_t> ids) {
        query::RemoveQuery query(*session);
        query.bind(QRB_DATA_TYPE_UINT64, ids.data(), 8);
        return query.next(static_cast<std::uint32_t>(ids.size()));
    };
    EXPECT_EQ(remove({1}), 1u);
    insertValues("n", {4, 5});
    EXPECT_EQ(remove({4, 99, 5, 4}), 2u);
    EXPECT_EQ(countOf(*session, "n == 2 || n == 3"), 2u);
    EXPECT_EQ(session->state()->pointCount, 2u);
}

TEST_F(Queries, RevisionsOfAttributesAreThoseOfTheirLastChange) {
    create({record("n", 0, 100)});
    session->begin("t", "test", "", "");
    insertValues("n", {1, 2, 3});
    query::commit(*session);
    session->begin("fill", "test", "", "");
    session->addAttribute(record("later", 0, 1));
    const double value = 9;
    query::FillQuery fill(*session, {}, "n == 2");
    fill.bind("n", QRB_DATA_TYPE_DOUBLE, &value);
    ASSERT_EQ(fill.next(9), 1u);
    query::commit(*session);
    EXPECT_EQ(query::readRevision(*session, 1, "n"), 3u);
    EXPECT_EQ(query::readRevision(*session, 1, "xyz"), 2u);
    EXPECT_EQ(query::readRevision(*session, 1, "later"), 0u);
}

TEST_F(Queries, AnAttributeInThePlaceOfAnotherGetsItsOwnValues) {
    create({record("n", 0, 100)});
    session->begin("t", "test", "", "");
    session->addAttribute(record("narrow", 0, 10));
    insertValues("narrow", {1, 2});
    query::removeAttribute(*session, "narrow");
    session->addAttribute(record("wide", 0, 1e9));
    insertValues("wide", {123456789, 5});
    query::commit(*session);
    EXPECT_EQ(countOf(*session, "wide == 123456789 || wide == 5"), 2u);
    EXPECT_EQ(countOf(*session, "wide == 0 && n == 0"), 2u);
}

TEST_F(Queries, PointsThatMoveKeepTheOtherValuesBesideAConstant) {
    schema::AttributeRecord fixed = record("fixed", 0, 10);
    fixed.storageClass = 1;
    create({fixed, record("n", 0, 100)});
    session->begin("t", "test", "", "");
    insertValues("n", {11, 12, 13});
    query::commit(*session);
    session->begin("move", "test", "", "");
    const std::uint64_t id = 2;
    const double xyz[] = {-500, 3, 4}, zero = 0;
    query::UpdateQuery update(*session);
    update.bind("tarvo.id", QRB_DATA_TYPE_UINT64, &id, 8);
    update.bind("xyz", QRB_DATA_TYPE_DOUBLE, xyz, 24);
    update.bind("fixed", QRB_DATA_TYPE_DOUBLE, &zero, 8);
    ASSERT_EQ(update.next(1), 1u);
    query::commit(*session);
    EXPECT_EQ(countOf(*session, "xyz[0] == -500 && n == 12"), 1u);
}

// Ids in the order of the index are for points that came without.
TEST_F(Queries, IdsOfTheIndexAreGivenOnceAndToPointsWithoutOnly) {
    session::CreateSettings created = settings(1, 100);
    created.optimizePointId = true;
    created.pointInsertMode = "multi-pass";
    session::Session::create(file, created, "test", amplitudeOnly());
    session = std::make_unique<session::Session>(file, session::OpenSettings{0}, "test");
    session->begin("t", "test", "", "");
    insertValues("amplitude", {9, 8, 7});
    insertValues("amplitude", {6, 5}, {5'000'000, 6'000'000});
    insertValues("amplitude", {4, 3});
    // Passes beside each other.
    std::vector<Point> points = somePoints(70'000, 1);
    for (const double side : {-1.0, 1.0, -1.0}) {
        for (Point& point : points)
            point.x = side * std::abs(point.x);
        insert(*session, points);
    }
    query::commit(*session);
    const Points all = readAll(*session);  // throws for an id that comes twice
    EXPECT_EQ(all.size(), 210'007u);
    EXPECT_EQ(all.at(5'000'000).amplitude, 6);
    EXPECT_EQ(all.at(6'000'000).amplitude, 5);
}

TEST_F(Queries, PointsWithoutAPositionHaveAPlaceOfTheirOwn) {
    session::CreateSettings created = settings(1, 2);
    created.primaryAttribute = record("p", 0, 255);
    created.primaryAttribute.invalidValue = -1;
    session::Session::create(file, created, "test", {});
    session = std::make_unique<session::Session>(file, session::OpenSettings{0}, "test");
    for (int round = 1; round <= 2; ++round) {
        session->begin("t", "test", "", "");
        const std::vector<double> places{-1, 0, 255, 128, -1, 7, 127};
        query::InsertQuery query(*session);
        query.bind("p", QRB_DATA_TYPE_DOUBLE, places.data(), 8);
        query.next(7);
        query::commit(*session);
        EXPECT_EQ(countOf(*session, ""), 7u * round);
        EXPECT_EQ(countOf(*session, "p == -1"), 2u * round);
        EXPECT_EQ(countOf(*session, "p >= 128"), 2u * round);
    }
}

// Edges from the smallest to that of the whole range.
TEST_F(Queries, LeavesByTheirEdgeTakeAnyEdge) {
    for (const std::uint32_t edge : {0u, 1u, 20u, 21u, 62u, 63u}) {
        SCOPED_TRACE(edge);
        session::Session::create(file, settings(2, edge), "test", amplitudeOnly());
        session = std::make_unique<session::Session>(file, session::OpenSettings{0}, "test");
        for (std::uint32_t seed = 1; seed <= 2; ++seed)
            commitPoints(*session, somePoints(100, seed));
        EXPECT_EQ(readAll(*session).size(), 200u);
        EXPECT_EQ(report::check(*session).faultCount, 0u);
        session.reset();
        std::filesystem::remove(file);
    }
    EXPECT_EQ(outcomeOf([&] { session::Session::create(file, settings(2, 64), "test"); }).code,
              ErrorCode::Argument);
}

TEST_F(Queries, AFillTellsLeavesAtOnePlaceApart) {
    create(amplitudeOnly(), 100);
    commitPoints(*session, std::vector<Point>(350));
    session->begin("fill", "test", "", "");
    query::FillQuery fill(*session, {}, "tarvo.id == 150");
    const double value = 7;
    fill.bind("amplitude", QRB_DATA_TYPE_DOUBLE, &value);
    EXPECT_EQ(fill.next(10), 1u);
    EXPECT_EQ(countOf(*session, "amplitude == 7"), 1u);
    EXPECT_EQ(countOf(*session, "amplitude == 7 && tarvo.id == 150"), 1u);
}

}  // namespace
}  // namespace tarvo::engine
