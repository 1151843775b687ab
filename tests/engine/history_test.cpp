// The history of a file: changelog and signatures, transactions discarded, space given back.
#include "tests/engine/database.h"
#include "tests/engine/treecheck.h"

#include "engine/query/commit.h"
#include "engine/query/redefine.h"
#include "engine/query/remove.h"
#include "engine/query/update.h"

#include <gtest/gtest.h>

#include <sys/wait.h>
#include <unistd.h>
#include <algorithm>
#include <csignal>
#include <set>

namespace tarvo::engine {
namespace {

using namespace testing;

class History : public ::testing::Test {
protected:
    History() : m_file(m_folder.file("a.qrbx")) {
        session::Session::create(m_file, settings(1, 500), "test", amplitudeOnly());
        open();
    }
    void open() {
        m_session.reset();
        m_session = std::make_unique<session::Session>(m_file, session::OpenSettings{}, "test");
    }
    std::uint32_t addPoints(std::uint32_t count, int seed) {
        const std::uint32_t id = m_session->begin("points", "test", "", "");
        std::vector<Point> points;
        for (std::uint32_t i = 0; i < count; ++i)
            points.push_back({double((i * 7919u + static_cast<unsigned>(seed)) % 1999) - 999,
                              double((i * 104729u) % 1999) - 999, double(i % 100),
                              static_cast<std::uint16_t>(i * 31u % 65535)});
        insert(*m_session, points);
        query::commit(*m_session);
        return id;
    }
    std::vector<std::string> entries() {
        const std::string text = m_session->changelog().text();
        std::vector<std::string> result;
        for (std::size_t at = 0; at < text.size();) {
            const std::size_t next = text.find("\n[#", at);
            const std::size_t end = next == std::string::npos ? text.size() : next + 1;
            result.push_back(text.substr(at, end - at));
            at = end;
        }
        return result;
    }

