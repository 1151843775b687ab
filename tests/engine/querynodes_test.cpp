// Queries and the nodes of the index: which are found, listed and passed, what leaves hold after
// changes, how far a commit has come.
#include "tests/engine/queryfixture.h"

#include "engine/query/redefine.h"
#include "engine/query/stat.h"

#include <sys/resource.h>

#include <algorithm>
#include <cmath>
#include <csignal>
#include <cstdlib>
#include <functional>
#include <limits>
#include <set>
#include <tuple>

namespace tarvo::engine {
namespace {

using namespace testing;
using query::FillQuery;
using query::InsertQuery;
using query::SelectQuery;
using query::UpdateQuery;
using schema::AttributeRecord;

using QueryNodes = QueryFixture;

TEST_F(QueryNodes, AFindIsTheNodeThatItsNameTells) {
    for (const std::uint32_t seed : {1u, 2u, 3u}) {
        create(amplitudeOnly(), 10, [](auto& created) { created.chunkSizeLod = 30; });
        std::vector<Point> points = somePoints(500, seed);
        std::mt19937 random(seed);
        for (Point& point : points)
            point.y = (random() % 3 == 0 ? 1 : 100) * (double(random() % 20) - 10);
        insert(*session, points);
        commit();
        using Rank = std::tuple<int, std::uint64_t>;
        struct Find {
            const char* text;
            bool leaf;
            std::function<Rank(const index::Node&)> rank;
        };
        const auto largest = [](const index::Node& node) {
            return Rank{-node.level, node.totalCount};
        };
        const auto fullest = [](const index::Node& node) { return Rank{0, node.totalCount}; };
        for (const Find& find : {Find{"\tfind largest leaf", true, largest},
                                 Find{"Find Largest Node\r\n", false, largest},
                                 Find{"\nfind fullest leaf", true, fullest},
                                 Find{"\r find fullest node \t", false, fullest}}) {
            SCOPED_TRACE(find.text);
            const index::Node* best = nullptr;
            const std::vector<index::Node> all = nodes();
            for (const index::Node& node : all)
                if (node.isLeaf() == find.leaf && (!best || find.rank(node) > find.rank(*best)))
                    best = &node;
            ASSERT_NE(best, nullptr);
            EXPECT_EQ(countOf(*session, find.text), best->totalCount);
            query::IndexEntry entry = query::readIndex(*session, find.text);
            while (!entry.children.empty()) {
                EXPECT_EQ(entry.children.size(), 1u);
                entry = query::IndexEntry(entry.children[0]);
            }
            EXPECT_EQ(entry.id, best->id);
            EXPECT_EQ(entry.totalCount, best->totalCount);
            EXPECT_EQ(entry.ownCount, best->ownCount);
            EXPECT_EQ(entry.revision, best->revision);
        }
    }
    create(amplitudeOnly());
    for (const char* text : {"find largest leaf", "find largest node"}) {
        EXPECT_EQ(countOf(*session, text), 0u);
        EXPECT_EQ(query::readIndex(*session, text).id, 1u);
    }
}

TEST_F(QueryNodes, ListedNodesAreTheirOwnPointsAndNoMore) {
    create(amplitudeOnly(), 20, [](auto& created) { created.chunkSizeLod = 25; });
    insert(*session, somePoints(2000, 4));
    commit();
    const std::vector<index::Node> all = nodes();
    query::Scope scope;
    scope.nodes.emplace();
    std::uint64_t expected = 0;
    // An inner node, one below it, and every third leaf.
    std::size_t inner = 0;
    std::size_t leaves = 0;
    for (const index::Node& node : all)
        if (node.isLeaf() ? leaves++ % 3 == 0 : inner++ < 3) {
            scope.nodes->insert(node.id);
            expected += node.ownCount;
        }
    ASSERT_GT(inner, 3u);
    for (const char* filter : {"", "amplitude >= 0"}) {
        SelectQuery count(*session, scope, filter);
        std::uint64_t counted = 0;
        std::uint32_t before = 0;
        while (const std::uint32_t some = count.next(10)) {
            counted += some;
            EXPECT_GE(count.progress(), before);
            before = count.progress();
            if (counted < expected) {
                EXPECT_LE(before, 99u);
            }
            // One leaf at a time is read ahead here at most.
            EXPECT_NEAR(before, 100.0 * static_cast<double>(counted) / double(expected), 12);
        }
        EXPECT_EQ(counted, expected);
        EXPECT_EQ(count.progress(), 100u);
    }
    // What lies elsewhere is no part of the way.
    SelectQuery rare(*session, scope, "xyz[0] > 60");
    ASSERT_EQ(rare.next(1), 1u);
    EXPECT_LT(rare.progress(), 75u);
    // Where points change, those that stood for them are gone until the commit.
    begin();
    EXPECT_EQ(fill("amplitude", 1), 2000u);
    for (const index::Node& node : nodes()) {
        EXPECT_EQ(node.revision, 3u);
        EXPECT_EQ(node.ownCount, node.isLeaf() ? node.totalCount : 0);
    }
    session->rollback();
    scope.nodes->insert(123456);
    EXPECT_EQ(codeOf([&] { SelectQuery(*session, scope, ""); }), ErrorCode::NotFound);
    query::Scope nowhere;
    nowhere.subtree = 123456;
    EXPECT_EQ(codeOf([&] { SelectQuery(*session, nowhere, ""); }), ErrorCode::NotFound);
}

TEST_F(QueryNodes, ProgressOfASelectPassesWhatItSkips) {
    create(amplitudeOnly(), 20);
    std::vector<Point> points = somePoints(2000, 4);
    for (std::size_t i = 0; i < points.size(); ++i)
        points[i].x = i < 1000 ? -500 + double(i) / 100 : 500 + double(i) / 100;
    insert(*session, points);
    commit();
    // The first half has no hits, the second every other point.
    SelectQuery query(*session, {}, "xyz[0] > 0 && tarvo.id % 2 == 1");
    std::uint64_t read = 0;
    while (query.next(1) == 1) {
        ++read;
        EXPECT_NEAR(query.progress(), 50 + double(read) / 10, 6) << read;
        EXPECT_LE(query.progress(), 99u);
    }
    EXPECT_EQ(read, 500u);
    EXPECT_EQ(query.progress(), 100u);
}

TEST_F(QueryNodes, ProgressOfACommitNeverGoesBackAndStopsIt) {
    const auto make = [this] {
        create(amplitudeOnly(), 20, [](auto& created) { created.chunkSizeLod = 25; });
        insert(*session, somePoints(3000, 4));
        commit();
        begin();
        insert(*session, somePoints(3000, 5));
    };
    make();
    std::vector<int> told;
    query::commit(*session, [&](int percent) {
        told.push_back(percent);
        return true;
    });
    EXPECT_TRUE(std::is_sorted(told.begin(), told.end()));
    EXPECT_GE(told.front(), 0);
    EXPECT_EQ(told.back(), 100);
    // While points are inserted, while levels of detail are made.
    for (const auto& [from, to] : {std::pair(1, 59), std::pair(61, 94)}) {
        EXPECT_TRUE(std::any_of(told.begin(), told.end(), [&, low = from, high = to](int percent) {
            return percent >= low && percent <= high;
        })) << from;
        make();
        int last = 0;
        EXPECT_EQ(codeOf([&, low = from] {
                      query::commit(*session, [&](int percent) { return (last = percent) < low; });
                  }),
                  ErrorCode::Cancelled);
        EXPECT_LE(last, to);
        EXPECT_TRUE(session->pending());
        query::commit(*session);
        EXPECT_EQ(session->state()->pointCount, 6000u);
        expectSound();
    }
    // While points change.
    begin();
    FillQuery filling(*session, {}, "");
    const double value = 9;
    filling.bind("amplitude", QRB_DATA_TYPE_DOUBLE, &value);
    EXPECT_EQ(filling.next(6000), 6000u);
    int last = 0;
    EXPECT_EQ(
        codeOf([&] { query::commit(*session, [&](int percent) { return (last = percent) < 1; }); }),
        ErrorCode::Cancelled);
    EXPECT_LE(last, 59);
    query::commit(*session);
    EXPECT_EQ(countOf(*session, "amplitude == 9"), 6000u);
}

TEST_F(QueryNodes, AnIndexWithoutHitsIsItsRoot) {
    create(amplitudeOnly(), 20, [](auto& created) { created.chunkSizeLod = 25; });
    insert(*session, somePoints(300, 4));
    commit();
    const query::IndexEntry root = query::readIndex(*session, "amplitude > 60000");
    EXPECT_EQ(root.id, 1u);
    EXPECT_EQ(root.revision, 2u);
    EXPECT_EQ(root.totalCount, 300u);
    EXPECT_EQ(root.ownCount, session->blobs().rootNode(*session->state()).ownCount);
    EXPECT_TRUE(root.children.empty());
}

TEST_F(QueryNodes, ExtremesAreThoseOfTheElementsNamedAndOfPointsThatAreThere) {
    AttributeRecord above = record("above", 0, 100);
    above.invalidValue = 200;
    AttributeRecord below = record("below", 0, 100);
    below.invalidValue = -1;
    create({above, below});
    double value[3] = {};
    using query::Extreme;
    const auto extreme = [&](const char* name, Extreme which, bool cleaned) {
        query::readExtreme(*session, 1, name, which, cleaned, QRB_DATA_TYPE_DOUBLE, value);
        return value[0];
    };
    for (const bool cleaned : {false, true})
        EXPECT_EQ(codeOf([&] { extreme("above", Extreme::Maximum, cleaned); }),
                  ErrorCode::NotFound);
    InsertQuery inserting(*session);
    const Values xyz{4, 20, 600, -3, 50, -600};
    inserting.bind("xyz", QRB_DATA_TYPE_DOUBLE, xyz.data(), 24);
    inserting.next(2);
    commit();
    EXPECT_EQ(extreme("above", Extreme::Maximum, false), 0);
    EXPECT_EQ(extreme("below", Extreme::Minimum, false), 0);
    EXPECT_EQ(extreme("xyz[1]", Extreme::Minimum, true), 20);
    EXPECT_EQ(extreme("xyz", Extreme::Maximum, true), 4);
    EXPECT_EQ((Values{value[1], value[2]}), (Values{50, 600}));
}

// What is replaced often leaves no dead bytes in the blobs of others.
TEST_F(QueryNodes, KeepDynamicAttributesInBlobsOfTheirOwn) {
    AttributeRecord plain = record("plain", 0, 1000), dynamic = record("dynamic", 0, 1000);
    dynamic.storageClass = 3;
    create({plain, dynamic, record("other", 0, 1000)}, 10);
    add(100);
    commit();
    begin();
    Ids ids(100);
    Values values(100);
    for (std::size_t i = 0; i < 100; ++i)
        ids[i] = i + 1, values[i] = static_cast<double>(i * 7 % 100);
    for (const char* name : {"plain", "dynamic", "other"})
        EXPECT_EQ(update(name, values, ids), 100u);
    commit();
    begin();
    // A second time in one go, and a removal, encode all of them anew.
    EXPECT_EQ(remove({5, 50, 95}), 3u);
    commit();
    const auto blobOf = [&](const index::Node& leaf, const char* name) {
        const auto state = session->state();
        const auto index = static_cast<std::size_t>(state->attributes.find(name));
        return leaf.find(state->attributes[index].uid)->elements[0].block.blob;
    };
    std::set<std::uint32_t> seen;
    for (const index::Node& leaf : nodes()) {
        if (!leaf.isLeaf() || leaf.revision != 4)
            continue;
        seen.insert(leaf.id);
        EXPECT_EQ(blobOf(leaf, "plain"), blobOf(leaf, "other"));
        EXPECT_EQ(blobOf(leaf, "plain"), blobOf(leaf, "xyz"));
        EXPECT_NE(blobOf(leaf, "dynamic"), blobOf(leaf, "plain"));
    }
    EXPECT_EQ(seen.size(), 3u);
    expectSound();
    // Values that go leave the blobs that they shared.
    const auto blobs = [&] {
        std::set<std::uint64_t> all;
        for (const index::Node& leaf : nodes())
            for (const index::AttributeData& data : leaf.attributes)
                for (const index::ElementData& element : data.elements)
                    if (element.block && leaf.isLeaf())
                        all.insert(element.block.blob);
        return all;
    };
    const std::set<std::uint64_t> before = blobs();
    begin();
    query::discardAttribute(*session, "other");
    query::removeAttribute(*session, "plain");
    commit();
    for (const index::Node& leaf : nodes())
        if (leaf.isLeaf()) {
            EXPECT_TRUE(before.contains(blobOf(leaf, "dynamic")));
            EXPECT_EQ(before.contains(blobOf(leaf, "xyz")), !seen.contains(leaf.id));
        }
    EXPECT_EQ(countOf(*session, "other == 0"), 97u);
    expectKnownAttributes();
    expectSound();
}

TEST_F(QueryNodes, AttributesAreStoredByTheirOwnOptions) {
    std::vector<AttributeRecord> attributes;
    for (std::uint8_t options = 0; options < 4; ++options) {
        attributes.push_back(record("n" + std::to_string(options), 0, 60000));
        attributes.back().compressionOptions = options;
    }
    create(attributes, 1000);
    Ids ids(1000);
    Values values(1000);
    for (std::size_t i = 0; i < ids.size(); ++i)
        ids[i] = i + 1, values[i] = static_cast<double>(i * 31 + i % 7);
    add(1000);
    for (const AttributeRecord& attribute : attributes)
        EXPECT_EQ(update(attribute.name.c_str(), values, ids), 1000u);
    commit();
    const auto state = session->state();
    std::vector<int> codecs;
    for (const index::Node& leaf : nodes())
        for (std::size_t a = 2; leaf.isLeaf() && a < state->attributes.size(); ++a) {
            const BlobRef& block = leaf.find(state->attributes[a].uid)->elements[0].block;
            codecs.push_back(session->blobs().read(block, "a block")[0]);
        }
    ASSERT_EQ(codecs.size(), 4u);
    // Delta, shuffle, both; see engine/codec/codec.h.
    EXPECT_EQ(std::vector(codecs.begin() + 1, codecs.end()), (std::vector{5, 2, 3}));
}

// The order of the definitions is not that of their numbers once one was replaced.
TEST_F(QueryNodes, HoldTheValuesOfAttributesThatWereRedefined) {
    create({record("a", 0, 100), record("b", 0, 100), record("c", 0, 100)}, 10);
    add(15, "a", Values(15, 1));
    add(15, "b", Values(15, 2));
    query::putAttribute(*session, record("a", -10, 100));
    add(15, "c", Values(15, 3));
    query::putAttribute(*session, record("b", -10, 100));
    add(15, "a", Values(15, 4));
    commit();
    EXPECT_EQ(countOf(*session, "a == 1 && b == 0 && c == 0"), 15u);
    EXPECT_EQ(countOf(*session, "a == 0 && b == 2 && c == 0"), 15u);
    EXPECT_EQ(countOf(*session, "a == 0 && b == 0 && c == 3"), 15u);
    EXPECT_EQ(countOf(*session, "a == 4 && b == 0 && c == 0"), 15u);
    begin();
    query::duplicateAttribute(*session, "a", "d");
    EXPECT_EQ(fill("b", 9, {}, "d == 4"), 15u);
    commit();
    EXPECT_EQ(countOf(*session, "b == 9 && a == 4 && d == 4"), 15u);
    EXPECT_EQ(query::readRevision(*session, 1, "d"), 3u);
    EXPECT_EQ(query::readRevision(*session, 1, "a"), 2u);
    expectKnownAttributes();
    expectSound();
}

TEST_F(QueryNodes, AreNotMadeWhereThereAreNoMoreNumbers) {
    create(amplitudeOnly(), 10);
    add(5);
    session->settle();
    session->change().nextNodeId = std::numeric_limits<std::uint32_t>::max();
    add(100);
    EXPECT_EQ(codeOf([&] { commit(); }), ErrorCode::State);
    session->rollback();
}

// Leaves that have become inner nodes, the first and the last ones below them.
TEST_F(QueryNodes, AreFilledOneByOne) {
    create(amplitudeOnly(), 4);
    for (std::uint32_t seed = 1; seed <= 4; ++seed) {
        insert(*session, somePoints(40, seed));
        session->settle();
    }
    commit();
    begin();
    std::uint16_t value = 10'000;
    std::map<std::uint16_t, std::uint64_t> expected;
    for (const index::Node& node : nodes()) {
        if (!node.isLeaf())
            continue;
        query::Scope scope;
        scope.nodes.emplace().insert(node.id);
        EXPECT_EQ(fill("amplitude", ++value, scope), node.totalCount);
        session->settle();
        expected[value] = node.totalCount;
    }
    std::map<std::uint16_t, std::uint64_t> found;
    for (const auto& [_, point] : readAll(*session))
        ++found[point.amplitude];
    EXPECT_EQ(found, expected);
}

TEST_F(QueryNodes, OfAnEdgeHoldNoPointsFartherApart) {
    for (const auto& [edge, leaves] : {std::pair(7u, 3u), {10u, 2u}, {17u, 1u}}) {
        create(amplitudeOnly(), 100, [edge = edge](auto& created) {
            created.chunkMode = 2;
            created.chunkSize = edge;
        });
        insert(*session, {{-999.9, 0, 0, 1}, {-999.5, 0, 0, 2}, {-900, 0, 0, 3}});
        commit();
        const std::vector<index::Node> all = nodes();
        EXPECT_EQ(std::count_if(all.begin(), all.end(), [](const auto& n) { return n.isLeaf(); }),
                  leaves)
            << edge;
    }
}

// Rows that are sorted through files stand beside the database, also where it has no folder in its
// name, and nowhere else.
TEST_F(QueryNodes, ManyPointsAreSortedBesideTheDatabase) {
    create(amplitudeOnly(), 5000);
    session.reset();
    const std::filesystem::path before = std::filesystem::current_path();
    const char* const temporary = std::getenv("TMPDIR");
    const std::string saved = temporary ? temporary : "";
    std::filesystem::current_path(std::filesystem::path(file).parent_path());
    ::setenv("TMPDIR", "/nowhere", 1);
    session = std::make_unique<session::Session>("a.qrbx", session::OpenSettings{0}, "test");
    begin();
    for (std::uint32_t seed = 1; seed <= 17; ++seed)
        insert(*session, somePoints(70'000, seed));
    insert(*session, somePoints(1'000, 9));
    EXPECT_EQ(session->state()->pointCount, 1'191'000u);
    commit();
    expectSound();
    session.reset();
    std::filesystem::current_path(before);
    temporary ? ::setenv("TMPDIR", saved.c_str(), 1) : ::unsetenv("TMPDIR");
    EXPECT_EQ(folder.entries(), 1u) << folder.names();
}

}  // namespace
}  // namespace tarvo::engine
