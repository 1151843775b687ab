// The check of a whole file: each kind of damage is named by what it hits, and nothing else is.
#include "tests/engine/hostile.h"

#include "engine/query/commit.h"
#include "engine/report/check.h"
#include "engine/report/report.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <fstream>
#include <optional>
#include <set>
#include <sstream>
#include <thread>

namespace tarvo::engine {
namespace {

using namespace testing;
using report::Fault;
using report::Findings;

class CheckTest : public ::testing::Test {
protected:
    // Transactions 2 (points, items, levels of detail), 3 (an item) and 4 (points).
    CheckTest() {
        session::CreateSettings create = settings(1, 100);
        create.chunkSizeLod = 20;
        session::Session::create(file, create, "test", amplitudeOnly(), {{"first", "[1]"}});
        session::Session session(file, {}, "test");
        session.begin("points", "test", "", "");
        insert(session, somePoints(3000, 1));
        session.metaData().set("note", "{\"text\":\"a note\"}");
        query::commit(session, {}, {});
        session.begin("item", "test", "", "");
        session.metaData().set("later", "[2]");
        query::commit(session);
        session.begin("more", "test", "", "");
        insert(session, somePoints(50, 2));
        query::commit(session, {}, {});
    }

    Findings check() {
        session::Session session(file, {}, "test");
        return report::check(session);
    }
    session::State current() {
        session::Session session(file, {}, "test");
        return *session.state();
    }
    // Some leaf of the current state that has blocks of its own for both attributes.
    index::Node someLeaf() {
        session::Session session(file, {}, "test");
        const auto state = session.state();
        const index::Node root = session.blobs().rootNode(*state);
        for (index::TreeCursor at(root, session.blobs().pageReader()); at.node(); at.enter())
            if (at.node()->isLeaf() && block(*at.node(), *state, "amplitude", 0) &&
                block(*at.node(), *state, "xyz", 1))
                return *at.node();
        return {};
    }
    static BlobRef block(const index::Node& node, const session::State& state,
                         const std::string& name, std::size_t element) {
        const auto index = static_cast<std::size_t>(state.attributes.find(name));
        const index::AttributeData* data = node.find(state.attributes[index].uid);
        return data ? data->elements[element].block : BlobRef();
    }
    // Inverts a byte in the file, behind the library's back.
    void damage(const BlobRef& reference, std::uint32_t at = 0) {
        const std::string blob = std::to_string(reference.blob);
        const std::string before = std::to_string(reference.offset + at);
        runSql(file,
               ("UPDATE blob SET data = CAST(substr(data, 1, " + before +
                ") || CASE WHEN substr(data, " + before + " + 1, 1) = x'41' THEN x'42' " +
                "ELSE x'41' END || substr(data, " + before + " + 2) AS BLOB) WHERE id = " + blob)
                   .c_str());
    }
    // The only fault of the file.
    Fault onlyFault() {
        const Findings findings = check();
        EXPECT_EQ(findings.faultCount, 1u);
        return findings.faults.empty() ? Fault() : findings.faults[0];
    }
    void commitChanged(const std::function<void(session::State&, index::Node& leaf)>& change) {
        testing::commitChanged(file, change);
    }