    TemporaryFolder m_folder;
    std::string m_file;
    std::unique_ptr<session::Session> m_session;
    const session::Signer m_signer{1, {0xab, 0xcd}, {}};
};

TEST_F(History, IsToldByTheChangelogWithWhatEachTransactionChanged) {
    addPoints(10, 1);
    m_session->begin("many\nthings", "agent", "first line\r\nsecond line", "");
    insert(*m_session, {{1, 2, 3, 4}});
    m_session->addAttribute(record("quality", 0, 10));
    m_session->metaData().set("tarvo.device", "{}");
    m_session->metaData().sign("tarvo.device", m_signer);
    m_session->setLevelOfDetail(1, 30);
    m_session->changelog().append("by hand:\n[#99] not an entry\nSignature: abcdef");
    query::commit(*m_session);
    m_session->begin("forgotten", "agent", "", "");
    m_session->changelog().append("never seen");
    m_session->rollback();

    const std::vector<std::string> all = entries();
    ASSERT_EQ(all.size(), 3u);
    EXPECT_EQ(all[0].rfind("[#1] Database creation\n", 0), 0u) << all[0];
    EXPECT_NE(all[1].find("Points: inserted 10; now 10\n"), std::string::npos) << all[1];
    EXPECT_EQ(all[2].rfind("[#3] many things\n", 0), 0u) << all[2];
    for (const char* line :
         {"Agent: agent\n", "Comments: first line\n    second line\n",
          "Points: inserted 1; now 11\n", "Point attributes: added quality\n",
          "Metadata: added tarvo.device; signed tarvo.device\n",
          "Level of detail: thinout, size 30\n", "Message: by hand:\n    [ #99] not an entry\n"})
        EXPECT_NE(all[2].find(line), std::string::npos) << line << all[2];
    EXPECT_EQ(all[2].find("\nSignature:"), std::string::npos);
}

TEST_F(History, TellsEveryKindOfChange) {
    addPoints(10, 1);
    m_session->begin("made", "agent", "", "");
    m_session->addAttribute(record("kept", 0, 10));
    m_session->addAttribute(record("gone", 0, 10));
    m_session->metaData().set("changed", "1");
    m_session->metaData().set("gone", "1");
    m_session->metaData().set("signed", "1");
    m_session->metaData().sign("signed", m_signer);
    query::commit(*m_session);

    m_session->begin("everything", "agent", "", "");
    std::uint64_t ids[] = {1, 2, 3};
    const double values[] = {5, 6, 7};
    {
        query::UpdateQuery query(*m_session);
        query.bind("tarvo.id", QRB_DATA_TYPE_UINT64, ids, 8);
        query.bind("kept", QRB_DATA_TYPE_DOUBLE, values, 8);
        EXPECT_EQ(query.next(3), 3u);
    }
    {
        query::RemoveQuery query(*m_session);
        query.bind(QRB_DATA_TYPE_UINT64, ids, 8);
        EXPECT_EQ(query.next(2), 2u);
    }
    query::putAttribute(*m_session, record("kept", -5, 10));
    query::discardAttribute(*m_session, "amplitude");
    query::duplicateAttribute(*m_session, "kept", "copy");
    query::removeAttribute(*m_session, "gone");
    m_session->metaData().set("changed", "2");
    m_session->metaData().set("new", "2");
    m_session->metaData().remove("gone");
    m_session->metaData().sign("signed", {});
    m_session->setLevelOfDetail(2, 3);
    query::commit(*m_session);
    const std::string entry = entries().back();
    for (const char* line :
         {"Points: updated 3; removed 2; now 8\n",
          "Point attributes: added copy; redefined kept; removed gone\n",
          "Point attributes: discarded the values of amplitude\n",
          "Metadata: added new; changed changed; signature removed from signed; removed gone\n",
          "Level of detail: combine, size 3\n"})
        EXPECT_NE(entry.find(line), std::string::npos) << line << entry;

    // A definition whose values stay as they are, too.
    m_session->begin("title", "agent", "", "");
    schema::AttributeRecord titled = record("kept", -5, 10);
    titled.title = "Kept";
    query::putAttribute(*m_session, titled);
    query::commit(*m_session);
    EXPECT_NE(entries().back().find("Point attributes: redefined kept\n"), std::string::npos)
        << entries().back();

    // What changed nothing says so by silence.
    m_session->begin("nothing", "agent", "", "");
    query::commit(*m_session);
    for (const char* topic : {"Points:", "Point attributes:", "Metadata:", "Level", "Message:"})
        EXPECT_EQ(entries().back().find(topic), std::string::npos) << entries().back();
}

TEST_F(History, IsSignedSoThatEveryChangeOfAnEntryShows) {
    m_session->begin("signed", "agent", "comment", "");
    query::commit(*m_session, {}, m_signer);
    const std::string entry = entries().back();
    EXPECT_TRUE(session::verifyEntry(entry, m_signer));
    EXPECT_TRUE(session::verifyEntry(entry, {}));
    EXPECT_FALSE(session::verifyEntry(entry, {1, {0xab}, {}}));
    EXPECT_FALSE(session::verifyEntry(entries().front(), {}));
    EXPECT_FALSE(session::verifyEntry(entries().front(), m_signer));
    for (std::size_t i = 0; i + 2 < entry.size(); ++i) {
        std::string changed = entry;
        changed[i] ^= 1;
        EXPECT_FALSE(session::verifyEntry(changed, m_signer)) << i;
    }
    for (const char* behind : {"approved by ...\n", "    approved\n", "Signature: \n", "x"})
        EXPECT_FALSE(session::verifyEntry(entry + behind, m_signer)) << behind;
    EXPECT_FALSE(session::verifyEntry(entry + "approved by ...", {}));
    EXPECT_TRUE(session::verifyEntry(entry + "\n\n \t", m_signer));
    session::Signer longer = m_signer;
    longer.key.push_back(0);
    EXPECT_FALSE(session::verifyEntry(entry, longer));
    // As an editor of another system keeps it.
    std::string windows;
    for (const char c : entry)
        windows += c == '\n' ? std::string("\r\n") : std::string(1, c);
    EXPECT_TRUE(session::verifyEntry(windows.substr(0, windows.size() - 2), m_signer));

    m_session->begin("without a key", "agent", "", "");
    EXPECT_THROW(query::commit(*m_session, {}, {1, {}, {}}), Failure);
    EXPECT_THROW(query::commit(*m_session, {}, {77, {1}, {}}), Failure);
    EXPECT_THROW(query::commit(*m_session, {}, {2, {}, {}}), Failure);
    EXPECT_TRUE(m_session->pending());
    // A signature that the caller's own device makes.
    const session::Signer device{2, {}, [](ByteSpan challenge, std::span<std::uint8_t> answer) {
                                     std::reverse_copy(challenge.begin(), challenge.end(),
                                                       answer.begin());
                                     return true;
                                 }};
    query::commit(*m_session, {}, device);
    EXPECT_TRUE(session::verifyEntry(entries().back(), device));
    EXPECT_FALSE(session::verifyEntry(entries().back(), m_signer));
}

// An item that is moved to another database or name, or put back as it was, is not signed there.
TEST_F(History, SignaturesOfItemsHoldWhereTheyWereMadeOnly) {
    const auto sign = [&](session::Session& session, const std::string& name) {
        session.begin("sign " + name, "agent", "", "");
        session.metaData().set(name, "{}");
        session.metaData().sign(name, m_signer);
        query::commit(session);
        EXPECT_TRUE(session.metaData().verify(name, m_signer));
        return session.state()->metaData.at(name).signature;
    };
    const std::string other = m_folder.file("b.qrbx");
    session::Session::create(other, settings(1, 500), "test");
    session::Session second(other, {}, "test");
    // The same transactions in both databases.
    while (second.current() < m_session->current()) {
        second.begin("", "agent", "", "");
        query::commit(second);
    }
    std::set<std::string> signatures{sign(*m_session, "a"), sign(second, "a"),
                                     sign(*m_session, "b"), sign(*m_session, "a")};
    EXPECT_EQ(signatures.size(), 4u);
    session::Signer longer = m_signer;
    longer.key.push_back(0);
    EXPECT_FALSE(m_session->metaData().verify("a", longer));
    // Kept in the file.
    session::Session again(m_file, {}, "test");
    EXPECT_TRUE(again.metaData().verify("a", m_signer));
    EXPECT_FALSE(again.metaData().verify("a", longer));
}

TEST_F(History, OfAnotherDatabaseCanBePutBefore) {
    const std::string other = m_folder.file("b.qrbx");
    session::Session::create(other, settings(1, 500), "test");
    std::string older;
    {
        session::Session session(other, {}, "test");
        session.begin("over there", "agent", "", "");
        query::commit(session, {}, m_signer);
        older = session.changelog().text();
    }
    m_session->begin("import", "agent", "", "");
    m_session->changelog().import(older);
    query::commit(*m_session);
    const std::vector<std::string> all = entries();
    ASSERT_EQ(all.size(), 4u);
    EXPECT_EQ(m_session->changelog().text().rfind(older, 0), 0u);
    EXPECT_TRUE(session::verifyEntry(all[1], m_signer));
    EXPECT_EQ(all[2].rfind("[#1] ", 0), 0u);
    EXPECT_EQ(all[3].rfind("[#2] import", 0), 0u);
}

TEST_F(History, OfAnotherDatabaseLeavesTheOwnEntriesInTheirOrder) {
    addPoints(10, 1);
    addPoints(10, 2);
    m_session->begin("third", "agent", "several\nlines\n[#9] no entry", "");
    m_session->metaData().set("item", "1");
    query::commit(*m_session, {}, m_signer);
    const std::string own = m_session->changelog().text();
    const std::string older = "[#1] Database creation\nof another database\n";
    m_session->begin("import", "agent", "", "");
    m_session->changelog().import(older);
    m_session->changelog().import("[#0] the oldest\n");
    query::commit(*m_session);
    addPoints(10, 3);
    const std::string all = m_session->changelog().text();
    EXPECT_EQ(all.rfind("[#0] the oldest\n\n" + older + "\n" + own + "\n[#5] import", 0), 0u)
        << all;
    EXPECT_EQ(entries().back().rfind("[#6] points", 0), 0u) << entries().back();
    open();
    EXPECT_EQ(m_session->changelog().text(), all);
    // Restored and rolled back, the file tells only what happened until then.
    m_session->restore(4);
    EXPECT_EQ(m_session->changelog().text(), own);
    m_session->begin("import", "agent", "", "");
    m_session->changelog().import(older);
    m_session->rollback();
    EXPECT_EQ(m_session->changelog().text(), own);
}

TEST_F(History, ThatIsDiscardedGivesItsSpaceBack) {
    const std::uint32_t first = addPoints(20'000, 1);
    const std::uint32_t second = addPoints(20'000, 2);
    const Points kept = readAll(*m_session);
    m_session->begin("remove", "test", "", "");
    query::removeAttribute(*m_session, "amplitude");
    query::commit(*m_session);
    const std::uint32_t last = m_session->current();

    EXPECT_THROW(m_session->history().discard({1}), Failure);
    EXPECT_THROW(m_session->history().discard({last}), Failure);
    EXPECT_THROW(m_session->history().discard({first, 99}), Failure);
    EXPECT_THROW(m_session->history().size({99}), Failure);
    EXPECT_EQ(m_session->history().transactions().size(), 4u);

    // Nothing is given back as long as it is needed.
    const std::uint64_t whole = m_session->fileSize();
    const std::uint64_t unneeded = m_session->history().unusedSize();
    m_session->history().vacuum();
    EXPECT_GT(m_session->fileSize(), whole * 9 / 10);
    EXPECT_NEAR(static_cast<double>(whole - m_session->fileSize()), static_cast<double>(unneeded),
                static_cast<double>(whole) / 20);
    m_session->restore(second);
    EXPECT_EQ(readAll(*m_session), kept);
    m_session->restore(last);

    const std::uint64_t packed = m_session->fileSize();
    const std::uint64_t both = m_session->history().size({first, second});
    EXPECT_GE(both, m_session->history().size({first}) + m_session->history().size({second}));
    EXPECT_GT(both, packed / 4);
    m_session->begin("pending", "test", "", "");
    EXPECT_THROW(m_session->history().discard({first}), Failure);
    EXPECT_THROW(m_session->history().finalize(), Failure);
    EXPECT_THROW(m_session->history().vacuum(), Failure);
    m_session->rollback();
    m_session->history().finalize();
    EXPECT_EQ(m_session->history().transactions(), (std::vector<std::uint32_t>{1, last}));
    EXPECT_THROW(m_session->restore(first), Failure);

    // It is told beforehand, and what a stopped clean-up has not given back, too.
    EXPECT_NEAR(static_cast<double>(m_session->history().unusedSize()), static_cast<double>(both),
                static_cast<double>(packed) / 20);
    int calls = 0;
    EXPECT_THROW(m_session->history().vacuum([&](int) { return ++calls < 3; }), Failure);
    EXPECT_NEAR(static_cast<double>(m_session->history().unusedSize()), static_cast<double>(both),
                static_cast<double>(packed) / 20);
    EXPECT_EQ(countOf(*m_session, ""), 40'000u);
    int before = -1;
    m_session->history().vacuum([&](int percent) {
        EXPECT_GE(percent, before);
        before = percent;
        return true;
    });
    EXPECT_EQ(before, 100);
    EXPECT_LT(m_session->history().unusedSize(), packed / 50);
    EXPECT_NEAR(static_cast<double>(m_session->fileSize()), static_cast<double>(packed - both),
                static_cast<double>(packed) / 20);
    open();
    EXPECT_EQ(countOf(*m_session, "xyz[2] < 50"), 20'000u);
}

TEST_F(History, SurvivesAKillWhileSpaceIsGivenBack) {
    for (const int end : {0, 10, 20, 45, 70, 95, 99}) {
        SCOPED_TRACE("killed at " + std::to_string(end) + " %");
        addPoints(5'000, end);
        m_session->begin("forgotten", "test", "", "");
        m_session->setLevelOfDetail(1, static_cast<std::uint32_t>(end));
        query::commit(*m_session);
        m_session->history().finalize();
        const Points kept = readAll(*m_session);
        const std::string log = m_session->changelog().text();
        m_session.reset();
        const ::pid_t child = ::fork();
        if (child == 0) {
            session::Session session(m_file, session::OpenSettings{0}, "test");
            session.history().vacuum([end](int percent) {
                if (percent >= end)
                    ::raise(SIGKILL);
                return true;
            });
            ::_exit(0);
        }
        ::waitpid(child, nullptr, 0);
        open();
        EXPECT_EQ(readAll(*m_session), kept);
        EXPECT_EQ(m_session->changelog().text(), log);
        TreeCheck(*m_session, kept.size()).run();
        m_session->history().vacuum();
        EXPECT_EQ(readAll(*m_session), kept);
    }
}

// Who begins goes on from what others have committed meanwhile, whatever was read before.
TEST_F(History, GoesOnFromWhatOthersHaveCommitted) {
    TemporaryFolder place;
    const std::string name = place.file("two.qrbx");
    session::Session::create(name, settings(1, 100), "test", amplitudeOnly());
    session::Session first(name, {}, "test");
    session::Session second(name, {}, "test");
    (void)first.state();
    for (int i = 0; i < 3; ++i)
        for (session::Session* const session : {&second, &first}) {
            session->begin("change", "test", "", "");
            session->metaData().set("item " + std::to_string(session->current()), "1");
            insert(*session, somePoints(10, 1));
            query::commit(*session);
        }
    EXPECT_EQ(first.state()->metaData.size(), 6u);
    EXPECT_EQ(second.state()->pointCount, 60u);
}

TEST_F(History, NeverGivesANumberTwice) {
    const std::uint32_t id = addPoints(10, 1);
    m_session->restore(1);
    m_session->history().discard({id});
    EXPECT_EQ(m_session->begin("again", "test", "", ""), id + 1);
    m_session->rollback();
    open();
    EXPECT_EQ(addPoints(10, 2), id + 1);
}

TEST_F(History, OfAMetadataItemKnowsWhetherItsSignatureHolds) {
    m_session->begin("sign", "test", "", "");
    m_session->metaData().set("item", "{\"a\": 1}");
    EXPECT_THROW(m_session->metaData().sign("other", m_signer), Failure);
    EXPECT_FALSE(m_session->metaData().verify("item", {}));
    m_session->metaData().sign("item", m_signer);
    query::commit(*m_session);
    open();
    EXPECT_TRUE(m_session->metaData().verify("item", m_signer));
    EXPECT_TRUE(m_session->metaData().verify("item", {}));
    EXPECT_FALSE(m_session->metaData().verify("item", {1, {9}, {}}));
    EXPECT_THROW(m_session->metaData().verify("other", m_signer), Failure);
    EXPECT_THROW(m_session->metaData().sign("item", m_signer), Failure) << "nothing is pending";
    m_session->begin("change", "test", "", "");
    EXPECT_THROW(m_session->metaData().sign("item", {2, {}, {}}), Failure);
    EXPECT_TRUE(m_session->metaData().verify("item", m_signer)) << "what failed changed nothing";
    m_session->metaData().set("item", "{\"a\": 2}");
    EXPECT_FALSE(m_session->metaData().verify("item", {})) << "another value needs a new signature";
    m_session->rollback();
    EXPECT_TRUE(m_session->metaData().verify("item", m_signer));
}

TEST_F(History, TakesMessagesUpToTheirLimitAndCommentsBeyondThatOfTitles) {
    m_session->begin("title", "agent", std::string(2 << 20, 'c'), "");
    for (int i = 0; i < 16; ++i)
        m_session->changelog().append(std::string(1 << 20, 'm'));
    EXPECT_THROW(m_session->changelog().append("m"), Failure);
    m_session->rollback();
}

TEST_F(History, IsSignedTheSameWithTheLineEndsOfAnySystem) {
    const auto signature = [this](const char* text) {
        return session::makeSignature(m_signer, {"kind", {"place"}, text, "name"});
    };
    for (const char* text : {"a\r\nb", "a\rb", "a\nb\r", "a\rb\r\n \t\r"})
        EXPECT_EQ(signature(text), signature("a\nb")) << text;
    EXPECT_NE(signature("ab"), signature("a\nb"));
    EXPECT_NE(signature("a\r\rb"), signature("a\nb"));
}

}  // namespace
}  // namespace tarvo::engine
