// Points through the whole engine, compared with a plain model: whatever the shape of the cloud,
// the size of the leaves, the number of transactions and the memory allowed.
#include "tests/engine/database.h"
#include "tests/engine/treecheck.h"

#include "engine/query/redefine.h"
#include "engine/query/stat.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <random>
#include <set>

namespace tarvo::engine {
namespace {

using namespace testing;

class Cloud {
public:
    explicit Cloud(std::uint32_t seed) : m_random(seed) {}

    std::uint32_t below(std::uint32_t limit) { return m_random() % limit; }

    // Clusters, planes, lines, one spot many times, and the corners of the range.
    std::vector<Point> points(std::size_t count) {
        std::vector<Point> result;
        const std::uint32_t shape = below(5);
        const double centre[3] = {grid(-900, 900), grid(-900, 900), grid(-900, 900)};
        for (std::size_t i = 0; i < count; ++i) {
            Point p;
            switch (shape) {
                case 0:
                    p = {grid(-1000, 1000), grid(-1000, 1000), grid(-1000, 1000)};
                    break;
                case 1:
                    p = {centre[0] + grid(-2, 2), centre[1] + grid(-2, 2), centre[2]};
                    break;
                case 2:
                    p = {centre[0], centre[1], centre[2]};
                    break;
                case 3:
                    p = {grid(-1, 1), grid(-1, 1), grid(-1, 1)};
                    break;
                default:
                    p = {corner(), corner(), corner()};
                    break;
            }
            // Onto the grid, as the file keeps it.
            for (double* v : {&p.x, &p.y, &p.z})
                *v = std::round(*v * 1000) / 1000;
            p.amplitude = static_cast<std::uint16_t>(below(4) ? 100 + below(50) : below(65536));
            result.push_back(p);
        }
        return result;
    }

private:
    double grid(int low, int high) {
        return low +
               static_cast<double>(below(static_cast<std::uint32_t>(high - low) * 1000)) / 1000;
    }
    double corner() { return below(2) ? 1000 : -1000; }

