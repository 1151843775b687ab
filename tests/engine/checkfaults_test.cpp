// What the check tells of each lie of an index, wholly: every fault with its place, and no other.
#include "tests/engine/hostile.h"

#include "engine/query/blocks.h"
#include "engine/query/columns.h"
#include "engine/query/commit.h"
#include "engine/query/remove.h"
#include "engine/report/check.h"
#include "engine/report/facts.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <set>

namespace tarvo::engine {
namespace {

using namespace testing;
using index::Node;
using report::Fault;
using report::Findings;
using schema::ElementStatistics;
using Lines = std::vector<std::string>;

const char* const kinds[] = {"root",  "attribute table", "metadata item", "changelog",
                             "index", "block",           "container"};

// A database whose transaction 3 holds what a test makes of the index.
class CheckFaults : public ::testing::Test {
protected:
    struct Index {
        session::Session& session;
        session::State& state;
        Node& root;
        Node* above = nullptr;  // an inner node with leaves only
        Node* leaf = nullptr;   // its first
        Node* next = nullptr;   // its second

        schema::Attribute& attribute(const char* name) {
            return state.attributes.all()[static_cast<std::size_t>(state.attributes.find(name))];
        }
        index::ElementData& element(Node* node, const char* name, std::size_t e = 0) {
            for (index::AttributeData& data : node->attributes)
                if (data.uid == attribute(name).uid)
                    return data.elements[e];
            throw Failure(ErrorCode::NotFound, name);
        }
        schema::Column read(Node* node, const char* name, std::uint32_t e = 0) {
            return *query::readColumn(session, *node, attribute(name), e);
        }
        // Puts other codes into the block of an element, and what they are into its node.
        void write(Node* node, const char* name, const schema::Column& column, std::size_t e = 0) {
            const schema::Attribute& definition = attribute(name);
            query::BlockWriter writer(50);
            std::vector<index::AttributeData> stored{{definition.uid, 3, {{}}}};
            stored[0].elements[0].block = writer.addBlock(definition, column);
            writer.store(session.blobs(), stored);
            element(node, name, e).block = stored[0].elements[0].block;
            element(node, name, e).statistics = schema::statistics(column, definition.grid);
        }
    };

    CheckFaults() {
        schema::AttributeRecord kind = record("kind", 0, 99);
        kind.invalidValue = 50;
        session::CreateSettings create = settings(1, 20);
        session::Session::create(sound, create, "test", {kind, record("pair", 0, 200, 1, 2)});
        session::Session session(sound, {}, "test");
        session.begin("points", "test", "", "");
        // Eight corners, so many points in the first that it is an inner node; all with one y.
        std::vector<double> xyz;
        std::vector<double> values;
        for (int corner = 0; corner < 8; ++corner)
            for (int i = 0; i < (corner == 0 ? 128 : 11); ++i) {
                xyz.insert(xyz.end(), {(corner & 1 ? 600 : -800) + double(i % 16) * 16,
                                       corner & 2 ? 600.0 : -600.0,
                                       (corner & 4 ? 600 : -800) + double(i / 16) * 16});
                values.push_back(i % 5 == 4 ? 50 : i % 5 + corner);
            }
        query::InsertQuery query(session);
        query.bind("xyz", QRB_DATA_TYPE_DOUBLE, xyz.data(), 24);
        query.bind("kind", QRB_DATA_TYPE_DOUBLE, values.data(), 8);
        query.bind("pair[1]", QRB_DATA_TYPE_DOUBLE, values.data(), 8);
        query.next(static_cast<std::uint32_t>(values.size()));
        query::commit(session);
    }
    void change(const std::function<void(Index&)>& lie) {
        std::filesystem::copy_file(sound, file, std::filesystem::copy_options::overwrite_existing);
        commitIndex(file, [&](session::Session& session, session::State& state, Node& root) {
            Index index{session, state, root};
            index.above = &root;
            while (!index.above->children[0].isLeaf())
                index.above = &index.above->children[0];
            index.leaf = &index.above->children[0];
            index.next = &index.above->children[1];
            m_roles = {{root.id, "root"},
                       {index.above->id, "above"},
                       {index.leaf->id, "leaf"},
                       {index.next->id, "next"}};
            m_roles[root.id] = "root";
            EXPECT_NE(index.above, &root);
            EXPECT_EQ(index.leaf->ownCount, index.next->ownCount);
            lie(index);
        });
    }
    std::string lineOf(const Fault& fault) {
        std::string line = kinds[static_cast<int>(fault.kind)];
        line += " of " + std::to_string(fault.transaction);
        if (!fault.name.empty())
            line += " " + fault.name;
        if (fault.element)
            line += "[" + std::to_string(*fault.element) + "]";
        if (fault.node != 0)
            line += m_roles.contains(fault.node) ? " at " + m_roles[fault.node] : " at a node";
        const std::string begin = "The file is damaged: ";
        return line + ": " +
               (fault.text.rfind(begin, 0) == 0 ? fault.text.substr(begin.size()) : fault.text);
    }
    Lines faultLines() {
        session::Session session(file, {}, "test");
        const Findings findings = report::check(session);
        EXPECT_EQ(findings.faults.size(), findings.faultCount);
        EXPECT_EQ(findings.unreached.has_value(), findings.faultCount == 0);
        Lines lines;
        for (const Fault& fault : findings.faults)
            lines.push_back(lineOf(fault));
        std::sort(lines.begin(), lines.end());
        return lines;
    }

