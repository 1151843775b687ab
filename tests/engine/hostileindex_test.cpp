// Files whose checksums are right, but whose index, roots or history lie: the check names them, and
// nobody crashes, goes on without end or makes a wrong commit of them.
#include "tests/engine/hostile.h"

#include "engine/index/shape.h"
#include "engine/query/commit.h"
#include "engine/query/remove.h"
#include "engine/query/stat.h"
#include "engine/query/update.h"
#include "engine/report/check.h"
#include "engine/report/report.h"

#include <gtest/gtest.h>
#include <zstd.h>

#include <limits>

namespace tarvo::engine {
namespace {

using namespace testing;
using index::Node;
using report::Fault;
using report::Findings;

class HostileIndex : public ::testing::Test {
protected:
    HostileIndex() {
        session::Session::create(sound, settings(1, 100), "test", amplitudeOnly(),
                                 {{"note", "[1]"}});
        session::Session session(sound, {}, "test");
        commitPoints(session, somePoints(3000, 1));
        commitPoints(session, somePoints(500, 2));
        renew();
    }
    // The file is the sound one again.
    void renew() {
        std::filesystem::copy_file(sound, file, std::filesystem::copy_options::overwrite_existing);
    }
    Findings check() {
        session::Session session(file, {}, "test");
        return report::check(session);
    }
    void expectFault(Fault::Kind kind, const std::string& text = {}) {
        const Findings findings = check();
        EXPECT_TRUE(
            std::any_of(findings.faults.begin(), findings.faults.end(), [&](const Fault& fault) {
                return fault.kind == kind && fault.text.find(text) != std::string::npos;
            }));
    }
    // What a change of the points comes to; nothing of it stays.
    Outcome changing(const std::function<void(session::Session&)>& change) {
        session::Session session(file, {}, "test");
        session.begin("change", "test", "", "");
        const Outcome outcome = outcomeOf([&] {
            change(session);
            (void)session.state();
        });
        session.rollback();
        return outcome;
    }
    Outcome inserting() {
        return changing([](session::Session& session) { insert(session, somePoints(4000, 9)); });
    }
    Outcome removing() {
        return changing([](session::Session& session) {
            std::vector<std::uint64_t> ids(3500);
            for (std::size_t i = 0; i < ids.size(); ++i)
                ids[i] = i + 1;
            query::RemoveQuery query(session);
            query.bind(QRB_DATA_TYPE_UINT64, ids.data(), sizeof ids[0]);
            query.next(static_cast<std::uint32_t>(ids.size()));
        });
    }
    Outcome updating() {
        return changing([](session::Session& session) {
            const std::vector<std::uint16_t> values(3500, 7);
            std::vector<std::uint64_t> ids(values.size());
            for (std::size_t i = 0; i < ids.size(); ++i)
                ids[i] = i + 1;
            query::UpdateQuery query(session);
            query.bind("tarvo.id", QRB_DATA_TYPE_UINT64, ids.data(), sizeof ids[0]);
            query.bind("amplitude", QRB_DATA_TYPE_UINT16, values.data(), sizeof values[0]);
            query.next(static_cast<std::uint32_t>(ids.size()));
        });
    }
    Outcome detailing() {
        return changing([](session::Session& session) {
            session.setLevelOfDetail(1, 30);
            query::commit(session);
        });
    }
    Outcome reading() {
        session::Session session(file, {}, "test");
        return outcomeOf([&] { (void)readAll(session); });
    }
    static bool isDamage(const Outcome& outcome) { return outcome.code == ErrorCode::Damaged; }

    // An inner node below the root, whose children are leaves.
    static Node& inner(Node& root) {
        Node* node = &root;
        const auto isInner = [](const Node& child) { return !child.isLeaf(); };
        for (;;) {
            const auto next = std::find_if(node->children.begin(), node->children.end(), isInner);
            if (next == node->children.end())
                return *node;
            node = &*next;
        }
    }