    TemporaryFolder folder;
    const std::string file = folder.file("a.qrbx");
};

TEST_F(CheckTest, FindsNothingInASoundFileAndReadsSharedBlobsOnce) {
    const Findings before = check();
    EXPECT_EQ(before.faultCount, 0u);
    EXPECT_EQ(before.transactions, 4u);
    EXPECT_EQ(before.leftOut, 0u);
    EXPECT_GE(before.points, 3050u);
    EXPECT_GT(before.blobs, 30u);
    session::Session session(file, {}, "test");
    session.begin("item", "test", "", "");
    session.metaData().set("note", "[3]");
    query::commit(session);
    // Its item and its entry; the points and pages are those of the others.
    const Findings after = check();
    EXPECT_EQ(after.faultCount, 0u);
    EXPECT_EQ(after.points, before.points);
    EXPECT_EQ(after.blobs, before.blobs + 2);
    EXPECT_LT(after.bytes, before.bytes + 3000);
    // Neither a pending transaction nor what it left is a fault.
    session.begin("pending", "test", "", "");
    insert(session, somePoints(100, 5));
    (void)readAll(session);
    EXPECT_EQ(report::check(session).transactions, 5u);
    EXPECT_EQ(report::check(session).faultCount, 0u);
    session.rollback();
    EXPECT_EQ(report::check(session).faultCount, 0u);
}

TEST_F(CheckTest, NamesAnItemThatIsDamagedOrMissing) {
    const session::State state = current();
    damage(state.metaData.at("note").value, 3);
    Fault fault = onlyFault();
    EXPECT_EQ(fault.kind, Fault::Kind::MetaDataItem);
    EXPECT_EQ(fault.name, "note");
    EXPECT_EQ(fault.transaction, 4u);
    EXPECT_NE(fault.text.find("checksum"), std::string::npos) << fault.text;
    runSql(file,
           ("DELETE FROM blob WHERE id = " + std::to_string(state.metaData.at("note").value.blob))
               .c_str());
    fault = onlyFault();
    EXPECT_EQ(fault.name, "note");
    EXPECT_NE(fault.text.find("missing"), std::string::npos) << fault.text;
}

TEST_F(CheckTest, NamesADamagedChangelogAndGoesOn) {
    damage(current().changelog, 5);
    damage(current().metaData.at("later").value);
    const Findings findings = check();
    ASSERT_EQ(findings.faultCount, 2u);
    std::set<Fault::Kind> kinds;
    for (const Fault& fault : findings.faults)
        kinds.insert(fault.kind);
    EXPECT_EQ(kinds, (std::set<Fault::Kind>{Fault::Kind::Changelog, Fault::Kind::MetaDataItem}));
    EXPECT_EQ(findings.transactions, 4u);
}

TEST_F(CheckTest, NamesTheTransactionWhoseRootIsDamaged) {
    runSql(file, "UPDATE snapshot SET root = root || ' ' WHERE id = 2");
    const Fault fault = onlyFault();
    EXPECT_EQ(fault.kind, Fault::Kind::Root);
    EXPECT_EQ(fault.transaction, 2u);
    // The current one keeps the file from being opened: the error says which it is.
    runSql(file, "UPDATE snapshot SET root = root || ' ' WHERE id = 4");
    EXPECT_NE(outcomeOf([&] { check(); }).text.find("transaction 4"), std::string::npos);
}

TEST_F(CheckTest, NamesTheTransactionWhoseDefinitionsAreDamaged) {
    session::Session session(file, {}, "test");
    session.begin("attribute", "test", "", "");
    session.addAttribute(record("extra", 0, 9));
    query::commit(session);
    damage(session.state()->attributesBlob, 9);
    EXPECT_NE(outcomeOf([&] { check(); }).text.find("attribute table of transaction 5"),
              std::string::npos);
    session.restore(4);
    const Fault fault = onlyFault();
    EXPECT_EQ(fault.kind, Fault::Kind::AttributeTable);
    EXPECT_EQ(fault.transaction, 5u);
}

TEST_F(CheckTest, NamesNodeAttributeAndElementOfADamagedBlock) {
    const index::Node leaf = someLeaf();
    ASSERT_NE(leaf.id, 0u);
    const session::State state = current();
    damage(block(leaf, state, "amplitude", 0), 2);
    Fault fault = onlyFault();
    EXPECT_EQ(fault.kind, Fault::Kind::Block);
    EXPECT_EQ(fault.name, "amplitude");
    EXPECT_EQ(fault.element, 0u);
    EXPECT_EQ(fault.node, leaf.id);
    damage(block(leaf, state, "xyz", 1), 1);
    const Findings findings = check();
    ASSERT_EQ(findings.faultCount, 2u);
    EXPECT_TRUE(std::any_of(findings.faults.begin(), findings.faults.end(), [&](const Fault& f) {
        return f.name == "xyz" && f.element == 1u && f.node == leaf.id;
    }));
}

TEST_F(CheckTest, NamesTheNodeBelowWhichAPageIsDamaged) {
    session::Session session(file, {}, "test");
    session.begin("many", "test", "", "");
    insert(session, somePoints(40'000, 3));
    query::commit(session);
    const index::Node root = session.blobs().rootNode(*session.state());
    std::uint32_t parent = 0;
    for (index::TreeCursor at(root, session.blobs().pageReader()); at.node(); at.enter())
        if (at.node()->childPage) {
            parent = at.node()->id;
            damage(at.node()->childPage, 7);
            break;
        }
    ASSERT_NE(parent, 0u);
    const Fault fault = onlyFault();
    EXPECT_EQ(fault.kind, Fault::Kind::Index);
    EXPECT_EQ(fault.node, parent);
    EXPECT_EQ(fault.transaction, 5u);
}

TEST_F(CheckTest, FindsNodesThatContradictTheirPoints) {
    const auto element = [](index::Node& leaf, const session::State& state,
                            const char* name) -> index::ElementData& {
        const auto index = static_cast<std::size_t>(state.attributes.find(name));
        for (index::AttributeData& data : leaf.attributes)
            if (data.uid == state.attributes[index].uid)
                return data.elements[0];
        throw Failure(ErrorCode::NotFound, name);
    };
    struct Case {
        const char* what;
        std::function<void(session::State&, index::Node&)> change;
        Fault::Kind kind;
        const char* name;
    };
    const Case cases[] = {
        {"least value",
         [&](auto& s, auto& leaf) { ++element(leaf, s, "amplitude").statistics.minimum; },
         Fault::Kind::Block, "amplitude"},
        {"greatest value",
         [&](auto& s, auto& leaf) { ++element(leaf, s, "amplitude").statistics.maximum; },
         Fault::Kind::Block, "amplitude"},
        {"number of points", [&](auto&, auto& leaf) { ++leaf.totalCount, ++leaf.ownCount; },
         Fault::Kind::Block, "xyz"},
        {"no block", [&](auto& s, auto& leaf) { element(leaf, s, "amplitude").block = {}; },
         Fault::Kind::Index, "amplitude"},
        {"keys", [&](auto&, auto& leaf) { leaf.first = leaf.last; }, Fault::Kind::Block, "xyz"},
        {"node number", [&](auto& s, auto& leaf) { leaf.id = s.nextNodeId; }, Fault::Kind::Index,
         ""},
        {"same number", [&](auto&, auto& leaf) { leaf.id = 1; }, Fault::Kind::Index, ""},
        {"ids not given", [&](auto& s, auto&) { s.nextPointId = 2; }, Fault::Kind::Block,
         "tarvo.id"},
    };
    for (const Case& one : cases) {
        SCOPED_TRACE(one.what);
        {
            session::Session session(file, {}, "test");
            if (session.current() != 4)
                session.restore(4);
        }
        const std::uint64_t before = check().faultCount;
        std::uint32_t node = 0;
        commitChanged([&](session::State& state, index::Node& leaf) {
            one.change(state, leaf);
            node = leaf.id;
        });
        session::Session session(file, {}, "test");
        const std::uint32_t wrong = session.current();
        const Findings findings = report::check(session);
        EXPECT_GT(findings.faultCount, before);
        EXPECT_TRUE(
            std::any_of(findings.faults.begin(), findings.faults.end(), [&](const Fault& f) {
                return f.transaction == wrong && f.kind == one.kind && f.name == one.name &&
                       (f.node == node || std::string_view(one.name) == "tarvo.id");
            }));
        session.restore(4);
        session.history().discard({wrong});
    }
    EXPECT_EQ(check().faultCount, 0u);
}

TEST_F(CheckTest, FindsCountsAndIdsThatDoNotAddUp) {
    commitChanged([](session::State& state, index::Node&) { ++state.pointCount; });
    session::Session session(file, {}, "test");
    EXPECT_GE(report::check(session).faultCount, 1u);
    session.restore(4);
    session.history().discard({5});
    commitChanged([](session::State&, index::Node& leaf) { leaf.totalCount += 1; });
    const Findings findings = report::check(session);
    EXPECT_GE(findings.faultCount, 1u);
    for (const Fault& fault : findings.faults)
        EXPECT_EQ(fault.transaction, 6u);
}

// Whichever page of the container is lost: what was found before and behind it is told.
TEST_F(CheckTest, GoesOnWherePagesOfTheContainerAreLost) {
    const index::Node leaf = someLeaf();
    damage(block(leaf, current(), "amplitude", 0), 2);
    std::stringstream whole;
    whole << std::ifstream(file, std::ios::binary).rdbuf();
    const std::string bytes = whole.str();
    const auto pageSize = static_cast<std::size_t>(static_cast<unsigned char>(bytes[16]) << 8 |
                                                   static_cast<unsigned char>(bytes[17]));
    int opened = 0;
    int ofContainer = 0;
    for (std::size_t page = pageSize; page + pageSize <= bytes.size(); page += pageSize) {
        SCOPED_TRACE(page / pageSize + 1);
        std::string damaged = bytes;
        std::fill_n(damaged.begin() + static_cast<std::ptrdiff_t>(page), pageSize, '\0');
        std::ofstream(file, std::ios::binary | std::ios::trunc) << damaged;
        std::optional<session::Session> session;
        if (!outcomeOf([&] {
                 session.emplace(file, session::OpenSettings(), "test");
             }).text.empty())
            continue;
        ++opened;
        const Findings findings = report::check(*session);
        EXPECT_GE(findings.faultCount, 1u);
        EXPECT_FALSE(findings.unreached);
        for (const Fault& fault : findings.faults)
            ofContainer += fault.kind == Fault::Kind::Container;
    }
    EXPECT_GT(opened, 3);
    EXPECT_GT(ofContainer, 0);
}

// Where a page's free space begins: reading goes round it, but the next change would be written
// over what is there.
TEST_F(CheckTest, FindsPagesThatOnlyTheNextChangeWouldTrip) {
    std::stringstream whole;
    whole << std::ifstream(file, std::ios::binary).rdbuf();
    const std::string bytes = whole.str();
    constexpr std::size_t pageSize = 8192;
    constexpr char leafOfTable = 13;
    int tried = 0;
    for (std::size_t page = pageSize; page + pageSize <= bytes.size(); page += pageSize) {
        const std::uint8_t high = static_cast<std::uint8_t>(bytes[page + 5]);
        if (bytes[page] != leafOfTable || high >= 30)
            continue;
        ++tried;
        std::string damaged = bytes;
        damaged[page + 5] = static_cast<char>(high + 1);
        std::ofstream(file, std::ios::binary | std::ios::trunc) << damaged;
        const Findings findings = check();
        ASSERT_GE(findings.faultCount, 1u) << page;
        EXPECT_EQ(findings.faults.back().kind, Fault::Kind::Container);
        EXPECT_EQ(findings.faults.back().transaction, 0u);
        EXPECT_FALSE(findings.faults.back().details.empty());
    }
    EXPECT_GT(tried, 0);
}

TEST_F(CheckTest, ListsTheFirstThousandFaultsAndCountsAll) {
    session::Session session(file, {}, "test");
    session.begin("items", "test", "", "");
    for (int i = 0; i < 1500; ++i)
        session.metaData().set("item " + std::to_string(i), std::to_string(i + 1000));
    query::commit(session);
    runSql(file, "UPDATE blob SET data = x'31' WHERE length(data) = 4");
    const Findings findings = report::check(session);
    EXPECT_EQ(findings.faultCount, 1500u);
    EXPECT_EQ(findings.faults.size(), report::listedFaults);
}

TEST_F(CheckTest, TakesNothingForDamageThatIsDiscardedMeanwhile) {
    std::atomic<bool> done{false};
    std::thread other([&] {
        session::Session session(file, {}, "test");
        for (int i = 0; i < 15; ++i) {
            session.begin("made", "test", "", "");
            insert(session, somePoints(400, static_cast<std::uint32_t>(i)));
            query::commit(session);
            session.begin("next", "test", "", "");
            session.metaData().set("later", std::to_string(i));
            query::commit(session);
            session.history().finalize();
            session.history().vacuum();
        }
        done = true;
    });
    session::Session session(file, {}, "test");
    std::uint64_t checks = 0;
    do {
        const Findings findings = report::check(session);
        ++checks;
        for (const Fault& fault : findings.faults)
            ADD_FAILURE() << fault.transaction << " " << fault.text << "\n" << fault.details;
    } while (!done);
    other.join();
    EXPECT_GT(checks, 0u);
}

TEST_F(CheckTest, ReadsPagesFromTheFileWhateverWasReadBefore) {
    const std::string many = folder.file("many.qrbx");
    session::Session::create(many, settings(1, 1), "test", amplitudeOnly());
    session::Session session(many, {}, "test");
    commitPoints(session, somePoints(3000, 1));
    (void)readAll(session);
    const index::Node root = session.blobs().rootNode(*session.state());
    BlobRef page;
    for (index::TreeCursor at(root, session.blobs().pageReader()); at.node() && !page; at.enter())
        page = at.node()->childPage;
    ASSERT_TRUE(page);
    runSql(many,
           ("UPDATE blob SET data = zeroblob(length(data)) WHERE id = " + std::to_string(page.blob))
               .c_str());
    EXPECT_GT(report::check(session).faultCount, 0u);
    EXPECT_EQ(outcomeOf([&] { (void)readAll(session); }).code, ErrorCode::Damaged);
}

TEST(CheckReport, WritesFindingsMemberByMember) {
    const char* const kinds[] = {"root",  "attribute table", "metadata item", "changelog",
                                 "index", "block",           "container"};
    Findings findings;
    findings.transactions = 2;
    findings.blobs = 3;
    findings.points = 4;
    findings.bytes = 5;
    findings.leftOut = 6;
    findings.unreached = 7;
    EXPECT_EQ(report::checkReport(findings),
              R"({"fault_count":0,"faults":[],"transactions":2,"left_out":6,"blobs":3,"points":4,)"
              R"("bytes":5,"unreached_blobs":7})");
    findings.unreached = {};
    std::string expected;
    for (int kind = 0; kind < 7; ++kind) {
        Fault fault;
        fault.kind = static_cast<Fault::Kind>(kind);
        findings.add(fault);
        expected += std::string(kind == 0 ? "" : ",") + R"({"kind":")" + kinds[kind] +
                    R"(","text":"","details":""})";
    }
    findings.add({Fault::Kind::MetaDataItem, 9, "no\x80te", {}, 0, "te\xfft", "de\xc0tails"});
    findings.add({Fault::Kind::Block, 8, "xyz", 0, 12, "t", "d"});
    findings.add({Fault::Kind::Index, 8, "", 2, 1, "", ""});
    EXPECT_EQ(report::checkReport(findings),
              R"({"fault_count":10,"faults":[)" + expected +
                  ",{\"transaction\":9,\"kind\":\"metadata item\",\"item\":\"no\ufffdte\","
                  "\"text\":\"te\ufffdt\",\"details\":\"de\ufffdtails\"}"
                  R"(,{"transaction":8,"kind":"block","attribute":"xyz","element":0,"node":12,)"
                  R"("text":"t","details":"d"})"
                  R"(,{"transaction":8,"kind":"index","element":2,"node":1,"text":"","details":""})"
                  R"(],"transactions":2,"left_out":6,"blobs":3,"points":4,"bytes":5})");
}

}  // namespace
}  // namespace tarvo::engine