    std::mt19937 m_random;
};

void compareFilters(session::Session& session, const Points& model, Cloud& cloud) {
    const auto number = [](double value) { return std::to_string(value); };
    const double x = -900 + cloud.below(1800);
    const double width = 1 + cloud.below(200);
    const int amplitude = static_cast<int>(100 + cloud.below(50));
    const struct {
        std::string text;
        std::function<bool(const Point&)> passes;
    } cases[] = {
        {"", [](const Point&) { return true; }},
        {"xyz[0] >= " + number(x) + " && xyz[0] < " + number(x + width),
         [=](const Point& p) { return p.x >= x && p.x < x + width; }},
        {"amplitude == " + std::to_string(amplitude) + " || xyz[2] > 999",
         [=](const Point& p) { return p.amplitude == amplitude || p.z > 999; }},
        {"amplitude % 2 == 1 && xyz[0] + xyz[1] > 0",
         [](const Point& p) { return p.amplitude % 2 == 1 && p.x + p.y > 0; }},
    };
    for (const auto& test : cases) {
        Points expected;
        for (const auto& [id, point] : model)
            if (test.passes(point))
                expected.emplace(id, point);
        EXPECT_EQ(readAll(session, test.text), expected) << test.text;
        EXPECT_EQ(countOf(session, test.text), expected.size()) << test.text;
    }
}

void runModel(std::uint32_t seed, std::uint32_t chunkMode, std::uint32_t chunkSize) {
    SCOPED_TRACE("seed " + std::to_string(seed) + ", chunk mode " + std::to_string(chunkMode) +
                 ", size " + std::to_string(chunkSize));
    TemporaryFolder folder;
    const std::string file = folder.file("a.qrbx");
    Cloud cloud(seed);
    session::Session::create(file, settings(chunkMode, chunkSize), "test", amplitudeOnly());
    auto session = std::make_unique<session::Session>(file, session::OpenSettings{0}, "test");
    Points model;
    std::uint64_t nextId = 1;
    for (int step = 0; step < 6; ++step) {
        session->begin("step", "test", "", "");
        Points pending = model;
        std::uint64_t pendingId = nextId;
        for (std::uint32_t batches = 1 + cloud.below(3); batches > 0; --batches) {
            const std::vector<Point> points = cloud.points(1 + cloud.below(3000));
            insert(*session, points);
            for (const Point& point : points)
                pending.emplace(pendingId++, point);
            if (cloud.below(3) == 0) {
                // Visible before the commit.
                EXPECT_EQ(readAll(*session), pending);
            }
        }
        if (cloud.below(4) == 0) {
            session->rollback();
        } else {
            query::commit(*session);
            model = std::move(pending);
            nextId = pendingId;
        }
        if (cloud.below(2) == 0)
            session = std::make_unique<session::Session>(file, session::OpenSettings{0}, "test");
        compareFilters(*session, model, cloud);
        TreeCheck check(*session, model.size());
        check.run();
        if (chunkMode == 1) {
            EXPECT_LE(check.largestLeaf, chunkSize);
        }
    }
    EXPECT_EQ(folder.entries(), 1u) << "something was left beside the database";
}

TEST(Points, AreWhatAPlainModelHoldsAfterRandomInserts) {
    const char* given = std::getenv("QRB_SEED");
    const std::uint32_t first = given ? static_cast<std::uint32_t>(std::strtoul(given, nullptr, 10))
                                      : std::random_device{}();
    std::printf("QRB_SEED=%u replays this run\n", first);
    for (std::uint32_t round = 0; round < 4; ++round) {
        runModel(first + round, 1, 10);
        runModel(first + round, 1, 700);
        runModel(first + round, 2, 14);
    }
}

TEST(Points, ThatDoNotFitTheCacheAreSortedThroughFiles) {
    TemporaryFolder folder;
    const std::string file = folder.file("a.qrbx");
    session::Session::create(file, settings(1, 5000), "test", amplitudeOnly());
    session::Session session(file, session::OpenSettings{0}, "test");  // runs of 2 MB
    Cloud cloud(7);
    session.begin("insert", "test", "", "");
    Points model;
    for (int batch = 0; batch < 30; ++batch) {
        const std::vector<Point> points = cloud.points(10'000);
        insert(session, points);
        for (const Point& point : points)
            model.emplace(model.size() + 1, point);
    }
    query::commit(session);
    EXPECT_EQ(readAll(session), model);
    EXPECT_EQ(folder.entries(), 1u);
}

TEST(Points, OutOfRangeAreRefusedAsAWholeAndNamed) {
    TemporaryFolder folder;
    const std::string file = folder.file("a.qrbx");
    session::Session::create(file, settings(1, 100), "test", amplitudeOnly());
    session::Session session(file, {}, "test");
    session.begin("insert", "test", "", "");
    insert(session, {{1, 2, 3, 4}});
    try {
        insert(session, {{5, 6, 7, 8}, {0, 1000.5, 0, 0}});
        FAIL() << "the point was taken";
    } catch (const Failure& failure) {
        EXPECT_EQ(failure.code(), ErrorCode::Range);
        EXPECT_NE(std::string(failure.what()).find("xyz"), std::string::npos) << failure.what();
        EXPECT_NE(std::string(failure.what()).find("1000.5"), std::string::npos) << failure.what();
    }
    query::commit(session);
    EXPECT_EQ(readAll(session), (Points{{1, {1, 2, 3, 4}}}));
}

TEST(Points, OfNodesAndSubtreesAddUpToAllOfThem) {
    TemporaryFolder folder;
    const std::string file = folder.file("a.qrbx");
    session::Session::create(file, settings(1, 50), "test", amplitudeOnly());
    session::Session session(file, {}, "test");
    Cloud cloud(11);
    commitPoints(session, cloud.points(2000));
    commitPoints(session, cloud.points(2000));
    const Points all = readAll(session);

    Points sum;
    std::unordered_set<std::uint32_t> nodes;
    const query::IndexEntry root = query::readIndex(session, "");
    const auto collect = [&nodes](auto&& self, const query::IndexEntry& entry) -> void {
        nodes.insert(entry.id);
        for (const query::IndexEntry& child : entry.children)
            self(self, child);
    };
    for (const query::IndexEntry& child : root.children) {
        collect(collect, child);
        query::Scope subtree;
        subtree.subtree = child.id;
        sum.merge(readAll(session, "", subtree));
    }
    EXPECT_EQ(sum, all);
    query::Scope listed;
    listed.nodes = nodes;
    EXPECT_EQ(readAll(session, "", listed), all);
    listed.nodes->clear();
    EXPECT_TRUE(readAll(session, "", listed).empty());
    listed.nodes->insert(4'000'000'000);
    EXPECT_THROW(readAll(session, "", listed), Failure);

    // A filter narrows the index to nodes that can hold hits, and what is left out holds none.
    const query::IndexEntry narrowed = query::readIndex(session, "xyz[0] > 0");
    nodes.clear();
    collect(collect, narrowed);
    query::Scope kept;
    kept.nodes = nodes;
    EXPECT_EQ(readAll(session, "xyz[0] > 0", kept), readAll(session, "xyz[0] > 0"));
}

TEST(Attributes, AddedLaterReadTheirDefaultInOldPointsAndTheirValuesInNewOnes) {
    TemporaryFolder folder;
    const std::string file = folder.file("a.qrbx");
    session::Session::create(file, settings(1, 50), "test", amplitudeOnly());
    session::Session session(file, {}, "test");
    Cloud cloud(3);
    commitPoints(session, cloud.points(500));
    session.begin("attribute", "test", "", "");
    schema::AttributeRecord quality = record("quality", 0, 10);
    quality.defaultValue = 7;
    session.addAttribute(quality);
    std::vector<Point> points = cloud.points(300);
    const std::vector<std::uint8_t> values(points.size(), 3);
    {
        query::InsertQuery query(session);
        query.bind("xyz", QRB_DATA_TYPE_DOUBLE, &points[0].x, sizeof(Point));
        query.bind("quality", QRB_DATA_TYPE_UINT8, values.data(), 1);
        query.next(300);
    }
    query::commit(session);
    EXPECT_EQ(countOf(session, "quality == 7"), 500u);
    EXPECT_EQ(countOf(session, "quality == 3"), 300u);
    std::uint8_t extremes[2];
    query::readExtreme(session, 1, "quality", query::Extreme::Minimum, false, QRB_DATA_TYPE_UINT8,
                       &extremes[0]);
    query::readExtreme(session, 1, "quality", query::Extreme::Maximum, false, QRB_DATA_TYPE_UINT8,
                       &extremes[1]);
    EXPECT_EQ(extremes[0], 3);
    EXPECT_EQ(extremes[1], 7);
    session.begin("attribute", "test", "", "");
    query::removeAttribute(session, "quality");
    EXPECT_THROW(query::removeAttribute(session, "xyz"), Failure);
    EXPECT_THROW(query::removeAttribute(session, "tarvo.id"), Failure);
    query::commit(session);
    EXPECT_THROW(countOf(session, "quality == 7"), Failure);
    EXPECT_EQ(countOf(session, ""), 800u);
}

}  // namespace
}  // namespace tarvo::engine
