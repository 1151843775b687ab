// Who may write a file, and what its readers can rely on.
#include "tests/engine/store.h"
#include "tests/engine/killedwriter.h"

#include "engine/query/fill.h"
#include "engine/query/stat.h"
#include "engine/store/history.h"
#include "engine/store/writerlock.h"

#include <fcntl.h>
#include <fstream>
#include <set>
#include <thread>

namespace tarvo::engine {
namespace {

using namespace testing;

TEST_F(Store, HasOneWriterByWhateverNameTheFileGoes) {
    const std::string link = m_folder.file("link.qrbx");
    const std::string hard = m_folder.file("hard.qrbx");
    std::filesystem::create_symlink(m_file, link);
    std::filesystem::create_hard_link(m_file, hard);
    session::Session writer(m_file, {}, "test");
    writer.begin("first", "test", "", "");
    insert(writer, somePoints(100, 2));
    for (const std::string& name : {m_file, link, hard}) {
        session::Session second(name, {}, "test");
        EXPECT_EQ(outcomeOf([&] { second.begin("second", "test", "", ""); }).code, ErrorCode::Busy);
        EXPECT_EQ(outcomeOf([&] { second.history().vacuum(); }).code, ErrorCode::Busy);
        EXPECT_EQ(outcomeOf([&] { second.restore(1); }).code, ErrorCode::Busy);
        OtherProcess other([&](const auto&) {
            session::Session third(name, {}, "test");
            return outcomeOf([&] { third.begin("third", "test", "", ""); }).code == ErrorCode::Busy
                       ? 0
                       : 1;
        });
        EXPECT_EQ(other.wait(), 0) << name;
    }
    // What opened and closed the file beside the writer did not take its locks away.
    OtherProcess late([&](const auto&) {
        session::Session third(hard, {}, "test");
        return outcomeOf([&] { third.begin("third", "test", "", ""); }).code == ErrorCode::Busy ? 0
                                                                                                : 1;
    });
    EXPECT_EQ(late.wait(), 0);
    query::commit(writer);
    session::Session second(hard, {}, "test");
    commitPoints(second, somePoints(50, 3));
    EXPECT_EQ(readAll(writer).size(), m_before.size() + 150);
    EXPECT_EQ(m_folder.entries(), 3u) << m_folder.names();
}

TEST_F(Store, IsRepairedUnderTheNameThatAKilledWriterKnew) {
    const std::string other = m_folder.file("b.qrbx");
    std::filesystem::create_hard_link(m_file, other);
    session::Session opened(m_file, {}, "test");
    tarvo::testing::leaveJournal(other);
    ASSERT_TRUE(std::filesystem::exists(other + "-journal"));
    for (const auto& use : std::initializer_list<std::function<void()>>{
             [&] { session::Session(m_file, {}, "test"); },
             [&] { opened.begin("x", "test", "", ""); }, [&] { opened.history().vacuum(); }}) {
        const Outcome outcome = outcomeOf(use);
        EXPECT_EQ(outcome.code, ErrorCode::State) << outcome.text;
        EXPECT_NE(outcome.text.find("b.qrbx"), std::string::npos) << outcome.text;
    }
    EXPECT_EQ(readAll(*std::make_unique<session::Session>(other, session::OpenSettings{}, "test")),
              m_before);
    expectUnchanged();
}

// Whether a writer still has its place after what another one did.
bool holdsToken(const std::string& sql) {
    return sql.find("writer") == std::string::npos;
}

TEST_F(Store, FailsAWriterThatLostItsPlaceInsteadOfPublishing) {
    // What a writer does that no lock kept out: it deletes what is staged, its token stands there.
    const char* const intruders[] = {
        "DELETE FROM info WHERE name = 'writer'; DELETE FROM blob WHERE id > 10",
        "DELETE FROM blob WHERE id > 10",  // one that knows nothing of tokens
        "DELETE FROM info WHERE name = 'writer'"};
    for (const char* intruder : intruders) {
        store::Container container(m_file);
        container.beginWriting();
        std::vector<BlobRef> blobs;
        for (std::uint32_t i = 0; i < 20; ++i)
            blobs.push_back(container.add(noise(megabyte, i)));
        (void)container.read(blobs.front(), "a staged blob");
        std::string sql = intruder;
        if (const std::size_t at = sql.find("10"); at != std::string::npos)
            sql.replace(at, 2, std::to_string(blobs.front().blob - 1));
        runSql(m_file, sql.c_str());
        const Outcome outcome =
            outcomeOf([&] { container.publish(container.nextTransaction(), container.root(2)); });
        EXPECT_EQ(outcome.code, ErrorCode::State) << intruder << ": " << outcome.text;
        EXPECT_EQ(outcomeOf([&] {
                      for (std::uint32_t i = 0; i < 40; ++i)
                          container.add(noise(megabyte, i));
                  }).code,
                  ErrorCode::State)
            << intruder;
        // Giving up deletes nothing of the other writer, whose numbers are the same.
        runSql(m_file, "INSERT INTO blob VALUES(1000000, x'01')");
        const std::uint64_t staged = container.blobCount();
        container.abandon();
        EXPECT_EQ(container.blobCount() == staged, !holdsToken(intruder)) << intruder;
        expectUnchanged();
    }
}

TEST_F(Store, FailsAWriterBesideWhomTheHistoryChanged) {
    const std::string copy = m_folder.file("copy.qrbx");
    std::filesystem::copy_file(m_file, copy);
    session::Session(copy, {}, "test").restore(1);
    session::Session session(m_file, {}, "test");
    session.begin("late", "test", "", "");
    session.metaData().set("late", "1");
    // What another machine did, on a disk that does not carry locks.
    runSql(m_file, ("ATTACH '" + copy +
                    "' AS other; UPDATE info SET (value, checksum) = (SELECT value, checksum FROM "
                    "other.info WHERE name = 'history') WHERE name = 'history'")
                       .c_str());
    const Outcome outcome = outcomeOf([&] { query::commit(session); });
    EXPECT_EQ(outcome.code, ErrorCode::State) << outcome.text;
    session.rollback();
    EXPECT_EQ(session.current(), 1u);
    session.restore(2);
    EXPECT_EQ(readAll(session), m_before);
}

// Else the second writer would take the first one's token for its own.
TEST_F(Store, GivesEachWriterATokenOfItsOwn) {
    std::set<std::string> tokens;
    for (int i = 0; i < 3; ++i) {
        store::Container container(m_file);
        container.beginWriting();
        for (std::uint32_t n = 0; n < 20; ++n)
            container.add(noise(megabyte, n));
        store::Connection connection(m_file, SQLITE_OPEN_READONLY);
        tokens.insert(store::getInfo(connection, "writer"));
    }
    EXPECT_EQ(tokens.size(), 3u);
}

// With all that the other machine has added: nothing of it is deleted or written over.
TEST_F(Store, FailsAWriterBesideWhomAnotherCommitted) {
    const std::string copy = m_folder.file("copy.qrbx");
    const std::string sound = m_folder.file("sound.qrbx");
    std::filesystem::copy_file(m_file, sound);
    std::filesystem::copy_file(m_file, copy);
    {
        session::Session other(copy, {}, "test");
        other.begin("other", "test", "", "");
        other.metaData().set("theirs", "1");
        query::commit(other);
    }
    const std::string theirs = "ATTACH '" + copy +
                               "' AS other; INSERT OR REPLACE INTO info SELECT * FROM other.info; "
                               "INSERT OR REPLACE INTO snapshot SELECT * FROM other.snapshot; "
                               "INSERT OR REPLACE INTO blob SELECT * FROM other.blob";
    for (const int megabytes : {1, 20}) {
        SCOPED_TRACE(megabytes);
        std::filesystem::copy_file(sound, m_file,
                                   std::filesystem::copy_options::overwrite_existing);
        session::Session session(m_file, {}, "test");
        session.begin("late", "test", "", "");
        for (int i = 0; i < megabytes; ++i)
            session.metaData().set("mine", std::string(megabyte, 'm'));
        runSql(m_file, theirs.c_str());
        EXPECT_EQ(outcomeOf([&] { query::commit(session); }).code, ErrorCode::State);
        EXPECT_TRUE(session.pending());
        // Where a writer has nothing in the file, nothing is changed there.
        if (megabytes == 1) {
            session.rollback();
            EXPECT_EQ(session.metaData().get("theirs"), "1");
            EXPECT_EQ(session.current(), 3u);
        }
    }
}

TEST_F(Store, CleansUpNothingBesideAWriterThatNoLockKeptOut) {
    const std::string copy = m_folder.file("copy.qrbx");
    std::filesystem::copy_file(m_file, copy);
    session::Session session(m_file, {}, "test");
    session.restore(1);
    session.history().discard({2});
    // While the clean-up looks what is wanted, another machine commits what it had not seen.
    bool changed = false;
    const Outcome outcome = outcomeOf([&] {
        session.history().vacuum([&](int percent) {
            if (percent == 0 && !changed) {
                changed = true;
                runSql(m_file,
                       ("ATTACH '" + copy +
                        "' AS other; INSERT OR REPLACE INTO info SELECT * FROM other.info; INSERT "
                        "OR REPLACE INTO snapshot SELECT * FROM other.snapshot")
                           .c_str());
            }
            return true;
        });
    });
    ASSERT_TRUE(changed);
    EXPECT_EQ(outcome.code, ErrorCode::State) << outcome.text;
    expectUnchanged();
}

TEST_F(Store, TellsOfAStateThatVanishedAndLosesNoDataOfIt) {
    {
        session::Session session(m_file, {}, "test");
        commitPoints(session, somePoints(300, 4));
    }
    const std::string damaged = m_folder.file("damaged.qrbx");
    for (const char* damage :
         {"UPDATE snapshot SET id = id + 64 WHERE id = 2",
          "UPDATE snapshot SET last_blob = 1 << 61 WHERE id = 2",
          "UPDATE snapshot SET last_blob = -1 WHERE id = 2",
          "UPDATE snapshot SET id = 4294967298 WHERE id = 2", "DELETE FROM snapshot WHERE id = 2",
          "DELETE FROM info WHERE name = 'history'",
          "UPDATE info SET value = '3 3 99 1 3' WHERE name = 'history'"}) {
        std::filesystem::copy_file(m_file, damaged,
                                   std::filesystem::copy_options::overwrite_existing);
        runSql(damaged, damage);
        const auto size = std::filesystem::file_size(damaged);
        EXPECT_EQ(outcomeOf([&] {
                      session::Session session(damaged, {}, "test");
                      (void)session.history().transactions();
                  }).code,
                  ErrorCode::Damaged)
            << damage;
        EXPECT_EQ(outcomeOf([&] {
                      session::Session session(damaged, {}, "test");
                      session.history().vacuum();
                  }).code,
                  ErrorCode::Damaged)
            << damage;
        EXPECT_EQ(std::filesystem::file_size(damaged), size) << damage;
    }
    // A blob that can't be found any more is not for cleaning up either.
    std::filesystem::copy_file(m_file, damaged, std::filesystem::copy_options::overwrite_existing);
    runSql(damaged, "UPDATE blob SET id = id + 4096 WHERE id = 3");
    session::Session session(damaged, {}, "test");
    EXPECT_EQ(outcomeOf([&] { session.history().vacuum(); }).code, ErrorCode::Damaged);
    runSql(damaged, "UPDATE blob SET id = 3 WHERE id = 4099");
    session.history().vacuum();
    EXPECT_EQ(readAll(session).size(), m_before.size() + 300);
}

TEST_F(Store, TellsAQueryThatItsStateWasDiscarded) {
    session::Session reader(m_file, session::OpenSettings{0}, "test");
    query::SelectQuery query(reader, {}, "amplitude > 10");
    Point point;
    query.bind("xyz", QRB_DATA_TYPE_DOUBLE, &point.x, sizeof(Point));
    EXPECT_EQ(query.next(1), 1u);
    {
        session::Session other(m_file, {}, "test");
        other.restore(1);
        other.history().discard({2});
        other.history().vacuum();
    }
    Outcome outcome;
    for (int i = 0; i < 2000 && outcome.text.empty(); ++i)
        outcome = outcomeOf([&] { (void)query.next(1); });
    EXPECT_EQ(outcome.code, ErrorCode::State) << outcome.text;
    EXPECT_NE(outcome.text.find("Transaction 2"), std::string::npos) << outcome.text;
    // It stays so: points that could not be read are not passed over.
    EXPECT_EQ(outcomeOf([&] { (void)query.next(1); }).code, ErrorCode::State);
    EXPECT_EQ(countOf(reader, ""), 0u);
    EXPECT_EQ(query::readIndex(reader, "").totalCount, 0u);
}

TEST_F(Store, ForgetsQueriesOfATransactionThatWasRolledBack) {
    session::Session session(m_file, {}, "test");
    session.begin("first", "test", "", "");
    insert(session, somePoints(500, 2));
    query::SelectQuery select(session, {}, "");
    query::FillQuery fill(session, {}, "");
    const std::uint16_t value = 1;
    fill.bind("amplitude", QRB_DATA_TYPE_UINT16, &value);
    // What is decoded already is gone as well.
    EXPECT_EQ(select.next(1), 1u);
    session.rollback();
    EXPECT_EQ(outcomeOf([&] { (void)select.next(10); }).code, ErrorCode::State);
    // The next transaction has the same number; what the query knows are other points.
    EXPECT_EQ(session.begin("second", "test", "", ""), 3u);
    insert(session, somePoints(500, 3));
    EXPECT_EQ(outcomeOf([&] { (void)fill.next(10); }).code, ErrorCode::State);
    EXPECT_EQ(outcomeOf([&] { (void)select.next(10); }).code, ErrorCode::State);
    session.rollback();
    expectUnchanged();
}

TEST_F(Store, RefusesToChangeAFileThatMovedAwayAndGoesOnWhenItIsBack) {
    const std::string away = m_folder.file("away.qrbx");
    const std::string other = m_folder.file("other.qrbx");
    session::Session session(m_file, {}, "test");
    std::filesystem::rename(m_file, away);
    EXPECT_TRUE(session.hasMoved());
    EXPECT_EQ(outcomeOf([&] { session.begin("x", "test", "", ""); }).code, ErrorCode::State);
    session::Session::create(m_file, settings(1, 200), "test", amplitudeOnly());
    EXPECT_TRUE(session.hasMoved());
    for (const auto& change : std::initializer_list<std::function<void()>>{
             [&] { session.begin("x", "test", "", ""); }, [&] { session.restore(1); },
             [&] { session.history().vacuum(); }, [&] { session.history().finalize(); }})
        EXPECT_EQ(outcomeOf(change).code, ErrorCode::State);
    EXPECT_EQ(readAll(session), m_before);  // of the file that was opened
    std::filesystem::rename(m_file, other);
    std::filesystem::rename(away, m_file);
    EXPECT_FALSE(session.hasMoved());

    session.begin("moved meanwhile", "test", "", "");
    insert(session, somePoints(100, 9));
    std::filesystem::rename(m_file, away);
    const Outcome outcome = outcomeOf([&] { query::commit(session); });
    EXPECT_EQ(outcome.code, ErrorCode::State) << outcome.text;
    EXPECT_TRUE(session.pending());
    std::filesystem::rename(away, m_file);
    query::commit(session);
    EXPECT_EQ(readAll(session).size(), m_before.size() + 100);
    // Tried twice, it is one transaction in the changelog.
    const std::string log = session.changelog().text();
    EXPECT_EQ(log.find("[#3] moved meanwhile"), log.rfind("[#3]")) << log;
}

// Copied over, with the same file and, for all that the container tells, the same history.
TEST_F(Store, RefusesToChangeAFileThatWasOverwrittenByAnotherDatabase) {
    const auto overwrite = [this](const std::string& from) {
        std::ifstream in(from, std::ios::binary);
        std::ofstream(m_file, std::ios::binary) << in.rdbuf();
    };
    const std::string other = m_folder.file("other.qrbx");
    session::Session::create(other, settings(1, 200), "test", amplitudeOnly());
    {
        session::Session session(other, {}, "test");
        commitPoints(session, somePoints(700, 6));
    }
    const std::string backup = m_folder.file("backup.qrbx");
    std::filesystem::copy_file(m_file, backup);
    {
        session::Session session(m_file, {}, "test");
        (void)readAll(session);
        overwrite(other);
        EXPECT_EQ(outcomeOf([&] { (void)session.state(); }).code, ErrorCode::State);
        const Outcome outcome = outcomeOf([&] { session.begin("x", "test", "", ""); });
        EXPECT_EQ(outcome.code, ErrorCode::State) << outcome.text;
        EXPECT_EQ(outcomeOf([&] { session.history().vacuum(); }).code, ErrorCode::State);
    }
    overwrite(backup);
    {
        session::Session session(m_file, {}, "test");
        session.begin("x", "test", "", "");
        session.metaData().set("x", "1");
        overwrite(other);
        EXPECT_EQ(outcomeOf([&] { query::commit(session); }).code, ErrorCode::State);
        session.rollback();
    }
    {
        session::Session now(m_file, {}, "test");
        EXPECT_EQ(readAll(now).size(), 700u);
    }
    // One that differs in nothing but in which database it is.
    overwrite(backup);
    {
        session::Session session(m_file, {}, "test");
        session.begin("x", "test", "", "");
        session.metaData().set("x", "1");
        {
            store::Connection connection(m_file, SQLITE_OPEN_READWRITE);
            store::putInfo(connection, "identity", store::getInfo(connection, "identity") + " ");
        }
        EXPECT_EQ(outcomeOf([&] { query::commit(session); }).text,
                  "The file holds another database than when it was opened.");
        session.rollback();
        EXPECT_EQ(store::Container(m_file).current(), 2u);
    }
    // Its own backup is taken for what it is.
    overwrite(backup);
    session::Session session(m_file, {}, "test");
    commitPoints(session, somePoints(10, 1));
    EXPECT_EQ(readAll(session).size(), m_before.size() + 10);
    overwrite(backup);
    EXPECT_EQ(readAll(session), m_before);
    commitPoints(session, somePoints(20, 2));
    EXPECT_EQ(readAll(session).size(), m_before.size() + 20);
    session::Session again(m_file, {}, "test");
    EXPECT_EQ(readAll(again).size(), m_before.size() + 20);
}

TEST_F(Store, RefusesAFormatOfTheFutureWithItsNumber) {
    runSql(m_file, "PRAGMA user_version = 4");
    const Outcome outcome = outcomeOf([&] { session::Session(m_file, {}, "test"); });
    EXPECT_EQ(outcome.code, ErrorCode::Format);
    EXPECT_NE(outcome.text.find("version 4"), std::string::npos) << outcome.text;
    // No later library knows this one.
    runSql(m_file, "PRAGMA user_version = 0");
    EXPECT_EQ(outcomeOf([&] { session::Session(m_file, {}, "test"); }).code, ErrorCode::Damaged);
}

// A scan reads ahead on the worker threads while the same session begins, restores, discards and
// cleans up.
TEST_F(Store, IsChangedBesideItsOwnScan) {
    session::Session session(m_file, {}, "test");
    commitPoints(session, somePoints(20'000, 3));
    const std::uint32_t kept = session.current();
    const Points truth = readAll(session);
    for (int round = 0; round < 40; ++round) {
        session.blobs().forget();
        query::SelectQuery query(session, {}, "amplitude < 8000");
        Point point[100];
        query.bind("xyz", QRB_DATA_TYPE_DOUBLE, &point[0].x, sizeof(Point));
        for (int i = 0; i < 10; ++i)
            (void)query.next(100);
        session.begin("beside", "test", "", "");
        if (round % 2 == 0) {
            session.rollback();
        } else {
            session.metaData().set("round", std::to_string(round));
            query::commit(session);
        }
        (void)query.next(100);
        session.restore(kept);
        (void)query.next(100);
        session.history().finalize();
        session.history().vacuum();
        (void)query.next(100);
    }
    EXPECT_EQ(readAll(session), truth);
}

// What one session checked, another one may have changed before it has the lock.
TEST_F(Store, HasACurrentStateWhateverIsRestoredAndDiscardedAtOnce) {
    session::Session first(m_file, {}, "test");
    session::Session second(m_file, {}, "test");
    const auto tries = [](session::Session& session, bool restores) {
        for (int i = 0; i < 40; ++i) {
            const Outcome outcome = outcomeOf([&] {
                const std::vector<std::uint32_t> ids = session.history().transactions();
                if (restores) {
                    session.restore(ids.back());
                } else {
                    session.begin("new", "test", "", "");
                    query::commit(session);
                    session.restore(1);
                    session.history().discard({session.history().transactions().back()});
                }
            });
            if (outcome.code == ErrorCode::Damaged)
                ADD_FAILURE() << outcome.text;
        }
    };
    std::thread other([&] { tries(second, true); });
    tries(first, false);
    other.join();
    session::Session session(m_file, {}, "test");
    (void)readAll(session);
}

TEST_F(Store, IsOpenedBesideAWriterUnderItsOtherName) {
    const std::string other = m_folder.file("b.qrbx");
    std::filesystem::create_hard_link(m_file, other);
    sqlite3* handle = nullptr;
    ASSERT_EQ(sqlite3_open(other.c_str(), &handle), SQLITE_OK);
    ASSERT_EQ(sqlite3_exec(handle, "BEGIN; UPDATE blob SET data = x'00' WHERE id = 1", nullptr,
                           nullptr, nullptr),
              SQLITE_OK);
    ASSERT_GT(std::filesystem::file_size(other + "-journal"), 0u);
    const Outcome outcome = outcomeOf([&] {
        session::Session session(m_file, {}, "test");
        EXPECT_EQ(readAll(session), m_before);
    });
    EXPECT_EQ(outcome.text, "");
    sqlite3_close(handle);
}

TEST_F(Store, IsRecognisedThoughItsEndIsMissing) {
    std::filesystem::resize_file(m_file, std::filesystem::file_size(m_file) - 8192);
    EXPECT_TRUE(store::Container::recognises(m_file));
    std::filesystem::resize_file(m_file, 8192);
    EXPECT_TRUE(store::Container::recognises(m_file));
}

TEST_F(Store, IsRecognisedThoughItsWriterWasKilled) {
    tarvo::testing::leaveJournal(m_file);
    EXPECT_TRUE(store::Container::recognises(m_file));
    expectUnchanged();
}

// Copied over by one that has the same past and the same size, which shows in its time only.
TEST_F(Store, IsReadAnewAfterItsTwinWasCopiedOverIt) {
    const std::string twin = m_folder.file("twin.qrbx");
    std::filesystem::copy_file(m_file, twin);
    for (const std::string& name : {m_file, twin}) {
        session::Session session(name, {}, "test");
        session.begin("item", "test", "", "");
        session.metaData().set("item", name == twin ? "2" : "1");
        query::commit(session);
    }
    session::Session session(m_file, {}, "test");
    EXPECT_EQ(session.metaData().get("item"), "1");
    const auto time = std::filesystem::last_write_time(m_file);
    std::ofstream(m_file, std::ios::binary) << std::ifstream(twin, std::ios::binary).rdbuf();
    std::filesystem::last_write_time(m_file, time + std::chrono::seconds(1));
    EXPECT_EQ(session.metaData().get("item"), "2");
}

// Closing any descriptor of a file gives up what the process has locked of it.
TEST_F(Store, KeepsItsLocksThoughAnotherNameLedToIt) {
    const std::string other = m_folder.file("b.qrbx");
    session::Session::create(other, settings(1, 200), "test");
    store::Container reader(m_file);
    const store::Container::ReadScope scope(reader);
    (void)reader.read(session::stateFromRoot(reader.root(2)).attributesBlob, "a blob");
    EXPECT_EQ(outcomeOf([&] { store::WriterLock(store::OpenFile::of(other), m_file); }).code,
              ErrorCode::State);
    // Of a container's locks those of readers lie two bytes behind the first gigabyte.
    OtherProcess writer([&](const auto&) {
        struct flock lock = {};
        lock.l_type = F_WRLCK;
        lock.l_whence = SEEK_SET;
        lock.l_start = 0x40000002;
        lock.l_len = 510;
        const int file = ::open(m_file.c_str(), O_RDWR);
        return ::fcntl(file, F_GETLK, &lock) == 0 && lock.l_type == F_RDLCK ? 0 : 1;
    });
    EXPECT_EQ(writer.wait(), 0);
}

}  // namespace
}  // namespace tarvo::engine
