// Level-of-detail points: what they are made of, and that they follow the points they stand for.
#include "tests/engine/database.h"
#include "tests/engine/treecheck.h"

#include "engine/query/commit.h"
#include "engine/query/fill.h"
#include "engine/query/redefine.h"
#include "engine/query/remove.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <functional>
#include <random>

namespace tarvo::engine {
namespace {

using namespace testing;
using Values = std::vector<double>;

class Details : public ::testing::Test {
protected:
    void make(std::uint32_t mode, std::uint32_t size, std::uint32_t chunkSize = 200) {
        session::CreateSettings created = settings(1, chunkSize);
        created.lodMode = mode;
        created.chunkSizeLod = size;
        const std::string file = m_folder.file("a.qrbx");
        session::Session::create(file, created, "test", amplitudeOnly());
        m_session = std::make_unique<session::Session>(file, session::OpenSettings(), "test");
    }
    std::vector<Point> cloud(std::size_t count, double from, double to) {
        std::uniform_real_distribution<double> place(from, to);
        std::vector<Point> points(count);
        for (Point& p : points)
            p = {std::round(place(m_random) * 1000) / 1000,
                 std::round(place(m_random) * 1000) / 1000,
                 std::round(place(m_random) * 1000) / 1000,
                 static_cast<std::uint16_t>(m_random() % 1000)};
        return points;
    }
    void add(const std::vector<Point>& points) {
        m_session->begin("insert", "test", "", "");
        insert(*m_session, points);
        query::commit(*m_session);
    }
    void forEachInner(
        const std::function<void(const index::Node&, std::span<const index::Node>)>& use) {
        const auto state = m_session->state();
        const index::Node root = m_session->blobs().rootNode(*state);
        visit(root, use);
    }
    std::uint64_t ownPoints() {
        std::uint64_t sum = 0;
        forEachInner([&](const index::Node& node, auto) { sum += node.ownCount; });
        return sum;
    }
    Points readNode(std::uint32_t id) {
        query::Scope scope;
        scope.nodes.emplace().insert(id);
        return readAll(*m_session, "", scope);
    }

