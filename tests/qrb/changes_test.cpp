#include "tests/qrb/library.h"

#include <algorithm>
#include <map>
#include <vector>

namespace {

using namespace tarvo;
using namespace tarvo::qrb::pointcloud;

// Changes of existing points, compared with a plain table of what they ought to be.
class Changes : public LibraryTest {
protected:
    struct Point {
        double x = 0;
        std::uint16_t n = 0;
        std::uint8_t flag = 0;
        double v[2] = {};
        bool operator==(const Point& other) const {
            return x == other.x && n == other.n && flag == other.flag && v[0] == other.v[0] &&
                   v[1] == other.v[1];
        }
    };
    using Table = std::map<std::uint64_t, Point>;  // by point id

    Changes() : m_context("OFF", ""), m_cloud(m_context) {
        CreateSettings settings(m_context);
        settings.primaryAttribute = attribute("p", -1000, 1000, 0.01);
        settings.chunkSize = 100;  // leaves enough for nodes to matter
        m_cloud.create(file("a.qrbx"), settings);
        TransactionGuard transaction(m_cloud.transactions(), "Begin", "tests");
        m_cloud.pointAttributes().add(attribute("n", 0, 1000, 1));
        m_cloud.pointAttributes().add(attribute("flag", 0, 1, 1));
        m_cloud.pointAttributes().add(attribute("v", -5, 5, 0.5, 2));
        std::vector<Point> points(2000);
        std::vector<std::uint64_t> ids(points.size());
        auto query = m_cloud.insert();
        for (std::size_t i = 0; i < points.size(); ++i) {
            points[i] = {static_cast<double>(i * 37 % 2000) / 4 - 250,
                         static_cast<std::uint16_t>(i % 10),
                         static_cast<std::uint8_t>(i % 3 == 0),
                         {static_cast<double>(i % 5), -0.5}};
        }
        query.bind("p", DataType::DOUBLE, &points[0].x, sizeof(Point));
        query.bind("n", DataType::UINT16, &points[0].n, sizeof(Point));
        query.bind("flag", DataType::UINT8, &points[0].flag, sizeof(Point));
        query.bind("v", DataType::DOUBLE, points[0].v, sizeof(Point));
        query.bindId(DataType::UINT64, ids.data(), 8);
        EXPECT_EQ(query.next(2000), 2000u);
        query.close();
        transaction.commit();
        for (std::size_t i = 0; i < points.size(); ++i) {
            m_table[ids[i]] = points[i];
        }
    }

    static Table read(QuerySelect query) {
        Point point;
        std::uint64_t id = 0;
        query.bind("tarvo.id", DataType::UINT64, &id, 8);
        query.bind("p", DataType::DOUBLE, &point.x, 8);
        query.bind("n", DataType::UINT16, &point.n, 2);
        query.bind("flag", DataType::UINT8, &point.flag, 1);
        query.bind("v", DataType::DOUBLE, point.v, 16);
        Table table;
        while (query.next(1) == 1) {
            EXPECT_TRUE(table.emplace(id, point).second) << "the id " << id << " came twice";
        }
        return table;
    }
    Table read() const { return read(m_cloud.select()); }
    // Expects that the file holds the table, in this handle and in another one.
    void expectStored(const Table& table) const {
        EXPECT_TRUE(read() == table);
        qrb::Pointcloud other(m_context);
        other.open(file("a.qrbx"), OpenSettings(m_context));
        EXPECT_TRUE(read(other.select()) == table);
    }
    // All changes a query makes, some points at a time.
    template <typename Query>
    static std::uint64_t runAll(Query& query) {
        std::uint64_t total = 0;
        std::uint32_t progress = 0;
        while (const std::uint32_t count = query.next(7)) {
            EXPECT_LE(progress, query.progress());
            progress = query.progress();
            total += count;
        }
        EXPECT_EQ(query.progress(), 100u);
        query.close();
        return total;
    }

