// What a transaction that is given up leaves in the file.
#include "tests/engine/store.h"

#include "engine/report/check.h"
#include "engine/store/connection.h"

#include <fstream>
#include <iterator>

namespace tarvo::engine {
namespace {

using namespace testing;

class Rollback : public Store {
protected:
    // More than a writer keeps in memory: the first batch goes into the file.
    static void addBatch(session::Session& session) {
        const Bytes blob = noise(megabyte, 1);
        for (int i = 0; i < 20; ++i)
            session.blobs().add(blob);
    }
    std::uint64_t blobsInFile() const {
        session::Session session(m_file, {}, "test");
        return session.history().blobCount();
    }
    std::string bytes() const {
        std::ifstream stream(m_file, std::ios::binary);
        return {std::istreambuf_iterator<char>(stream), {}};
    }
    void expectOnly(std::uint64_t blobs) {
        EXPECT_EQ(blobsInFile(), blobs);
        store::Connection connection(m_file, SQLITE_OPEN_READONLY);
        EXPECT_EQ(connection.pragma("SELECT count(*) FROM info"), 2) << "identity and history";
        EXPECT_EQ(m_folder.entries(), 1u) << m_folder.names();
        session::Session session(m_file, {}, "test");
        const report::Findings findings = report::check(session);
        EXPECT_EQ(findings.unreached, 0u);
        EXPECT_EQ(findings.faultCount, 0u);
        EXPECT_EQ(readAll(session), m_before);
    }
};

TEST_F(Rollback, LeavesNoneOfTheBlobsThatWereInTheFileAlready) {
    const std::uint64_t before = blobsInFile();
    std::uintmax_t size = 0;
    for (int i = 0; i < 3; ++i) {
        session::Session session(m_file, {}, "test");
        session.begin("large", "test", "", "");
        addBatch(session);
        EXPECT_GT(blobsInFile(), before + 15) << "nothing is staged";
        session.rollback();
        EXPECT_FALSE(session.pending());
        expectOnly(before);
        // The next one takes the room that this one left.
        if (i == 0)
            size = std::filesystem::file_size(m_file);
        EXPECT_LE(std::filesystem::file_size(m_file), size + megabyte);
    }
    expectUnchanged();
}

TEST_F(Rollback, IsWhatClosingADatabaseDoesWithAPendingTransaction) {
    const std::uint64_t before = blobsInFile();
    {
        session::Session session(m_file, {}, "test");
        session.begin("large", "test", "", "");
        addBatch(session);
    }
    expectOnly(before);
    expectUnchanged();
}

TEST_F(Rollback, OfASmallTransactionDoesNotTouchTheFile) {
    const std::string before = bytes();
    {
        session::Session session(m_file, {}, "test");
        session.begin("small", "test", "", "");
        insert(session, somePoints(500, 7));
        session.metaData().set("item", "1");
        session.addAttribute(record("later", 0, 3));
        EXPECT_EQ(readAll(session).size(), m_before.size() + 500);
        session.rollback();
        EXPECT_EQ(readAll(session), m_before);
        EXPECT_THROW(session.metaData().get("item"), Failure);
        EXPECT_THROW(countOf(session, "later == 0"), Failure);
    }
    EXPECT_TRUE(bytes() == before);
    expectUnchanged();
}

// Where readers keep a rollback from deleting them, or the writer was killed.
TEST_F(Rollback, ThatCouldNotDeleteItsBlobsLeavesThemToTheNextWriter) {
    const std::uint64_t before = blobsInFile();
    for (const bool commits : {false, true}) {
        OtherProcess killed([&](const auto&) -> int {
            session::Session session(m_file, {}, "test");
            session.begin("large", "test", "", "");
            addBatch(session);
            ::_exit(0);
        });
        EXPECT_EQ(killed.wait(), 0);
        EXPECT_GT(blobsInFile(), before + 15);
        session::Session session(m_file, {}, "test");
        EXPECT_GT(report::check(session).unreached, 15u);
        session.begin("next", "test", "", "");
        if (commits) {
            query::commit(session);
            EXPECT_EQ(report::check(session).unreached, 0u);
            store::Connection connection(m_file, SQLITE_OPEN_READONLY);
            EXPECT_EQ(connection.pragma("SELECT count(*) FROM info"), 2);
        } else {
            addBatch(session);
            session.rollback();
            expectOnly(before);
        }
    }
}

TEST_F(Rollback, ThenACommitHoldsOnlyWhatWasDoneAfterIt) {
    session::Session session(m_file, {}, "test");
    session.begin("given up", "test", "", "");
    insert(session, somePoints(300, 3));
    addBatch(session);
    session.rollback();
    commitPoints(session, somePoints(100, 4));
    EXPECT_EQ(readAll(session).size(), m_before.size() + 100);
    EXPECT_EQ(report::check(session).unreached, 0u);
    EXPECT_EQ(session.changelog().text().find("given up"), std::string::npos);
}

}  // namespace
}  // namespace tarvo::engine