    TemporaryFolder m_folder;
    std::unique_ptr<session::Session> m_session;
    std::mt19937 m_random{5};

private:
    void visit(const index::Node& node,
               const std::function<void(const index::Node&, std::span<const index::Node>)>& use) {
        if (node.isLeaf())
            return;
        const auto page =
            node.childPage ? m_session->blobs().pageReader()(node.childPage) : nullptr;
        const std::span<const index::Node> children =
            page ? std::span<const index::Node>(*page)
                 : std::span<const index::Node>(node.children);
        use(node, children);
        for (const index::Node& child : children)
            visit(child, use);
    }
};

TEST_F(Details, OfThinoutAreAnEvenShareOfTheOriginalPoints) {
    make(1, 25);
    add(cloud(20'000, -100, 100));
    const Points all = readAll(*m_session);
    ASSERT_EQ(all.size(), 20'000u);
    forEachInner([&](const index::Node& node, std::span<const index::Node>) {
        EXPECT_EQ(node.ownCount, std::min<std::uint64_t>(200, node.totalCount / 4));
        const Points own = readNode(node.id);
        EXPECT_EQ(own.size(), node.ownCount);
        for (const auto& [id, point] : own) {
            ASSERT_EQ(all.count(id), 1u);
            EXPECT_EQ(all.at(id), point);
        }
    });
    std::map<int, int> octants;
    for (const auto& [id, point] : readNode(1))
        ++octants[(point.x > 0) + 2 * (point.y > 0) + 4 * (point.z > 0)];
    for (const auto& [octant, count] : octants)
        EXPECT_NEAR(count, 200 / 8, 8);
    EXPECT_EQ(octants.size(), 8u);
}

TEST_F(Details, OfCombineAreOnePointPerCellWithTheAverageOfItsPoints) {
    make(2, 1, 50);
    // Eight heaps about a corner of the index's cells, and more points than a leaf holds.
    const double c = -1000 + 1048.576;
    std::vector<Point> points;
    for (int octant = 0; octant < 8; ++octant)
        for (int i = 0; i < 10; ++i) {
            const double side = i % 2 == 0 ? 10 : 20;
            points.push_back({octant & 1 ? c + side : c - side, octant & 2 ? c + side : c - side,
                              octant & 4 ? c + side : c - side,
                              static_cast<std::uint16_t>(100 + i)});
        }
    add(points);
    const Points own = readNode(1);
    ASSERT_EQ(own.size(), 8u);
    for (const auto& [id, point] : own) {
        EXPECT_NEAR(std::abs(point.x - c), 15, 1e-6);
        EXPECT_NEAR(std::abs(point.y - c), 15, 1e-6);
        EXPECT_NEAR(std::abs(point.z - c), 15, 1e-6);
        EXPECT_EQ(point.amplitude, 105);  // 104.5, rounded
    }
    EXPECT_EQ(readAll(*m_session).size(), 80u);
}

TEST_F(Details, FollowEveryChangeBelowAndStayElsewhere) {
    make(1, 20);
    add(cloud(10'000, -900, 900));
    const std::uint64_t before = ownPoints();
    EXPECT_GT(before, 0u);
    // A change in one corner.
    const std::uint32_t first = m_session->current();
    m_session->begin("change", "test", "", "");
    insert(*m_session, cloud(300, 800, 900));
    const std::uint16_t amplitude = 7;
    query::FillQuery fill(*m_session, {}, "xyz[0] > 850");
    fill.bind("amplitude", QRB_DATA_TYPE_UINT16, &amplitude);
    while (fill.next(100)) {
    }
    query::commit(*m_session);
    const Points all = readAll(*m_session);
    std::uint64_t untouched = 0;
    forEachInner([&](const index::Node& node, auto) {
        EXPECT_GT(node.ownCount, 0u) << "node " << node.id;
        untouched += node.revision == first;
        for (const auto& [id, point] : readNode(node.id))
            EXPECT_EQ(all.at(id), point) << "point " << id;
    });
    EXPECT_GT(untouched, 0u);
    TreeCheck(*m_session, 10'300).run();

    m_session->begin("off", "test", "", "");
    m_session->setLevelOfDetail(2, 0);
    query::commit(*m_session);
    EXPECT_EQ(ownPoints(), 0u);
    EXPECT_EQ(readAll(*m_session), all);
    m_session->begin("on", "test", "", "");
    m_session->setLevelOfDetail(2, 3);
    query::commit(*m_session);
    EXPECT_GT(ownPoints(), 0u);
    EXPECT_EQ(readAll(*m_session), all);
}

TEST_F(Details, ThatAreCancelledLeaveTheTransactionPendingAndThePointsAsTheyWere) {
    make(1, 0);
    add(cloud(5'000, -900, 900));
    const Points all = readAll(*m_session);
    m_session->begin("detail", "test", "", "");
    m_session->setLevelOfDetail(1, 50);
    int told = 0;
    try {
        query::commit(*m_session, [&](int percent) { return (told = percent) < 70; });
        FAIL() << "the commit went on";
    } catch (const Failure& failure) {
        EXPECT_EQ(failure.code(), ErrorCode::Cancelled);
    }
    EXPECT_LT(told, 95) << "not while the points were made";
    EXPECT_TRUE(m_session->pending());
    EXPECT_EQ(readAll(*m_session), all);
    m_session->rollback();
    EXPECT_EQ(ownPoints(), 0u);
    EXPECT_EQ(m_session->state()->chunkSizeLod, 0u);
}

TEST_F(Details, NeedAMethodThatIsKnown) {
    make(2, 2);
    m_session->begin("attribute", "test", "", "");
    schema::AttributeRecord bad = record("bad", 0, 10);
    bad.lodSettings = "{\"method\": \"guess\"}";
    EXPECT_THROW(m_session->addAttribute(bad), Failure);
    bad.lodSettings = "[1]";
    EXPECT_THROW(m_session->addAttribute(bad), Failure);
    bad.lodSettings = "{\"method\": \"majority\"}";
    EXPECT_NO_THROW(m_session->addAttribute(bad));
}

TEST_F(Details, OfEachMethodAreThatOfTheirPoints) {
    session::CreateSettings created = settings(1, 10);
    created.lodMode = 2;
    created.chunkSizeLod = 1;
    std::vector<schema::AttributeRecord> attributes;
    for (const char* method : {"minimum", "maximum", "majority", "average", "first"}) {
        attributes.push_back(record(method, 0, 10));
        attributes.back().lodSettings = method;
        attributes.back().invalidValue = 0;
    }
    // The average of all the values below.
    attributes.push_back(record("between", 0, 10));
    attributes.back().lodSettings = "average";
    attributes.back().invalidValue = 3;
    const std::string file = m_folder.file("b.qrbx");
    session::Session::create(file, created, "test", attributes);
    m_session = std::make_unique<session::Session>(file, session::OpenSettings(), "test");
    const auto addAt = [&](double place, const std::vector<std::uint8_t>& values) {
        const Values xyz(values.size() * 3, place);
        m_session->begin("insert", "test", "", "");
        query::InsertQuery query(*m_session);
        query.bind("xyz", QRB_DATA_TYPE_DOUBLE, xyz.data(), 24);
        for (const schema::AttributeRecord& attribute : attributes)
            query.bind(attribute.name, QRB_DATA_TYPE_UINT8, values.data(), 1);
        query.next(static_cast<std::uint32_t>(values.size()));
        query::commit(*m_session);
    };
    // The first of the root's points.
    const auto read = [&](std::uint32_t points) {
        query::Scope scope;
        scope.nodes.emplace().insert(1);
        query::SelectQuery select(*m_session, scope, "");
        std::vector<std::array<std::uint8_t, 6>> values(100);
        for (std::size_t i = 0; i < attributes.size(); ++i)
            select.bind(attributes[i].name, QRB_DATA_TYPE_UINT8, &values[0][i], 6);
        EXPECT_EQ(select.next(100), points);
        EXPECT_NE(values[0][5], 3);
        std::string text;
        for (std::size_t i = 0; i < 5; ++i)
            text += " " + attributes[i].name + " " + std::to_string(values[0][i]);
        return text;
    };
    // One spot with more points than a leaf holds; their average is 4.8.
    addAt(1, {0, 2, 2, 8, 8, 4, 0, 2, 2, 8, 8, 4});
    EXPECT_EQ(read(1), " minimum 2 maximum 8 majority 2 average 5 first 0");
    // From the second level on a point counts for all that it stands for, also where it was made by
    // an earlier transaction: an average of 51 / 13.
    addAt(-500, {1, 1, 1});
    addAt(500, {9});
    EXPECT_EQ(read(2), " minimum 1 maximum 8 majority 2 average 4 first 1");
}

// Each method on values with an invalid one at an end, in the middle, most frequent, alone; on
// floats whose sum is beyond all numbers, and on equal ones that a sum would not give back.
TEST_F(Details, OfEachMethodLeaveInvalidValuesToTheMajority) {
    struct Case {
        const char* method;
        std::vector<double> values;
        double expected;
    };
    const double big = 1.7e308;
    for (const double invalid : {-1.0, 5.0, 99.0})
        for (const Case& c : {Case{"minimum", {invalid, 4, 3, invalid, invalid}, 3},
                              {"maximum", {invalid, 3, 7, invalid, invalid}, 7},
                              {"majority", {8, invalid, 8, invalid, invalid}, invalid},
                              {"majority", {8, 2, 8, 2, invalid}, 2},
                              {"average", {2, invalid, 3, 4, invalid}, 3},
                              {"average", {2, 3, invalid, invalid, invalid}, 3},
                              {"average", {invalid, invalid, invalid, invalid, invalid}, invalid},
                              {"first", {invalid, 1, 1, 1, 1}, invalid},
                              {"first", {2, invalid, 1, 1, 1}, 2},
                              {"float average", {big, big, big, big, big}, big},
                              {"float average", {big, 0, big, big, 0}, big / 5 + big / 5 + big / 5},
                              {"float average", {0.9, invalid, 0.9, 0.9, invalid}, 0.9},
                              {"float average", {0.1, 0.1, 0.1, 0.1, invalid}, 0.1},
                              {"float maximum", {0.1, 0.5, -big, invalid, 0}, 0.5}}) {
            SCOPED_TRACE(std::string(c.method) + " " + std::to_string(invalid));
            const bool isFloat = std::string_view(c.method).starts_with("float ");
            schema::AttributeRecord value =
                isFloat ? record("v", -big, big, 0) : record("v", 0, 10);
            value.invalidValue = isFloat && invalid == 5 ? -7.5 : invalid;
            value.lodSettings = c.method + (isFloat ? 6 : 0);
            Values values = c.values;
            double expected = c.expected;
            std::replace(values.begin(), values.end(), invalid, value.invalidValue);
            if (expected == invalid)
                expected = value.invalidValue;
            session::CreateSettings created = settings(1, 4);
            created.lodMode = 2;
            created.chunkSizeLod = 1;
            const std::string file = m_folder.file("b.qrbx");
            m_session.reset();
            std::filesystem::remove(file);
            session::Session::create(file, created, "test", {value});
            m_session = std::make_unique<session::Session>(file, session::OpenSettings(), "test");
            m_session->begin("insert", "test", "", "");
            const Values xyz(15, 1);
            query::InsertQuery query(*m_session);
            query.bind("xyz", QRB_DATA_TYPE_DOUBLE, xyz.data(), 24);
            query.bind("v", QRB_DATA_TYPE_DOUBLE, values.data(), 8);
            query.next(5);
            query::commit(*m_session);
            query::Scope scope;
            scope.nodes.emplace().insert(1);
            query::SelectQuery select(*m_session, scope, "");
            double read = 0;
            select.bind("v", QRB_DATA_TYPE_DOUBLE, &read, 8);
            ASSERT_EQ(select.next(1), 1u);
            EXPECT_DOUBLE_EQ(read, expected);
        }
}

// The grid divides the smallest cell of the index that holds all points, and is coarser only where
// there would be more of them than a leaf holds.
TEST_F(Details, OfCombineDivideTheCellThatHoldsThePoints) {
    for (const auto& [capacity, expected] : {std::pair(8u, 8u), std::pair(7u, 2u)}) {
        make(2, 2, capacity);
        std::vector<Point> points;
        for (const double x : {-900.0, 200.0})
            for (const double y : {-900.0, -400.0})
                for (const double z : {-900.0, -400.0})
                    points.insert(points.end(), 2, {x, y, z, 1});
        add(points);
        EXPECT_EQ(readNode(1).size(), expected) << capacity;
        m_session.reset();
        std::filesystem::remove(m_folder.file("a.qrbx"));
    }
    make(2, 2, 10);
    add(cloud(500, 700.5, 700.6));
    EXPECT_GT(readNode(1).size(), 1u);
}

TEST_F(Details, OfPagesGoAndComeWithTheirSizeAlone) {
    make(1, 10, 2);
    add(cloud(3'000, -900, 900));
    ASSERT_TRUE([&] {
        bool paged = false;
        forEachInner([&](const index::Node& node, auto) { paged = paged || node.childPage; });
        return paged;
    }());
    std::vector<std::uint64_t> counts;
    for (const std::uint32_t size : {10u, 90u, 0u, 10u}) {
        m_session->begin("size", "test", "", "");
        m_session->setLevelOfDetail(1, size);
        query::commit(*m_session);
        counts.push_back(ownPoints());
        TreeCheck(*m_session, 3'000).run();
    }
    EXPECT_GT(counts[0], 0u);
    EXPECT_GT(counts[1], counts[0]);
    EXPECT_EQ(counts[2], 0u);
    EXPECT_EQ(counts[3], counts[0]);
}

TEST_F(Details, AreMadeAnewWhenTheirModeAloneChanges) {
    make(1, 10);
    add(cloud(5'000, -900, 900));
    const Points all = readAll(*m_session);
    const auto areOriginals = [&] {
        bool originals = true;
        for (const auto& [id, point] : readNode(1))
            originals = originals && all.contains(id) && all.at(id) == point;
        return originals;
    };
    EXPECT_TRUE(areOriginals());
    m_session->begin("mode", "test", "", "");
    m_session->setLevelOfDetail(2, 10);
    query::commit(*m_session);
    EXPECT_FALSE(areOriginals());
    // What thinout calls a size is none for the other mode.
    m_session->begin("size", "test", "", "");
    m_session->setLevelOfDetail(1, 50);
    m_session->setLevelOfDetail(2, 50);
    EXPECT_EQ(m_session->state()->chunkSizeLod, 0u);
    m_session->rollback();
}

// Where the definition alone changes what stands for others: its method, what implies one, its
// values. What is there then is what making all of it anew gives.
TEST_F(Details, AreMadeAnewWhenADefinitionAloneChanges) {
    make(2, 2);
    add(cloud(2'000, -900, 900));
    const auto levels = [&] {
        std::map<std::uint32_t, Points> result;
        forEachInner([&](const index::Node& node, auto) { result[node.id] = readNode(node.id); });
        return result;
    };
    struct Step {
        const char* what;
        bool changes;
        std::function<void(schema::AttributeRecord&)> change;
    };
    const Step steps[] = {
        {"a method", true, [](auto& q) { q.lodSettings = "maximum"; }},
        {"the same", false, [](auto& q) { q.lodSettings = R"({"method": "maximum"})"; }},
        {"no method", true, [](auto& q) { q.lodSettings = ""; }},
        {"a tag", true, [](auto& q) { q.tags = "own, enumeration"; }},
        {"another tag", true, [](auto& q) { q.tags = "own"; }},
        {"names", true, [](auto& q) { q.namedValues = "1=one"; }},
        {"other names", false, [](auto& q) { q.namedValues = "2=two"; }},
        {"no names", true, [](auto& q) { q.namedValues = ""; }},
        {"the storage", false, [](auto& q) { q.storageClass = 3; }},
        {"texts", false, [](auto& q) { q.title = q.description = q.unitSymbol = "m"; }},
        {"the invalid value", true, [](auto& q) { q.invalidValue = 500; }},
        {"the range", true, [](auto& q) { q.maximumValue = 800; }},
        {"the resolution", true, [](auto& q) { q.resolution = 4; }},
    };
    schema::AttributeRecord q = amplitudeOnly()[0];
    auto before = levels();
    for (const Step& step : steps) {
        SCOPED_TRACE(step.what);
        step.change(q);
        m_session->begin("put", "test", "", "");
        query::putAttribute(*m_session, q);
        query::commit(*m_session);
        const auto now = levels();
        EXPECT_EQ(now != before, step.changes);
        m_session->begin("anew", "test", "", "");
        m_session->setLevelOfDetail(2, 2);
        query::commit(*m_session);
        before = levels();
        EXPECT_TRUE(now == before);
    }
}

TEST_F(Details, OfNodesWithMoreOfThemThanALeafHoldsAreRead) {
    make(2, 1, 3);
    add(cloud(300, -900, 900));
    bool more = false;
    forEachInner([&](const index::Node& node, auto) { more = more || node.ownCount > 3; });
    EXPECT_TRUE(more);
    add(cloud(100, -900, 900));
    EXPECT_EQ(readAll(*m_session).size(), 400u);
}

TEST_F(Details, AreNoPointsForAFillOfTheirNode) {
    make(1, 25);
    add(cloud(2'000, -900, 900));
    ASSERT_GT(readNode(1).size(), 0u);
    m_session->begin("fill", "test", "", "");
    query::Scope scope;
    scope.nodes.emplace().insert(1);
    query::FillQuery fill(*m_session, scope, "");
    const std::uint16_t amplitude = 7;
    fill.bind("amplitude", QRB_DATA_TYPE_UINT16, &amplitude);
    EXPECT_EQ(fill.next(1000), 0u);
    m_session->rollback();
}

}  // namespace
}  // namespace tarvo::engine