    qrb::Context m_context;
    qrb::Pointcloud m_cloud;
    Table m_table;
};

TEST_F(Changes, UpdateGivesTheNamedPointsTheirValuesAndPassesOverOthers) {
    std::vector<std::uint64_t> ids;
    std::vector<std::uint16_t> n;
    std::vector<double> x;
    std::vector<double> second;
    Table expected = m_table;
    for (auto& [id, point] : expected) {
        if (id % 7 == 0) {
            ids.push_back(id);
            point.n = static_cast<std::uint16_t>(500 + ids.size());
            point.x = -point.x + 0.25;  // to another place in the index
            point.v[1] = 4.5;
            n.push_back(point.n);
            x.push_back(point.x);
            second.push_back(point.v[1]);
        }
    }
    const std::size_t existing = ids.size();
    ids.push_back(999999);  // no such point
    n.push_back(1);
    x.push_back(1);
    second.push_back(1);
    const auto update = [&] {
        auto query = m_cloud.update();
        query.bind("tarvo.id", DataType::UINT64, ids.data(), 8);
        query.bind("n", DataType::UINT16, n.data(), 2);
        query.bind("p", DataType::DOUBLE, x.data(), 8);
        query.bind("v[1]", DataType::DOUBLE, second.data(), 8);
        EXPECT_EQ(query.next(static_cast<std::uint32_t>(ids.size())), existing);
        query.close();
        EXPECT_TRUE(read() == expected) << "within the transaction";
    };
    {
        TransactionGuard transaction(m_cloud.transactions(), "Update", "tests");
        update();
    }
    expectStored(m_table);  // rolled back
    TransactionGuard transaction(m_cloud.transactions(), "Update", "tests");
    update();
    transaction.commit();
    expectStored(expected);
    EXPECT_EQ(read(m_cloud.select("n > 500")).size(), existing) << "the index knows new ranges";
}

TEST_F(Changes, UpdateOfAPointThatComesAgainKeepsItsLastValues) {
    const auto run = [&](std::vector<std::uint64_t> ids, std::vector<std::uint16_t> n,
                         std::vector<double> x = {}) {
        auto query = m_cloud.update();
        query.bind("tarvo.id", DataType::UINT64, ids.data(), 8);
        query.bind("n", DataType::UINT16, n.data(), 2);
        if (!x.empty())
            query.bind("p", DataType::DOUBLE, x.data(), 8);
        const std::uint32_t taken = query.next(static_cast<std::uint32_t>(ids.size()));
        query.close();
        return taken;
    };
    const auto setFlag = [&](std::uint64_t id, std::uint8_t flag) {
        auto query = m_cloud.update();
        query.bind("flag", DataType::UINT8, &flag, 1);
        query.bind("tarvo.id", DataType::UINT64, &id, 8);
        EXPECT_EQ(query.next(1), 1u);
        query.close();
    };
    Table expected = m_table;
    std::vector<std::uint64_t> all;
    for (const auto& [id, point] : m_table)
        all.push_back(id);
    const std::uint64_t a = all[3];
    const std::uint64_t b = all[4];
    const std::uint64_t c = all[1900];
    TransactionGuard transaction(m_cloud.transactions(), "Update", "tests");
    // In one call, not side by side, with ids between that no point has.
    EXPECT_EQ(run({a, c, 999999, b, a, c, a}, {100, 101, 102, 103, 104, 105, 106}), 6u);
    expected[a].n = 106;
    expected[b].n = 103;
    expected[c].n = 105;
    EXPECT_TRUE(read() == expected) << "in one call";
    // In calls of one query, and in queries one after another that nobody reads between.
    {
        std::uint64_t id = b;
        std::uint16_t n = 0;
        auto query = m_cloud.update();
        query.bind("tarvo.id", DataType::UINT64, &id, 8);
        query.bind("n", DataType::UINT16, &n, 2);
        for (n = 300; n > 200; --n)
            EXPECT_EQ(query.next(1), 1u);
        query.close();
    }
    EXPECT_EQ(run({a}, {700}), 1u);
    setFlag(a, 0);
    EXPECT_EQ(run({c, a}, {800, 600}), 2u);
    setFlag(a, 1);
    setFlag(c, 1);
    expected[a].n = 600;
    expected[b].n = 201;
    expected[c].n = 800;
    expected[a].flag = expected[c].flag = 1;
    EXPECT_TRUE(read() == expected) << "in several queries";
    // To several places in the index.
    EXPECT_EQ(run({a, b, a}, {1, 2, 3}, {-900, 900, 800.5}), 3u);
    EXPECT_EQ(run({b}, {4}), 1u);
    expected[a].x = 800.5;
    expected[a].n = 3;
    expected[b].x = 900;
    expected[b].n = 4;
    EXPECT_TRUE(read() == expected) << "moved";
    // Thousands of rows, the same points again and again.
    std::vector<std::uint64_t> ids;
    std::vector<std::uint16_t> n;
    for (std::uint16_t round = 0; round < 20; ++round)
        for (const std::uint64_t id : all) {
            ids.push_back(id);
            n.push_back(static_cast<std::uint16_t>((id * 7 + round * 31u) % 1000));
            expected[id].n = n.back();
        }
    EXPECT_EQ(run(ids, n), ids.size());
    transaction.commit();
    expectStored(expected);
    EXPECT_EQ(read(m_cloud.select("n == " + std::to_string(expected[a].n))).count(a), 1u);
}

TEST_F(Changes, InsertOfAnIdThatComesAgainIsRefusedAndTakesNothing) {
    TransactionGuard transaction(m_cloud.transactions(), "Insert", "tests");
    const double x[] = {1, 2, 3};
    for (const std::vector<std::uint64_t>& ids : {std::vector<std::uint64_t>{50000, 50001, 50000},
                                                  {50000, 50001, m_table.begin()->first}}) {
        auto query = m_cloud.insert();
        query.bind("p", DataType::DOUBLE, x, 8);
        query.bind("tarvo.id", DataType::UINT64, ids.data(), 8);
        failure([&] { query.next(3); }, QRB_ERROR_EXISTS);
        query.close();
        EXPECT_TRUE(read() == m_table);
    }
    // What one call has inserted can't be inserted by the next.
    std::uint64_t id = 50000;
    auto query = m_cloud.insert();
    query.bind("p", DataType::DOUBLE, x, 8);
    query.bind("tarvo.id", DataType::UINT64, &id, 8);
    EXPECT_EQ(query.next(1), 1u);
    failure([&] { query.next(1); }, QRB_ERROR_EXISTS);
    query.close();
    Table expected = m_table;
    expected[id].x = 1;
    expected[id].v[0] = expected[id].v[1] = -5;
    EXPECT_TRUE(read() == expected);
}

TEST_F(Changes, UpdateNeedsIdsAndValuesWithinTheRange) {
    TransactionGuard transaction(m_cloud.transactions(), "Update", "tests");
    const std::uint16_t tooLarge[] = {3, 1001};
    const std::uint64_t ids[] = {1, 2};
    auto query = m_cloud.update();
    query.bind("n", DataType::UINT16, tooLarge, 2);
    failure([&] { query.next(2); }, QRB_ERROR_STATE);
    query.bind("tarvo.id", DataType::UINT64, ids, 8);
    failure([&] { query.next(2); }, QRB_ERROR_RANGE);
    EXPECT_TRUE(read() == m_table) << "all or nothing";
    failure([&] { m_cloud.update().bind("missing", DataType::UINT8, ids, 1); },
            QRB_ERROR_NOT_FOUND);
}

TEST_F(Changes, RemoveTakesTheNamedPointsOnce) {
    std::vector<std::uint32_t> ids;
    Table expected = m_table;
    for (const auto& [id, point] : m_table) {
        if (point.n == 3) {
            ids.push_back(static_cast<std::uint32_t>(id));
            expected.erase(id);
        }
    }
    const std::size_t existing = ids.size();
    ids.push_back(ids.front());
    ids.push_back(123456);
    const auto remove = [&] {
        auto query = m_cloud.remove();
        query.bind(DataType::UINT32, ids.data(), 4);
        EXPECT_EQ(query.next(static_cast<std::uint32_t>(ids.size())), existing);
        query.close();
        EXPECT_TRUE(read() == expected) << "within the transaction";
    };
    {
        TransactionGuard transaction(m_cloud.transactions(), "Remove", "tests");
        remove();
    }
    expectStored(m_table);
    TransactionGuard transaction(m_cloud.transactions(), "Remove", "tests");
    remove();
    transaction.commit();
    expectStored(expected);
    IndexNode root;
    m_cloud.stat().index(root);
    EXPECT_EQ(root.pointCountTotal, static_cast<std::int64_t>(expected.size()));
}

TEST_F(Changes, FillWritesOneValueIntoTheSelectionAsItWasAtTheBegin) {
    const std::uint16_t nine = 9;
    const double both[] = {2.5, -3};
    const auto fillAll = [&](QueryFill query) {
        query.bind("n", DataType::UINT16, &nine);
        query.bind("v", DataType::DOUBLE, both);
        return runAll(query);
    };
    Table expected = m_table;
    std::size_t selected = 0;
    for (auto& [id, point] : expected) {
        if (point.n < 3 && point.x > 0) {
            point.n = 9;
            point.v[0] = 2.5;
            point.v[1] = -3;
            ++selected;
        }
    }
    {
        TransactionGuard transaction(m_cloud.transactions(), "Fill", "tests");
        EXPECT_EQ(fillAll(m_cloud.fill("n < 3 && p > 0")), selected);
        EXPECT_TRUE(read() == expected);
    }
    expectStored(m_table);
    TransactionGuard transaction(m_cloud.transactions(), "Fill", "tests");
    EXPECT_EQ(fillAll(m_cloud.fill("n < 3 && p > 0")), selected);
    EXPECT_EQ(fillAll(m_cloud.fill(std::vector<std::uint32_t>{}, "")), 0u) << "no nodes";
    const double one = 1;
    auto element = m_cloud.fill();
    element.bind("v[1]", DataType::DOUBLE, &one);
    EXPECT_EQ(runAll(element), expected.size());
    for (auto& [id, point] : expected) {
        point.v[1] = 1;
    }
    transaction.commit();
    expectStored(expected);
}

TEST_F(Changes, InvertTurnsTheSelectionOfNodesRound) {
    IndexNode root;
    m_cloud.stat().index(root);
    ASSERT_FALSE(root.children.empty());
    const IndexNode* leaf = &root;
    while (!leaf->children.empty()) {
        leaf = &leaf->children.back();
    }
    const std::vector<std::uint32_t> nodes{leaf->id};
    Table expected = m_table;
    std::size_t selected = 0;
    for (const auto& [id, point] : read(m_cloud.select(nodes, "n != 4"))) {
        expected[id].flag = point.flag == 0 ? 1 : 0;
        ++selected;
    }
    ASSERT_GT(selected, 0u);
    TransactionGuard transaction(m_cloud.transactions(), "Invert", "tests");
    auto query = m_cloud.invert(nodes, "n != 4");
    failure([&] { query.attribute("n"); }, QRB_ERROR_ARGUMENT);
    query.attribute("flag");
    EXPECT_EQ(runAll(query), selected);
    auto all = m_cloud.invert();
    all.attribute("flag");
    EXPECT_EQ(runAll(all), expected.size());
    for (auto& [id, point] : expected) {
        point.flag = point.flag == 0 ? 1 : 0;
    }
    transaction.commit();
    expectStored(expected);
}

TEST_F(Changes, QueriesNeedATransactionAndClosedOnesDoNothing) {
    failure([&] { m_cloud.update(); }, QRB_ERROR_STATE);
    failure([&] { m_cloud.remove(); }, QRB_ERROR_STATE);
    failure([&] { m_cloud.fill(); }, QRB_ERROR_STATE);
    failure([&] { m_cloud.invert(); }, QRB_ERROR_STATE);
    TransactionGuard transaction(m_cloud.transactions(), "Nothing", "tests");
    const std::uint64_t id = m_table.begin()->first;
    const std::uint16_t n = 77;
    QueryUpdate update = m_cloud.update();
    QueryRemove remove = m_cloud.remove();
    QueryFill fill = m_cloud.fill();
    QueryInvert invert = m_cloud.invert();
    const QueryFill copy = fill;  // keeps its query when the other one is closed
    update.close();
    remove.close();
    fill.close();
    invert.close();
    for (int round = 0; round < 2; ++round) {
        update.bind("tarvo.id", DataType::UINT64, &id, 8);
        update.bind("missing", DataType::UINT16, &n, 2);
        remove.bind(DataType::UINT64, &id, 8);
        fill.bind("n", DataType::UINT16, &n);
        invert.attribute("missing");
        EXPECT_EQ(update.next(1) + remove.next(1) + fill.next(1) + invert.next(1), 0u);
        EXPECT_EQ(fill.progress() + invert.progress(), 0u);
        update.close();
        update = QueryUpdate();
        remove = QueryRemove();
        fill = QueryFill();
        invert = QueryInvert();
    }
    EXPECT_EQ(copy.progress(), 0u);
    transaction.commit();
    expectStored(m_table);
}

}  // namespace
