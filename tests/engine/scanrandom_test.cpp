// Random conditions on a file: the points that pass are the same for any number of threads, any
// cache and either kind of instructions, counted or read, and the same as leaf by leaf.
#include "engine/base/instructions.h"
#include "engine/query/scan.h"
#include "engine/query/stat.h"
#include "tests/engine/database.h"
#include "tests/engine/seed.h"

#include <gtest/gtest.h>

#include <iterator>
#include <memory>
#include <vector>

namespace tarvo::engine {
namespace {

using namespace testing;

class Conditions {
public:
    explicit Conditions(std::uint64_t seed) : m_random(seed) {}

    std::string next(int depth = 2) {
        switch (depth > 0 ? pick(6) : 5) {
            case 0:
            case 1:
                return "(" + next(depth - 1) + " && " + next(depth - 1) + ")";
            case 2:
            case 3:
                return "(" + next(depth - 1) + " || " + next(depth - 1) + ")";
            case 4:
                return "!" + next(depth - 1);
            default:
                return comparison();
        }
    }

private:
    unsigned pick(unsigned count) { return static_cast<unsigned>(m_random() % count); }
    std::string comparison() {
        static const char* const signs[] = {" == ", " != ", " < ", " <= ", " > ", " >= "};
        const std::string sign = signs[pick(6)];
        const auto number = [this](unsigned most) { return std::to_string(pick(most)); };
        switch (pick(7)) {
            case 0:
                return "(xyz[0]" + sign + number(1000) + ")";
            case 1:
                return "(xyz[" + std::to_string(pick(3)) + "]" + sign + "amplitude / 100)";
            case 2:
                return "(amplitude" + sign + number(9000) + ")";
            case 3:
                return "(class" + sign + number(10) + ")";
            case 4:
                return "(time" + sign + number(60) + " + 0.25)";
            case 5:
                return "(tarvo.id" + sign + number(9000) + ")";
            default:
                return "(rare" + sign + "1)";
        }
    }

    std::mt19937_64 m_random;
};

constexpr std::uint32_t count = 6000;

void makeFile(const std::string& file) {
    schema::AttributeRecord kind = record("class", 0, 20);
    kind.invalidValue = kind.defaultValue = 255;
    session::Session::create(
        file, settings(1, 700), "test",
        {record("amplitude", 0, 65535), kind, record("time", 0, 100, 0), record("rare", 0, 1)});
    session::Session session(file, {}, "test");
    std::mt19937 random(3);
    std::vector<double> values(count * 7);
    for (std::uint32_t i = 0; i < count; ++i) {
        double* const point = &values[i * 7];
        point[0] = i % 977;
        point[1] = random() % 1000;
        point[2] = random() % 4000 / 100.0;
        point[3] = random() % 9000;
        point[4] = random() % 5 == 0 ? 255 : i / 400 % 12;
        point[5] = i / 100.0 + random() % 1000 * 1e-7;
        point[6] = i % 2000 == 77;
    }
    session.begin("points", "test", "", "");
    {
        query::InsertQuery query(session);
        const char* const names[] = {"xyz", "amplitude", "class", "time", "rare"};
        const int places[] = {0, 3, 4, 5, 6};
        for (std::size_t a = 0; a < std::size(names); ++a)
            query.bind(names[a], QRB_DATA_TYPE_DOUBLE, &values[places[a]], 56);
        query.next(count);
    }
    query::commit(session);
}

using Ids = std::vector<std::uint64_t>;

Ids read(session::Session& session, const std::string& filter, query::NodeTally& nodes) {
    query::SelectQuery query(session, {}, filter);
    Ids page(1000);
    std::vector<double> time(page.size());
    query.bind("tarvo.id", QRB_DATA_TYPE_UINT64, page.data(), 8);
    query.bind("time", QRB_DATA_TYPE_DOUBLE, time.data(), 8);
    Ids ids;
    for (std::uint32_t step = 1; const std::uint32_t got = query.next(step); step = 1000)
        ids.insert(ids.end(), page.begin(), page.begin() + got);
    nodes = query.nodes();
    return ids;
}

// Those that the index's bounds leave over.
std::uint64_t leavesOf(const query::IndexEntry& node) {
    std::uint64_t leaves = node.children.empty() && node.ownCount > 0 ? 1 : 0;
    for (const query::IndexEntry& child : node.children)
        leaves += leavesOf(child);
    return leaves;
}

// Without what the statistics of nodes say: every leaf is looked at.
Ids leafByLeaf(session::Session& session, const std::string& filter) {
    const filter::BoundFilter bound(filter::Expression::parse(filter), session.state()->attributes);
    query::Scan scan(session, {}, "");
    auto columns = bound.elements();
    const std::size_t filtered = columns.size();
    columns.push_back({session.state()->pointIdIndex(), 0});
    scan.setColumns(columns);
    scan.wantLeaves();
    Ids ids;
    filter::Selection selection;
    while (const auto hits = scan.next()) {
        bound.select(
            hits->count,
            [&](std::size_t slot) -> const codec::Block& { return *hits->columns[slot]; },
            selection);
        const schema::Column codes = hits->columns[filtered]->column();
        for (const std::uint32_t point : selection)
            ids.push_back(
                static_cast<std::uint64_t>(session.state()->pointId().grid.value(codes[point])));
    }
    return ids;
}

TEST(ScanRandom, GivesTheSameInEveryWay) {
    const TemporaryFolder folder;
    const std::string file = folder.file("a.qrbx");
    makeFile(file);
    struct Way {
        std::uint64_t cache;
        unsigned threads;
        bool wide;
    };
    const bool wide = machineHasWideInstructions();
    const Way ways[] = {{0, 1, wide},          {0, 2, false},        {0, 7, wide},
                        {64u << 20, 1, false}, {64u << 20, 2, wide}, {64u << 20, 7, false}};
    std::vector<std::unique_ptr<session::Session>> sessions;
    for (const Way& way : ways)
        sessions.push_back(std::make_unique<session::Session>(
            file, session::OpenSettings{way.cache, way.threads}, "test"));
    const std::uint64_t leaves = leavesOf(query::readIndex(*sessions[0], ""));
    Conditions conditions(seedOfRun());
    int some = 0;
    for (int i = 0; i < 150; ++i) {
        const std::string condition = conditions.next();
        SCOPED_TRACE(condition);
        const Ids expected = leafByLeaf(*sessions[0], condition);
        some += !expected.empty() && expected.size() < count;
        const std::uint64_t left = leavesOf(query::readIndex(*sessions[0], condition));
        for (std::size_t w = 0; w < std::size(ways); ++w) {
            wideInstructions() = ways[w].wide;
            ASSERT_EQ(countOf(*sessions[w], condition), expected.size()) << "way " << w;
            query::NodeTally nodes;
            ASSERT_EQ(read(*sessions[w], condition, nodes), expected) << "way " << w;
            ASSERT_EQ(nodes.whole + nodes.read, left) << "way " << w;
            ASSERT_EQ(nodes.skipped > 0, left < leaves) << "way " << w;
        }
        wideInstructions() = wide;
    }
    EXPECT_GT(some, 50);
}

}  // namespace
}  // namespace tarvo::engine
