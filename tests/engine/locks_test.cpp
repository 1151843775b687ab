// What holds a lock on a file, for how long, and who waits for it: nothing does between two calls.
#include "tests/engine/killedwriter.h"
#include "tests/engine/store.h"

#include <fcntl.h>

#include <atomic>
#include <fstream>
#include <thread>

namespace tarvo::engine {
namespace {

using namespace testing;

class Locks : public Store {
protected:
    // Whether somebody reads the file: of a container's locks those of readers lie two bytes behind
    // the first gigabyte. Asked by another process, as locks do not keep their own one out.
    bool isRead() const {
        OtherProcess other([&](const auto&) {
            struct flock lock = {};
            lock.l_type = F_WRLCK;
            lock.l_whence = SEEK_SET;
            lock.l_start = 0x40000002;
            lock.l_len = 510;
            const int file = ::open(m_file.c_str(), O_RDWR);
            return ::fcntl(file, F_GETLK, &lock) == 0 && lock.l_type == F_UNLCK ? 0 : 1;
        });
        return other.wait() != 0;
    }
    // What another process is told that begins to write; Internal where it can.
    ErrorCode writing() const {
        OtherProcess other([&](const auto&) {
            session::Session session(m_file, {}, "test");
            return static_cast<int>(outcomeOf([&] { session.begin("x", "test", "", ""); }).code);
        });
        return static_cast<ErrorCode>(other.wait());
    }
    // Reads the file in another process, until it is told to go on, and a while after that.
    auto readerFor(int moreSeconds) const {
        return [this, moreSeconds](const auto& pause) {
            session::Session session(m_file, {}, "test");
            const session::Blobs::Scope scope(session.blobs());
            (void)session.blobs().rootNode(*session.state());
            pause();
            ::usleep(static_cast<useconds_t>(moreSeconds) * 1'000'000);
            return 0;
        };
    }
};

TEST_F(Locks, AreHeldByNoCallThatHasReturned) {
    session::Session session(m_file, {}, "test");
    session.begin("items", "test", "", "");
    for (const char* const name : {"kept", "cut", "lost"})
        session.metaData().set(name, std::string(500, 'x'));
    query::commit(session);
    const auto blobOf = [&](const char* name) { return session.state()->metaData.at(name).value; };
    const std::string cut = " WHERE id = " + std::to_string(blobOf("cut").blob);
    runSql(m_file, ("UPDATE blob SET data = substr(data, 1, 499)" + cut).c_str());
    runSql(m_file, ("DELETE FROM blob WHERE id = " + std::to_string(blobOf("lost").blob)).c_str());

    const std::string damaged = "The file is damaged: a metadata item";
    const std::pair<std::function<void()>, std::string> calls[] = {
        {[&] { (void)session.metaData().get("kept"); }, ""},
        {[&] { (void)session.metaData().get("cut"); }, damaged + " does not agree with its checksum."},
        {[&] { (void)session.metaData().get("lost"); }, damaged + " is missing."},
        {[&] { (void)readAll(session); }, ""},
        {[&] { (void)session.changelog().text(); }, ""},
        {[&] { (void)session.history().transactions(); }, ""},
        {[&] { (void)session.structureFaults(); }, ""},
        {[&] { session.begin("pending", "test", "", ""); }, ""},
        {[&] { (void)session.metaData().get("cut"); }, damaged + " does not agree with its checksum."},
        {[&] { (void)session.metaData().get("lost"); }, damaged + " is missing."},
        {[&] { session.metaData().set("new", "1"); }, ""},
        {[&] { (void)session.metaData().get("new"); }, ""},
        {[&] { session.rollback(); }, ""},
        {[&] { session.restore(2); }, ""},
        {[&] { session.restore(3); }, ""},
    };
    int number = 0;
    for (const auto& [call, text] : calls) {
        SCOPED_TRACE("call " + std::to_string(++number));
        EXPECT_EQ(outcomeOf(call).text, text);
        EXPECT_FALSE(isRead());
        EXPECT_EQ(writing(), session.pending() ? ErrorCode::Busy : ErrorCode::Internal);
    }
    session::Blobs& blobs = session.blobs();
    {
        const session::Blobs::Scope outer(blobs);
        {
            const session::Blobs::Scope inner(blobs);
            (void)blobs.read(blobOf("kept"), "an item");
        }
        EXPECT_TRUE(isRead());
    }
    EXPECT_FALSE(isRead());
}

// By the system, too: what a process knows of its own locks tells it nothing of the others'.
TEST_F(Locks, OfTheWriterKeepOtherProcessesOutUntilItIsDone) {
    const auto begin = [](session::Session& session) {
        return outcomeOf([&] { session.begin("x", "test", "", ""); });
    };
    OtherProcess other([&](const auto& pause) {
        pause();
        session::Session session(m_file, {}, "test");
        const bool refused = begin(session).code == ErrorCode::Busy;
        pause();
        const bool taken = begin(session).text.empty();
        pause();
        query::commit(session);
        return refused && taken ? 0 : 1;
    });
    other.untilPause();
    session::Session session(m_file, {}, "test");
    EXPECT_EQ(begin(session).text, "");
    other.go();
    other.untilPause();
    session.rollback();
    other.go();
    other.untilPause();
    const Outcome outcome = begin(session);
    EXPECT_EQ(outcome.code, ErrorCode::Busy);
    EXPECT_EQ(outcome.text, "Another program is changing the database. Try again when it is done.");
    other.go();
    EXPECT_EQ(other.wait(), 0);
    EXPECT_EQ(begin(session).text, "");
    EXPECT_EQ(session.base().transaction.id, 3u);
}

// By a user like any other, for nothing is protected from the first one.
TEST_F(Locks, AreNotTakenWhereNothingCanBeWritten) {
    namespace fs = std::filesystem;
    const fs::path folder = fs::path(m_file).parent_path();
    const std::string left = m_folder.file("left.qrbx");
    fs::copy_file(m_file, left);
    tarvo::testing::leaveJournal(left);
    for (const std::string& name : {m_file, left, left + "-journal"})
        fs::permissions(name, static_cast<fs::perms>(0444));
    fs::permissions(folder, static_cast<fs::perms>(0555));
    OtherProcess child([&](const auto&) {
        if (::getuid() == 0 && ::setuid(65534) != 0)
            return 1;
        session::Session session(m_file, {}, "test");
        if (readAll(session) != m_before)
            return 2;
        for (const auto& work : std::initializer_list<std::function<void()>>{
                 [&] { session.begin("x", "test", "", ""); }, [&] { session.history().vacuum(); }}) {
            const Outcome outcome = outcomeOf(work);
            if (outcome.code != ErrorCode::File ||
                outcome.text !=
                    "The database can only be read: the file or its folder is "
                    "write-protected.")
                return 3;
        }
        const Outcome outcome = outcomeOf([&] { session::Session(left, {}, "test"); });
        return outcome.code == ErrorCode::File && outcome.text.find("needs a repair") < 100 ? 0 : 4;
    });
    EXPECT_EQ(child.wait(), 0);
    fs::permissions(folder, fs::perms::owner_all);
}

TEST_F(Locks, AreThoseOfTheFileWhereverTheProgramsFolderMoves) {
    OtherProcess child([&](const auto&) {
        std::filesystem::current_path(std::filesystem::path(m_file).parent_path());
        session::Session session("a.qrbx", {}, "test");
        std::filesystem::current_path("/");
        if (session.hasMoved())
            return 1;
        session.begin("elsewhere", "test", "", "");
        session.metaData().set("item", "1");
        query::commit(session);
        session.restore(2);
        session.history().vacuum();
        return session.hasMoved() ? 2 : 0;
    });
    EXPECT_EQ(child.wait(), 0);
    session::Session session(m_file, {}, "test");
    EXPECT_EQ(session.history().transactions(), (std::vector<std::uint32_t>{1, 2, 3}));
}

TEST_F(Locks, AreLookedForUnderEveryNameThatMayHaveAJournal) {
    const std::string other = m_folder.file("b.qrbx");
    const TemporaryFolder elsewhere;
    const std::string link = elsewhere.file("link.qrbx");
    std::filesystem::create_hard_link(m_file, other);
    std::filesystem::create_symlink(m_file, link);
    // An empty journal is that of a writer that is done; another file's is none of this one's.
    for (const char* const name : {"b.qrbx-journal", "c.qrbx-journal"})
        std::ofstream(m_folder.file(name)) << "";
    std::filesystem::copy_file(m_file, m_folder.file("c.qrbx"));
    tarvo::testing::leaveJournal(m_folder.file("c.qrbx"));
    for (const std::string& name : {m_file, link})
        EXPECT_EQ(outcomeOf([&] { session::Session(name, {}, "test"); }).text, "");
    tarvo::testing::leaveJournal(other);
    for (const std::string& name : {m_file, link}) {
        const Outcome outcome = outcomeOf([&] { session::Session(name, {}, "test"); });
        EXPECT_EQ(outcome.code, ErrorCode::State) << name;
        EXPECT_EQ(outcome.text,
                  "The file was not closed properly under its other name \"" + other + "\".");
    }
}

TEST_F(Locks, OfAWriterThatIsThereForAMomentAreWaitedForAfterOneThatWasNot) {
    session::Session session(m_file, {}, "test");
    session.begin("item", "test", "", "");
    session.metaData().set("item", "1");
    query::commit(session);
    OtherProcess other([&](const auto& pause) {
        sqlite3* handle = nullptr;
        sqlite3_open(m_file.c_str(), &handle);
        sqlite3_exec(handle, "BEGIN IMMEDIATE", nullptr, nullptr, nullptr);
        pause();
        sqlite3_exec(handle, "COMMIT; BEGIN EXCLUSIVE", nullptr, nullptr, nullptr);
        pause();
        ::usleep(1'500'000);
        sqlite3_close(handle);
        return 0;
    });
    other.untilPause();
    session.begin("refused", "test", "", "");
    session.metaData().set("item", "2");
    int asked = 0;
    const Outcome outcome = outcomeOf([&] { query::commit(session, [&](int) { return ++asked < 4; }); });
    EXPECT_EQ(outcome.code, ErrorCode::Cancelled) << outcome.text;
    session.rollback();
    other.go();
    other.untilPause();
    OtherProcess opens([&](const auto&) {
        session::Session late(m_file, {}, "test");
        return readAll(late) == m_before ? 0 : 1;
    });
    other.go();
    EXPECT_EQ(session.metaData().get("item"), "1");
    EXPECT_EQ(readAll(session), m_before);
    EXPECT_EQ(opens.wait(), 0);
}

// A rollback waits for nobody, and what others then wait for is not given up either.
TEST_F(Locks, OfReadersDelayNoRollbackButTheNextCommit) {
    store::Container container(m_file);
    const std::uint64_t before = container.blobCount();
    container.beginWriting();
    for (std::uint32_t i = 0; i < 20; ++i)
        container.add(noise(megabyte, i));
    ASSERT_GT(container.blobCount(), before);
    OtherProcess other(readerFor(4));
    other.untilPause();
    other.go();
    container.abandon();
    EXPECT_GT(container.blobCount(), before);
    container.beginWriting();
    container.add(noise(100, 1));
    const std::string root = container.root(2);
    EXPECT_EQ(outcomeOf([&] { container.publish(3, root); }).text, "");
    EXPECT_EQ(container.blobCount(), before + 1);
}

// Three waits at once, for they take ten seconds.
TEST_F(Locks, AreWaitedForAsLongAsIsTold) {
    const std::string refused = m_folder.file("refused.qrbx");
    const std::string looked = m_folder.file("looked.qrbx");
    for (const std::string& name : {refused, looked})
        std::filesystem::copy_file(m_file, name);
    const auto lock = [](const std::string& name, const char* sql) {
        return [name, sql](const auto& pause) {
            sqlite3* handle = nullptr;
            sqlite3_open(name.c_str(), &handle);
            sqlite3_exec(handle, sql, nullptr, nullptr, nullptr);
            pause();
            sqlite3_close(handle);
            return 0;
        };
    };
    const char* const reading = "BEGIN; SELECT count(*) FROM blob";
    OtherProcess readsFirst(lock(m_file, reading));
    OtherProcess readsSecond(lock(refused, reading));
    OtherProcess writes(lock(looked, "BEGIN EXCLUSIVE"));
    for (OtherProcess* const each : {&readsFirst, &readsSecond, &writes})
        each->untilPause();

    std::atomic<bool> refusedIsDone = false;
    Outcome patient;
    std::vector<int> told;
    std::thread goesOn([&] {
        session::Session session(m_file, {}, "test");
        session.begin("patient", "test", "", "");
        session.metaData().set("item", "1");
        // Longer than the others wait.
        int after = 0;
        patient = outcomeOf([&] {
            query::commit(session, [&](int percent) {
                told.push_back(percent);
                if (refusedIsDone && ++after == 2)
                    readsFirst.go();
                return true;
            });
        });
    });
    bool recognised = false;
    std::thread looks([&] { recognised = store::Container::recognises(looked); });
    Failure busy(ErrorCode::Internal, "");
    session::Session session(refused, {}, "test");
    session.begin("impatient", "test", "", "");
    try {
        query::commit(session);
    } catch (const Failure& failure) {
        busy = failure;
    }
    refusedIsDone = true;
    goesOn.join();
    looks.join();
    readsFirst.go();
    EXPECT_EQ(busy.code(), ErrorCode::Busy);
    EXPECT_EQ(std::string(busy.what()),
              "Other programs keep reading the database, so that it can't be written now. Try "
              "again when they are done.");
    EXPECT_EQ(busy.details(), "File: " + refused + "\nThe transaction is still pending.");
    EXPECT_TRUE(session.pending());
    EXPECT_TRUE(recognised);
    EXPECT_EQ(patient.text, "");
    EXPECT_TRUE(std::is_sorted(told.begin(), told.end()));
    EXPECT_EQ(told.front(), 0);
    EXPECT_EQ(told.back(), 100);
    readsSecond.go();
    writes.go();
}

}  // namespace
}  // namespace tarvo::engine