    TemporaryFolder folder;
    const std::string sound = folder.file("sound.qrbx");
    const std::string file = folder.file("a.qrbx");
};

TEST_F(HostileIndex, NodesThatAreNoCellsAreNamedAndNeitherFollowedNorChanged) {
    struct Case {
        const char* what;
        std::function<void(Node& root)> change;
    };
    const Case cases[] = {
        {"leaf of no level", [](Node& root) { inner(root).children[0].level = 0; }},
        {"leaf too deep", [](Node& root) { inner(root).children[0].level = 128; }},
        {"inner node of no level", [](Node& root) { inner(root).level = 0; }},
        {"inner node too deep", [](Node& root) { inner(root).level = 120; }},
        {"inner node of its children's range",
         [](Node& root) {
             Node& node = inner(root);
             node.first = node.children.front().first;
             node.last = node.children.back().last - 1;
             node.children.back().last = node.last;
         }},
        {"inner node that begins early",
         [](Node& root) { inner(root).first -= index::Key(1) << 60; }},
        {"leaf of half a cell",
         [](Node& root) {
             Node& leaf = inner(root).children.back();
             leaf.last -= (leaf.last - leaf.first) / 3;
         }},
        {"leaves in a cell that can be divided",
         [](Node& root) {
             Node& node = inner(root);
             node.children[1].first = node.children[0].first;
             node.children[1].last = std::max(node.children[0].last, node.children[1].last);
         }},
        {"root over more keys", [](Node& root) { root.last = 2 * root.last + 1; }},
        {"root that is a leaf",
         [](Node& root) {
             root.children.clear();
             root.ownCount = root.totalCount;
         }},
        {"nodes without points",
         [](Node& root) {
             Node& node = inner(root);
             node.children[0].totalCount += node.children[1].totalCount;
             node.children[0].ownCount = node.children[0].totalCount;
             node.children[1].totalCount = node.children[1].ownCount = 0;
         }},
    };
    for (const Case& one : cases) {
        SCOPED_TRACE(one.what);
        renew();
        commitIndex(file,
                    [&](session::Session&, session::State&, Node& root) { one.change(root); });
        expectFault(Fault::Kind::Index);
        EXPECT_TRUE(isDamage(updating()));
        // The same in a page of its own.
        renew();
        commitIndex(file, [&](session::Session& session, session::State&, Node& root) {
            Node* const node = &inner(root);
            one.change(root);
            if (root.children.empty())
                return;
            node->childPage = session.blobs().add(index::encodePage(node->children));
            node->children.clear();
        });
        expectFault(Fault::Kind::Index);
        EXPECT_TRUE(isDamage(inserting()));
        EXPECT_TRUE(isDamage(removing()));
        EXPECT_TRUE(isDamage(updating()));
        EXPECT_TRUE(isDamage(detailing()));
    }
}

TEST_F(HostileIndex, ARangeOfTheKeysThatIsNotThatOfTheIndexIsNamedAndNothingIsChanged) {
    commitIndex(file, [](session::Session&, session::State& state, Node&) {
        schema::Attribute& primary = state.attributes.all()[0];
        schema::AttributeRecord wider = primary.record;
        wider.maximumValue = 1e6;
        primary = schema::Attribute(wider, primary.uid);
        state.attributesBlob = {};
    });
    expectFault(Fault::Kind::Index);
    EXPECT_TRUE(isDamage(inserting()));
    EXPECT_TRUE(isDamage(removing()));
}

TEST_F(HostileIndex, PointsOfAnotherLeafAreNotPutIntoTheTree) {
    commitIndex(file, [](session::Session&, session::State&, Node& root) {
        Node& node = inner(root);
        std::swap(node.children.front().attributes, node.children.back().attributes);
        std::swap(node.children.front().totalCount, node.children.back().totalCount);
        std::swap(node.children.front().ownCount, node.children.back().ownCount);
    });
    expectFault(Fault::Kind::Block, "does not belong");
    EXPECT_TRUE(isDamage(changing([](session::Session& session) {
        for (std::uint32_t seed = 20; seed < 24; ++seed)
            insert(session, somePoints(4000, seed));
    })));
}

TEST_F(HostileIndex, AnAttributeOfAnotherLengthIsNotWrittenTo) {
    commitChanged(file, [](session::State& state, Node& leaf) {
        const auto index = static_cast<std::size_t>(state.attributes.find("amplitude"));
        for (index::AttributeData& data : leaf.attributes)
            if (data.uid == state.attributes[index].uid)
                data.elements.clear();
    });
    expectFault(Fault::Kind::Index, "another length");
    EXPECT_TRUE(isDamage(updating()));
}

// A page below itself so often that its points can be counted, but neither read nor held.
TEST_F(HostileIndex, APageAtManyPlacesIsNoTreeAndEndsEveryWalk) {
    for (const bool countsAreRight : {false, true}) {
        SCOPED_TRACE(countsAreRight);
        renew();
        commitIndex(file, [&](session::Session& session, session::State& state, Node& root) {
            state.nextNodeId = std::numeric_limits<std::uint32_t>::max();
            const int depth = countsAreRight ? 18 : 60;
            index::Page page;
            std::uint32_t id = 1000;
            std::uint64_t points = countsAreRight ? 1 : 0;
            for (int level = depth; level > 0; --level) {
                Node node;
                node.level = static_cast<std::uint8_t>(level);
                node.revision = state.transaction.id;
                node.last = root.last;
                node.totalCount = points;
                node.ownCount = page.empty() ? points : 0;
                if (!page.empty())
                    node.childPage = session.blobs().add(index::encodePage(page));
                page.assign(4, node);
                for (Node& each : page)
                    each.id = id++;
                points *= 4;
            }
            root.children = page;
            root.totalCount = state.pointCount = points;
            if (!countsAreRight)
                root.totalCount = state.pointCount = 3500;
        });
        expectFault(Fault::Kind::Index);
        EXPECT_TRUE(isDamage(reading()));
        EXPECT_TRUE(isDamage(updating()));
        EXPECT_TRUE(isDamage(inserting()));
        session::Session session(file, {}, "test");
        EXPECT_TRUE(isDamage(outcomeOf([&] { (void)report::inspect(session, 1); })));
        EXPECT_TRUE(isDamage(outcomeOf([&] { (void)query::readIndex(session, ""); })));
        EXPECT_EQ(report::inspect(session, 5).find("{\"fault_count\":0"), std::string::npos);
    }
}

TEST_F(HostileIndex, APageThatHoldsLessThanItsNodeTellsIsNotCleanedUp) {
    for (const bool ownPage : {true, false}) {
        renew();
        commitIndex(file, [&](session::Session& session, session::State&, Node& root) {
            Node& node = inner(root);
            node.children.pop_back();
            if (!ownPage)
                return;
            node.childPage = session.blobs().add(index::encodePage(node.children));
            node.children.clear();
        });
        session::Session session(file, {}, "test");
        const std::uint64_t blobs = session.history().blobCount();
        EXPECT_TRUE(isDamage(outcomeOf([&] { session.history().vacuum(); })));
        EXPECT_EQ(session.history().blobCount(), blobs);
    }
}

TEST_F(HostileIndex, ABlockOfTwoLeavesOfDifferentSizesIsReadForNone) {
    commitIndex(file, [](session::Session&, session::State&, Node& root) {
        std::vector<Node*> leaves;
        const auto collect = [&](auto&& self, Node& node) -> void {
            if (node.isLeaf())
                leaves.push_back(&node);
            for (Node& child : node.children)
                self(self, child);
        };
        collect(collect, root);
        const auto other = std::find_if(leaves.begin(), leaves.end(), [&](const Node* leaf) {
            return leaf->ownCount < leaves[0]->ownCount;
        });
        ASSERT_NE(other, leaves.end());
        (*other)->attributes = leaves[0]->attributes;
    });
    EXPECT_TRUE(isDamage(reading()));
}

TEST_F(HostileIndex, NodesAndRootsOfLaterTransactionsAreNamed) {
    commitChanged(
        file, [](session::State& state, Node& leaf) { leaf.revision = state.transaction.id + 1; });
    expectFault(Fault::Kind::Index, "by a later transaction");
    renew();
    rewriteSnapshot(file, 2,
                    [](std::string& root) { replace(root, "\"parent\":1", "\"parent\":2"); });
    expectFault(Fault::Kind::Root, "of another transaction");
}

TEST_F(HostileIndex, TwoAttributesOfOneNumberAreDamage) {
    commitIndex(file, [](session::Session&, session::State& state, Node&) {
        state.attributes.all().back().uid = state.attributes.all().front().uid;
        state.attributesBlob = {};
    });
    EXPECT_TRUE(isDamage(outcomeOf([&] { session::Session(file, {}, "test"); })));
}

TEST_F(HostileIndex, PointsThatAreNotInTheLeavesAreInNoReport) {
    commitIndex(file, [](session::Session&, session::State& state, Node&) { ++state.pointCount; });
    session::Session session(file, {}, "test");
    for (const std::uint8_t format : {1, 2, 3, 4})
        EXPECT_TRUE(isDamage(outcomeOf([&] { (void)report::inspect(session, format); })));
    EXPECT_EQ(report::inspect(session, 5).rfind("{\"fault_count\":1,", 0), 0u);
}

TEST_F(HostileIndex, APageThatTwoNodesHaveIsNamed) {
    commitIndex(file, [](session::Session& session, session::State& state, Node& root) {
        Node& node = inner(root);
        node.childPage = session.blobs().add(index::encodePage(node.children));
        node.children.clear();
        Node twin = node;
        twin.id = state.nextNodeId++;
        root.children.back() = twin;
    });
    expectFault(Fault::Kind::Index, "another place");
}

TEST_F(HostileIndex, MorePointsThanANodeCanHaveAreDamageBeforeThereIsRoomMadeForThem) {
    commitIndex(file, [](session::Session&, session::State& state, Node& root) {
        Node* node = &root;
        std::vector<Node*> path;
        while (!node->isLeaf()) {
            path.push_back(node);
            node = &node->children[0];
        }
        const std::uint64_t more = std::numeric_limits<std::uint32_t>::max() - node->ownCount;
        node->ownCount += more;
        node->totalCount += more;
        for (Node* above : path)
            above->totalCount += more;
        state.pointCount += more;
        for (index::AttributeData& data : node->attributes)
            for (index::ElementData& element : data.elements) {
                element.block = {};
                element.statistics.maximum = element.statistics.minimum;
            }
    });
    expectFault(Fault::Kind::Index, "more points than a node can have");
    EXPECT_TRUE(isDamage(reading()));
    EXPECT_TRUE(isDamage(updating()));
    EXPECT_TRUE(isDamage(inserting()));
}

// Pages of like nodes are a hundredth of their size in the file.
TEST_F(HostileIndex, PagesAreForgottenByWhatTheyTakeInMemory) {
    std::vector<BlobRef> pages;
    commitIndex(file, [&](session::Session& session, session::State&, Node& root) {
        Node leaf = inner(root).children[0];
        for (std::uint32_t i = 0; i < 3; ++i) {
            leaf.revision = i + 1;
            pages.push_back(session.blobs().add(index::encodePage(index::Page(5000, leaf))));
        }
    });
    session::Session session(file, {16u << 20}, "test");
    const index::PageReader read = session.blobs().pageReader();
    const std::weak_ptr<const index::Page> first = read(pages[0]);
    for (const BlobRef& page : pages)
        (void)read(page);
    EXPECT_TRUE(first.expired());
}

// Each node claims as many below it as the page could hold.
TEST_F(HostileIndex, APageThatClaimsMoreNodesThanFitInMemoryIsDamageAtOnce) {
    Bytes plain;
    ByteWriter out(plain);
    out.varint(1);
    for (std::uint32_t id = 1; id <= 100; ++id) {
        out.varint(id);
        out.number(static_cast<std::uint8_t>(id));
        out.number<std::uint8_t>(1);
        out.varint(1);
        for (int i = 0; i < 4; ++i)
            out.number<std::uint64_t>(0);
        for (const std::uint64_t number : {1u, 0u, 0u, 1'500'000u})
            out.varint(number);
    }
    plain.resize(64u << 20);
    Bytes packed(ZSTD_compressBound(plain.size()));
    packed.resize(ZSTD_compress(packed.data(), packed.size(), plain.data(), plain.size(), 1));
    try {
        (void)index::decodePage(packed);
        ADD_FAILURE() << "it was read";
    } catch (const Failure& failure) {
        EXPECT_EQ(failure.code(), ErrorCode::Damaged);
        EXPECT_NE(failure.details().find("memory"), std::string::npos) << failure.details();
    }
}

TEST_F(HostileIndex, DataBehindTheLastBlobIsNamedAndNotDeleted) {
    {
        store::Connection connection(file, SQLITE_OPEN_READWRITE);
        store::History history = store::readHistory(connection);
        for (const std::uint32_t id : history.kept) {
            const std::string root = store::readRoot(connection, id);
            store::removeSnapshot(connection, id);
            store::putSnapshot(connection, id, 1, root);
        }
        history.lastBlob = 1;
        store::writeHistory(connection, history);
    }
    expectFault(Fault::Kind::Root, "behind the last");
    session::Session session(file, {}, "test");
    const std::uint64_t blobs = session.history().blobCount();
    EXPECT_TRUE(isDamage(outcomeOf([&] { session.begin("change", "test", "", ""); })));
    EXPECT_EQ(session.history().blobCount(), blobs);
    EXPECT_EQ(readAll(session).size(), 3500u);
}

TEST_F(HostileIndex, AHistoryThatEndsBeforeTheDataOfItsTransactionsIsDamage) {
    {
        store::Connection connection(file, SQLITE_OPEN_READWRITE);
        store::History history = store::readHistory(connection);
        --history.lastBlob;
        store::writeHistory(connection, history);
    }
    EXPECT_TRUE(isDamage(outcomeOf([&] { session::Session(file, {}, "test"); })));
}

TEST_F(HostileIndex, AHistoryWithoutRoomForAnotherTransactionIsNotContinued) {
    {
        store::Connection connection(file, SQLITE_OPEN_READWRITE);
        store::History history = store::readHistory(connection);
        history.lastBlob = std::int64_t(1) << 60;
        store::writeHistory(connection, history);
    }
    EXPECT_TRUE(isDamage(outcomeOf([&] {
        session::Session session(file, {}, "test");
        session.begin("change", "test", "", "");
        query::commit(session);
    })));
    session::Session session(file, {}, "test");
    EXPECT_EQ(readAll(session).size(), 3500u);
}

TEST_F(HostileIndex, RootsThatNobodyCanHaveWrittenAreDamage) {
    struct Case {
        const char* before;
        std::string after;
    };
    const Case cases[] = {
        {"\"note\"", "\"\""},
        {"\"note\"", "\"" + std::string(256, 'n') + "\""},
        {"\"note\"", "\"no\\u0000te\""},
        {"\"mode\":1", "\"mode\":7"},
        {"\"size\":0", "\"size\":100"},
        {"\"next_attribute\":4", "\"next_attribute\":3"},
    };
    for (const Case& one : cases) {
        SCOPED_TRACE(one.after);
        renew();
        const auto change = [&](std::string& root) { replace(root, one.before, one.after); };
        rewriteSnapshot(file, 2, change);
        expectFault(std::string_view(one.before) == "\"next_attribute\":4"
                        ? Fault::Kind::AttributeTable
                        : Fault::Kind::Root);
        rewriteSnapshot(file, 3, change);
        EXPECT_TRUE(isDamage(outcomeOf([&] { session::Session(file, {}, "test"); })));
    }
}

TEST(HostilePage, NodesBelowEachOtherWithoutEndAreRefused) {
    const auto chain = [](int depth) {
        Node node;
        node.id = 1;
        node.last = 1;
        for (int i = 0; i < depth; ++i) {
            Node above;
            above.id = 1;
            above.last = 1;
            above.children.push_back(std::move(node));
            node = std::move(above);
        }
        return index::encodePage({node});
    };
    EXPECT_EQ(outcomeOf([&] { (void)index::decodePage(chain(100)); }).text, "");
    EXPECT_EQ(outcomeOf([&] { (void)index::decodePage(chain(1000)); }).code, ErrorCode::Damaged);
}

TEST(HostilePage, AttributesOutOfOrderAndNodesWithoutPointsAreRefused) {
    Node node;
    node.id = 1;
    node.last = 7;
    node.attributes = {{2, 1, {}}, {1, 1, {}}};
    EXPECT_EQ(outcomeOf([&] { (void)index::decodePage(index::encodePage({node})); }).code,
              ErrorCode::Damaged);
    node.attributes[1].uid = 3;
    EXPECT_EQ(outcomeOf([&] { (void)index::decodePage(index::encodePage({node})); }).text, "");

    std::vector<Node> children(2);
    for (Node& child : children) {
        child.level = 1;
        child.ownCount = child.totalCount = 5;
    }
    children[0].last = 3;
    children[1].first = 4;
    children[1].last = 7;
    node.totalCount = 10;
    node.children = children;
    EXPECT_EQ(outcomeOf([&] { index::requireTree(node, children); }).text, "");
    children[1].totalCount = children[1].ownCount = 0;
    node.totalCount = 5;
    EXPECT_EQ(outcomeOf([&] { index::requireTree(node, children); }).code, ErrorCode::Damaged);
}

}  // namespace
}  // namespace tarvo::engine
