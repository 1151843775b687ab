// What the promises of the store rest on in the container: its settings, of each connection and of
// the file.
#include "tests/engine/store.h"

#include "engine/store/connection.h"

#include <gtest/gtest.h>

namespace tarvo::engine {
namespace {

using namespace testing;

std::string textOf(store::Connection& connection, const char* sql) {
    store::Statement statement(connection.handle, sql, connection.fileName);
    return statement.step() ? statement.text(0) : "";
}

int option(store::Connection& connection, int which) {
    int value = -1;
    sqlite3_db_config(connection.handle, which, -1, &value);
    return value;
}

TEST_F(Store, WritesDurablyAndReadsNoFeatureThatAHostileFileCouldUse) {
    for (const int flags : {SQLITE_OPEN_READWRITE, SQLITE_OPEN_READONLY}) {
        store::Connection connection(m_file, flags);
        connection.configure();
        // A commit is on the disk when it returns, its journal's end in the folder, too, before
        // what it has freed is cut off.
        EXPECT_EQ(textOf(connection, "PRAGMA journal_mode"), "delete");
        EXPECT_EQ(connection.pragma("PRAGMA synchronous"), 3);
        EXPECT_EQ(connection.pragma("PRAGMA fullfsync"), 0);
        // Blobs that are staged lock no reader out; what is deleted is not written first.
        EXPECT_EQ(connection.pragma("PRAGMA cache_spill"), 0);
        EXPECT_EQ(connection.pragma("PRAGMA secure_delete"), 0);
        EXPECT_EQ(connection.pragma("PRAGMA cache_size"), -4096);
        EXPECT_EQ(connection.pragma("PRAGMA mmap_size"), 0);
        EXPECT_EQ(connection.pragma("PRAGMA cell_size_check"), 1);
        EXPECT_EQ(connection.pragma("PRAGMA read_uncommitted"), 0);
        EXPECT_EQ(option(connection, SQLITE_DBCONFIG_DEFENSIVE), 1);
        for (const int off : {SQLITE_DBCONFIG_TRUSTED_SCHEMA, SQLITE_DBCONFIG_ENABLE_TRIGGER,
                              SQLITE_DBCONFIG_ENABLE_VIEW, SQLITE_DBCONFIG_DQS_DML,
                              SQLITE_DBCONFIG_DQS_DDL, SQLITE_DBCONFIG_ENABLE_LOAD_EXTENSION})
            EXPECT_EQ(option(connection, off), 0) << off;
        EXPECT_EQ(sqlite3_limit(connection.handle, SQLITE_LIMIT_LENGTH, -1), 512 << 20);
        EXPECT_EQ(sqlite3_limit(connection.handle, SQLITE_LIMIT_ATTACHED, -1), 0);
        EXPECT_LE(sqlite3_limit(connection.handle, SQLITE_LIMIT_EXPR_DEPTH, -1), 20);
        EXPECT_LE(sqlite3_limit(connection.handle, SQLITE_LIMIT_SQL_LENGTH, -1), 10'000);
    }
}

TEST_F(Store, MakesFilesOfTheFormThatIsDocumented) {
    store::Connection connection(m_file, SQLITE_OPEN_READONLY);
    EXPECT_EQ(connection.pragma("PRAGMA application_id"), 0x51524258);
    EXPECT_EQ(connection.pragma("PRAGMA user_version"), 2);
    EXPECT_EQ(connection.pragma("PRAGMA page_size"), 8192);
    EXPECT_EQ(connection.pragma("PRAGMA auto_vacuum"), 2);
    EXPECT_EQ(textOf(connection, "PRAGMA encoding"), "UTF-8");
    EXPECT_EQ(textOf(connection, "PRAGMA integrity_check"), "ok");
}

// A journal that stays, or another place for it, would take the file's repair away from it.
TEST_F(Store, WritesWithAJournalBesideTheFileThatIsGoneBehindTheCommit) {
    store::Container container(m_file);
    container.beginWriting();
    (void)container.add(noise(1000, 1));
    const std::string root = container.root(2);
    container.publish(3, root);
    EXPECT_EQ(m_folder.names(), "a.qrbx ");
    EXPECT_EQ(container.current(), 3u);
    EXPECT_EQ(container.root(3), root);
}

TEST_F(Store, MeasuresATransactionByReferencesThatAreChecked) {
    session::Session session(m_file, {}, "test");
    session.begin("item", "test", "", "");
    session.metaData().set("item", std::string(500, 'x'));
    query::commit(session);
    const std::uint64_t blob = session.state()->metaData.at("item").value.blob;
    session.restore(2);
    const std::uint64_t size = session.history().size({3});
    EXPECT_GT(size, 500u);
    const std::string where = " WHERE id = " + std::to_string(blob);
    runSql(m_file, ("UPDATE blob SET data = CAST(substr(data, 1, 499) AS BLOB)" + where).c_str());
    EXPECT_EQ(session.history().size({3}), size);
    runSql(m_file, ("DELETE FROM blob" + where).c_str());
    EXPECT_EQ(session.history().size({3}), size);
}

TEST_F(Store, TellsTheBytesThatTheFileLosesWithATransaction) {
    session::Session session(m_file, {}, "test");
    session.begin("item", "test", "", "");
    session.metaData().set("item", std::string(5000, 'x'));
    query::commit(session);
    const std::uint64_t without = session.history().size({3});
    session.begin("again", "test", "", "");
    query::commit(session);
    // Its item is kept by the next one.
    EXPECT_LT(session.history().size({3}), without - 4999);
    EXPECT_GT(session.history().size({3, 4}),
              session.history().size({3}) + session.history().size({4}) + 4999);
    EXPECT_EQ(session.history().size({}), 0u);
    EXPECT_EQ(outcomeOf([&] { session.history().size({9}); }).code, ErrorCode::NotFound);
}

}  // namespace
}  // namespace tarvo::engine