    TemporaryFolder folder;
    const std::string sound = folder.file("sound.qrbx");
    const std::string file = folder.file("a.qrbx");

private:
    std::map<std::uint32_t, std::string> m_roles;
};

TEST_F(CheckFaults, AreOnesOfTheirPlaceAlone) {
    struct Case {
        const char* what;
        std::function<void(Index&)> lie;
        Lines faults;
    };
    const Case cases[] = {
        {"nothing", [](Index&) {}, {}},
        {"attribute of another length",
         [](Index& i) {
             for (index::AttributeData& data : i.leaf->attributes)
                 if (data.uid == i.attribute("pair").uid)
                     data.elements.push_back(data.elements[0]);
         },
         {"index of 3 pair at leaf: it has another length in the node."}},
        {"statistics beyond the range",
         [](Index& i) { i.element(i.leaf, "pair").statistics.maximum = 201; },
         {"index of 3 pair[0] at above: the nodes below have other least and greatest values than "
          "the node tells.",
          "index of 3 pair[0] at leaf: the node has values beyond their range.",
          "index of 3 pair[0] at leaf: the node lacks its block."}},
        {"block beyond the range",
         [](Index& i) {
             const ElementStatistics before = i.element(i.leaf, "pair", 1).statistics;
             schema::Column column = i.read(i.leaf, "pair", 1);
             column.set(3, 201);
             i.write(i.leaf, "pair", column, 1);
             i.element(i.leaf, "pair", 1).statistics = before;
         },
         {"block of 3 pair[1] at leaf: the block has values beyond their range."}},
        {"an invalid value that is not there",
         [](Index& i) {
             schema::Column column = i.read(i.leaf, "kind");
             for (std::size_t p = 0; p < column.size(); ++p)
                 if (column[p] == 50)
                     column.set(p, 3);
             i.write(i.leaf, "kind", column);
             i.element(i.leaf, "kind").statistics.hasInvalid = true;
         },
         {"block of 3 kind[0] at leaf: the block has other least and greatest values than the node "
          "tells."}},
        {"no block",
         [](Index& i) { i.element(i.leaf, "kind").block = {}; },
         {"index of 3 kind[0] at leaf: the node lacks its block."}},
        {"one value, but that of another cell",
         [](Index& i) {
             ElementStatistics& y = i.element(i.leaf, "xyz", 1).statistics;
             y.minimum = y.maximum = i.attribute("xyz").grid.code(600.0);
         },
         {"block of 3 xyz at leaf: a point stands in a leaf to which it does not belong.",
          "index of 3 xyz[1] at above: the nodes below have other least and greatest values than "
          "the node tells."}},
        {"points in front of their leaf",
         [](Index& i) { i.leaf->first = i.leaf->last; },
         {"block of 3 xyz at leaf: a point stands in a leaf to which it does not belong.",
          "index of 3 at leaf: the node is no cell of the index."}},
        {"points behind their leaf",
         [](Index& i) { i.leaf->last = i.leaf->first; },
         {"block of 3 xyz at leaf: a point stands in a leaf to which it does not belong.",
          "index of 3 at leaf: the node is no cell of the index."}},
        {"equal ids",
         [](Index& i) {
             schema::Column ids = i.read(i.leaf, "tarvo.id");
             ids.set(5, ids[4]);
             i.write(i.leaf, "tarvo.id", ids);
         },
         {"block of 3 tarvo.id[0] at leaf: the points are not in the order of ids.",
          "index of 3 tarvo.id[0] at leaf: a point of the node has the id of another one."}},
        {"an id that is given next",
         [](Index& i) { --i.state.nextPointId; },
         {"block of 3 tarvo.id[0] at a node: a point has an id that was not given yet."}},
        {"ids of the neighbour",
         [](Index& i) { i.write(i.leaf, "tarvo.id", i.read(i.next, "tarvo.id")); },
         {"index of 3 tarvo.id[0] at above: the nodes below have other least and greatest values "
          "than the node tells.",
          "index of 3 tarvo.id[0] at next: a point of the node has the id of another one."}},
        {"a number that is given next",
         [](Index& i) { i.leaf->id = i.state.nextNodeId; },
         {"index of 3 at a node: the node has a number that was not given yet."}},
        {"the number of the neighbour",
         [](Index& i) { i.leaf->id = i.next->id; },
         {"index of 3 at next: there are two nodes of this number."}},
        {"a root of another number",
         [](Index& i) {
             i.root.id = 70000;
             i.state.nextNodeId = 80000;
         },
         {"index of 3: its index has no root."}},
        {"more points than the root has",
         [](Index& i) { ++i.state.pointCount; },
         {"index of 3: its index has no root."}},
        {"a root of half the keys",
         [](Index& i) { i.root.last /= 2; },
         {"index of 3 at root: the nodes below do not lie within the node.",
          "index of 3: its index has no root."}},
        {"a leaf newer than what is above",
         [](Index& i) { i.leaf->revision = 3; },
         {"index of 3 at above: the nodes below do not lie within the node."}},
        {"a leaf of a later transaction",
         [](Index& i) { i.leaf->revision = 4; },
         {"index of 3 at above: the nodes below do not lie within the node.",
          "index of 3 at leaf: the node was changed by a later transaction."}},
        {"more points than there are below",
         [](Index& i) { ++i.above->totalCount; },
         {"index of 3 at above: the nodes below do not hold the 129 points that it tells.",
          "index of 3 at root: the nodes below do not hold the 205 points that it tells."}},
        {"leaves in another order",
         [](Index& i) { std::swap(*i.leaf, *i.next); },
         {"index of 3 at above: the nodes below do not lie within the node."}},
        {"a leaf without points",
         [](Index& i) {
             i.leaf->ownCount = i.leaf->totalCount = 0;
             i.leaf->attributes.clear();
         },
         {"index of 3 at above: the nodes below do not hold the 128 points that it tells.",
          "index of 3 at leaf: the node has no points.",
          "index of 3 tarvo.id[0] at above: the nodes below have other least and greatest values "
          "than the node tells.",
          "index of 3 xyz[0] at above: the nodes below have other least and greatest values than "
          "the node tells.",
          "index of 3 xyz[1] at above: the nodes below have other least and greatest values than "
          "the node tells.",
          "index of 3 xyz[2] at above: the nodes below have other least and greatest values than "
          "the node tells."}},
        {"a leaf of no cell",
         [](Index& i) { i.leaf->last -= 3; },
         {"index of 3 at leaf: the node is no cell of the index."}},
        {"leaves that share a cell",
         [](Index& i) {
             i.next->first = i.leaf->first;
             i.next->last = i.leaf->last;
         },
         {"block of 3 xyz at next: a point stands in a leaf to which it does not belong.",
          "index of 3 at next: the node is no cell of the index."}},
        {"another least value of the second element",
         [](Index& i) { i.element(i.above, "pair", 1).statistics.minimum += 1; },
         {"index of 3 pair[1] at above: the nodes below have other least and greatest values than "
          "the node tells.",
          "index of 3 pair[1] at root: the nodes below have other least and greatest values than "
          "the node tells."}},
        {"a page at two places",
         [](Index& i) {
             const BlobRef page = i.session.blobs().add(index::encodePage(i.above->children));
             Node twin = *i.above;
             twin.id = i.state.nextNodeId++;
             twin.children.clear();
             twin.childPage = page;
             i.above->children.clear();
             i.above->childPage = page;
             i.root.children.back() = twin;
         },
         {"index of 3 at a node: the nodes below stand at another place, too.",
          "index of 3 at root: the nodes below do not hold the 205 points that it tells.",
          "index of 3 at root: the nodes below do not lie within the node.",
          "index of 3 kind[0] at root: the nodes below have other least and greatest values than "
          "the node tells.",
          "index of 3 tarvo.id[0] at root: the nodes below have other least and greatest values "
          "than the node tells."}},
        {"a page that can't be read",
         [](Index& i) {
             const Bytes nonsense(100, 7);
             i.above->children.clear();
             i.above->childPage = i.session.blobs().add(nonsense);
         },
         {"index of 3 at above: a page of the index is not readable."}},
    };
    for (const Case& one : cases) {
        SCOPED_TRACE(one.what);
        change(one.lie);
        EXPECT_EQ(faultLines(), one.faults);
    }
}

// Points in front of their leaf, behind it.
TEST_F(CheckFaults, AreMetByAnInsertBesideThem) {
    for (const bool front : {false, true}) {
        change([front](Index& i) {
            (front ? i.next : i.leaf)->attributes = (front ? i.leaf : i.next)->attributes;
        });
        session::Session session(file, {}, "test");
        session.begin("insert", "test", "", "");
        std::vector<double> xyz;
        for (int i = 0; i < 128; ++i)
            xyz.insert(xyz.end(), {-800 + double(i % 16) * 16, -600, -800 + double(i / 16) * 16});
        query::InsertQuery query(session);
        query.bind("xyz", QRB_DATA_TYPE_DOUBLE, xyz.data(), 24);
        query.next(128);
        const Outcome outcome = outcomeOf([&] { session.settle(); });
        EXPECT_EQ(outcome.code, ErrorCode::Damaged);
        EXPECT_NE(outcome.text.find("points that do not belong there"), std::string::npos)
            << outcome.text;
        session.rollback();
    }
}

TEST_F(CheckFaults, InTheOrderOfPointsKeepNobodyFromFindingThem) {
    std::vector<std::uint64_t> ids;
    change([&](Index& i) {
        const schema::Column before = i.read(i.leaf, "tarvo.id");
        schema::Column column = before;
        for (std::size_t p = 0; p < column.size(); ++p) {
            column.set(p, before[(p + 3) % column.size()]);
            ids.push_back(
                static_cast<std::uint64_t>(i.attribute("tarvo.id").grid.integerValue(before[p])));
        }
        i.write(i.leaf, "tarvo.id", column);
    });
    session::Session session(file, {}, "test");
    session.begin("remove", "test", "", "");
    query::RemoveQuery query(session);
    query.bind(QRB_DATA_TYPE_UINT64, ids.data(), 8);
    const std::uint64_t before = countOf(session, "");
    EXPECT_EQ(query.next(static_cast<std::uint32_t>(ids.size())), ids.size());
    EXPECT_EQ(countOf(session, ""), before - ids.size());
    session.rollback();
}

TEST_F(CheckFaults, OfAnIndexThatIsMissingAreToldOnce) {
    std::filesystem::copy_file(sound, file);
    session::Session session(file, {}, "test");
    session.begin("wrong", "test", "", "");
    session.change().rootPage = {};
    query::commit(session);
    EXPECT_EQ(faultLines(), (Lines{"index of 3: the index is missing."}));
}

TEST_F(CheckFaults, OfTheRootAreThoseOfTheirTransaction) {
    // Of two transactions with the same points.
    change([](Index&) {});
    {
        store::Connection connection(file, SQLITE_OPEN_READWRITE);
        const std::string root = store::readRoot(connection, 2);
        store::removeSnapshot(connection, 2);
        store::putSnapshot(connection, 2, 1, root);
    }
    EXPECT_EQ(faultLines(), (Lines{"root of 2: the transaction refers to data behind the last that "
                                   "it has."}));
    // Of one that has nothing of its own besides its root.
    change([](Index&) {});
    {
        session::Session session(file, {}, "test");
        session.begin("item", "test", "", "");
        session.metaData().set("later", "[2]");
        query::commit(session);
        store::Connection connection(file, SQLITE_OPEN_READWRITE);
        const std::string root = store::readRoot(connection, 3);
        store::removeSnapshot(connection, 3);
        store::putSnapshot(connection, 3, 1, root);
    }
    EXPECT_EQ(faultLines(), (Lines{"root of 3: the transaction refers to data behind the last that "
                                   "it has."}));
    change([](Index&) {});
    {
        store::Connection connection(file, SQLITE_OPEN_READWRITE);
        const std::string root = store::readRoot(connection, 1);
        const std::int64_t last = store::readLastBlob(connection, 2);
        store::removeSnapshot(connection, 2);
        store::putSnapshot(connection, 2, last, root);
    }
    EXPECT_EQ(faultLines(), (Lines{"root of 2: the root is that of another transaction."}));
}

// Transaction 3 has what neither the one before nor the one behind it has: points with an attribute
// of its own.
TEST_F(CheckFaults, BelowAnOlderTransactionAreNamedByItsDefinitions) {
    std::filesystem::copy_file(sound, file);
    BlobRef block;
    BlobRef entry;
    BlobRef table;
    {
        session::Session session(file, {}, "test");
        entry = session.state()->changelog;
        for (const bool first : {true, false}) {
            session.begin("more", "test", "", "");
            session.addAttribute(record(first ? "extra" : "another", 0, 100));
            std::vector<double> values{1, 2, 3, 4};
            std::vector<double> xyz(12, first ? 600 : 601);
            query::InsertQuery query(session);
            query.bind("xyz", QRB_DATA_TYPE_DOUBLE, xyz.data(), 24);
            query.bind("extra", QRB_DATA_TYPE_DOUBLE, values.data(), 8);
            query.next(4);
            query::commit(session);
            if (!first)
                continue;
            const auto state = session.state();
            table = state->attributesBlob;
            const index::Node root = session.blobs().rootNode(*state);
            const std::uint32_t uid = state->attributes.all().back().uid;
            for (index::TreeCursor at(root, session.blobs().pageReader()); at.node(); at.enter())
                if (at.node()->isLeaf() && at.node()->find(uid))
                    if (const BlobRef& found = at.node()->find(uid)->elements[0].block)
                        block = found;
        }
    }
    EXPECT_EQ(faultLines(), Lines());
    ASSERT_TRUE(block);
    const auto damage = [&](const BlobRef& reference) {
        const std::string from = std::to_string(reference.offset);
        const std::string behind = std::to_string(reference.offset + reference.length + 1);
        runSql(file, ("UPDATE blob SET data = CAST(substr(data, 1, " + from + ") || zeroblob(" +
                      std::to_string(reference.length) + ") || substr(data, " + behind +
                      ") AS BLOB) WHERE id = " + std::to_string(reference.blob))
                         .c_str());
    };
    const std::string before = folder.file("before.qrbx");
    std::filesystem::copy_file(file, before);
    const auto renew = [&] {
        std::filesystem::copy_file(before, file, std::filesystem::copy_options::overwrite_existing);
    };
    const auto begins = [&](const Lines& expected) {
        const Lines lines = faultLines();
        ASSERT_EQ(lines.size(), expected.size());
        for (std::size_t i = 0; i < lines.size(); ++i)
            EXPECT_EQ(lines[i].substr(0, expected[i].size()), expected[i]);
    };
    damage(entry);
    begins({"changelog of 4: the changelog does not agree"});
    renew();
    damage(block);
    begins({"block of 3 extra[0] at a node: a block of \"extra\" in node"});
    // Without definitions blocks are read all the same.
    damage(table);
    begins({"attribute table of 3: the attribute table does not agree",
            "block of 3[0] at a node: a block of a point attribute does not agree"});
}

TEST_F(CheckFaults, OfAPageThatTransactionsShareAreToldOnce) {
    session::Session::create(file, settings(1, 1), "test", amplitudeOnly());
    BlobRef page;
    {
        session::Session session(file, {}, "test");
        commitPoints(session, somePoints(3000, 1));
        commitPoints(session, {{999, 99, 12, 1}});
        const auto pagesOf = [&](std::uint32_t transaction) {
            session.restore(transaction);
            std::map<std::uint64_t, BlobRef> pages;
            const index::Node root = session.blobs().rootNode(*session.state());
            for (index::TreeCursor at(root, session.blobs().pageReader()); at.node(); at.enter())
                if (at.node()->childPage)
                    pages[at.node()->childPage.blob] = at.node()->childPage;
            return pages;
        };
        const auto older = pagesOf(2);
        for (const auto& [blob, reference] : pagesOf(3))
            if (older.contains(blob))
                page = reference;
    }
    ASSERT_TRUE(page);
    runSql(file,
           ("UPDATE blob SET data = zeroblob(length(data)) WHERE id = " + std::to_string(page.blob))
               .c_str());
    EXPECT_EQ(
        faultLines(),
        (Lines{"index of 3 at a node: a page of the index does not agree with its checksum."}));
}

// What the check has read of a file is what the report says that it holds.
TEST_F(CheckFaults, OfNoneTheBytesAreThoseOfTheReport) {
    const std::string many = folder.file("many.qrbx");
    session::CreateSettings create = settings(1, 2);
    create.chunkSizeLod = 30;
    session::Session::create(many, create, "test", amplitudeOnly(), {{"first", "[1]"}});
    session::Session session(many, {}, "test");
    session.begin("points", "test", "", "");
    insert(session, somePoints(3000, 1));
    session.metaData().set("note", "{\"text\":\"a note\"}");
    session.metaData().sign("note", {1, {0xab}, {}});
    query::commit(session);
    const report::Facts facts = report::gatherFacts(session);
    std::uint64_t expected =
        facts.pointBytes + facts.levelOfDetailBytes + facts.indexBytes + facts.metaDataBytes;
    std::uint64_t blocks = 0;
    std::uint64_t ofBlocks = 0;
    std::uint64_t ofLeaves = 0;
    for (const report::AttributeFacts& attribute : facts.attributes) {
        blocks += attribute.blocks;
        ofBlocks += attribute.bytes;
        ofLeaves += attribute.leafBytes;
    }
    EXPECT_EQ(ofBlocks, facts.pointBytes + facts.levelOfDetailBytes);
    EXPECT_EQ(ofLeaves, facts.pointBytes);
    EXPECT_GT(facts.levelOfDetailBytes, 0u);
    for (const std::uint32_t id : session.history().transactions()) {
        const std::string root = session.history().root(id);
        expected += root.size() + session::stateFromRoot(root).changelog.length;
    }
    expected += facts.state->attributesBlob.length;
    EXPECT_EQ(facts.metaDataBytes, 3u + 17u);
    ASSERT_EQ(facts.metaData.size(), 2u);
    EXPECT_FALSE(facts.metaData[0].isSigned);
    EXPECT_TRUE(facts.metaData[1].isSigned);
    Findings findings = report::check(session);
    EXPECT_EQ(findings.faultCount, 0u);
    EXPECT_EQ(findings.transactions, 2u);
    EXPECT_EQ(findings.points, 3000u);
    // The pages from before there were levels of detail are left in the file.
    ASSERT_TRUE(findings.unreached);
    EXPECT_EQ(findings.blobs + *findings.unreached, session.history().blobCount());
    EXPECT_EQ(findings.bytes, expected);
    std::uint64_t nodes = 0;
    std::uint64_t details = 0;
    std::uint64_t own = 0;
    std::uint64_t found = 0;
    for (const report::LevelFacts& level : facts.levels) {
        nodes += level.leaves + level.innerNodes;
        details += level.levelOfDetailPoints;
    }
    for (index::TreeCursor at(facts.root, session.blobs().pageReader()); at.node(); at.enter()) {
        --nodes;
        own += at.node()->isLeaf() ? 0 : at.node()->ownCount;
        for (const index::AttributeData& data : at.node()->attributes)
            for (const index::ElementData& element : data.elements)
                found += element.block ? 1 : 0;
    }
    EXPECT_EQ(nodes, 0u);
    EXPECT_EQ(details, own);
    EXPECT_EQ(blocks, found);
    // A transaction that shares all but an item.
    session.begin("item", "test", "", "");
    session.metaData().set("later", "[123]");
    query::commit(session);
    const Findings more = report::check(session);
    EXPECT_EQ(more.points, 3000u);
    EXPECT_EQ(more.blobs, findings.blobs + 2);
    EXPECT_EQ(more.bytes, findings.bytes + 5 + session.history().root(3).size() +
                              session.state()->changelog.length);
}

TEST_F(CheckFaults, OfNoneThePointsOfLeavesThatTransactionsShareCountOnce) {
    session::Session session(sound, {}, "test");
    const std::uint64_t before = report::check(session).points;
    EXPECT_EQ(before, session.state()->pointCount);
    session.begin("more", "test", "", "");
    const double xyz[] = {777, 600, 3};
    query::InsertQuery query(session);
    query.bind("xyz", QRB_DATA_TYPE_DOUBLE, xyz, 24);
    query.next(1);
    query::commit(session);
    std::uint64_t changed = 0;
    const Node root = session.blobs().rootNode(*session.state());
    for (index::TreeCursor at(root, session.blobs().pageReader()); at.node(); at.enter())
        if (at.node()->isLeaf() && at.node()->revision == 3)
            changed += at.node()->ownCount;
    EXPECT_LE(changed, 20u);
    EXPECT_EQ(report::check(session).points, before + changed);
}

}  // namespace
}  // namespace tarvo::engine
