// Who may write, and what is lost when something goes wrong: nothing.
#include "tests/engine/database.h"
#include "tests/engine/smalldisk.h"

#include "engine/query/commit.h"
#include "engine/query/fill.h"
#include "engine/query/stat.h"

#include <gtest/gtest.h>
#include <sqlite3.h>

#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>
#include <csignal>
#include <fstream>
#include <functional>
#include <optional>
#include <random>
#include <thread>

namespace tarvo::engine {
namespace {

using namespace testing;

std::vector<Point> points(std::size_t count, std::uint32_t seed) {
    std::mt19937 random(seed);
    std::vector<Point> result(count);
    for (Point& p : result)
        p = {static_cast<double>(random() % 2000) - 1000, static_cast<double>(random() % 100),
             static_cast<double>(random() % 100) / 8, static_cast<std::uint16_t>(random() % 9000)};
    return result;
}

// The code and text of what a function throws; Internal and empty where it throws nothing.
struct Outcome {
    ErrorCode code = ErrorCode::Internal;
    std::string text;
};
Outcome outcomeOf(const std::function<void()>& function) {
    try {
        function();
    } catch (const Failure& failure) {
        return {failure.code(), failure.what()};
    }
    return {};
}

// Changes a file behind the library's back.
void runSql(const std::string& file, const char* sql) {
    sqlite3* handle = nullptr;
    char* message = nullptr;
    ASSERT_EQ(sqlite3_open(file.c_str(), &handle), SQLITE_OK);
    EXPECT_EQ(sqlite3_exec(handle, sql, nullptr, nullptr, &message), SQLITE_OK) << message;
    sqlite3_close(handle);
}

// Runs a function in a process of its own, which waits where it calls pause() until go() is called
// here.
class OtherProcess {
public:
    explicit OtherProcess(const std::function<int(const std::function<void()>& pause)>& function) {
        if (::pipe(m_toChild) + ::pipe(m_toParent) != 0)
            throw std::runtime_error("no pipe");
        m_child = ::fork();
        if (m_child != 0)
            return;
        int status = 100;
        try {
            status = function([this] {
                char turn = 'p';
                if (::write(m_toParent[1], &turn, 1) != 1 || ::read(m_toChild[0], &turn, 1) != 1)
                    ::_exit(101);
            });
        } catch (...) {
        }
        ::_exit(status);
    }
    ~OtherProcess() {
        if (m_child > 0)
            wait();
        for (const int end : {m_toChild[0], m_toChild[1], m_toParent[0], m_toParent[1]})
            ::close(end);
    }
    void untilPause() {
        char turn = 0;
        EXPECT_EQ(::read(m_toParent[0], &turn, 1), 1);
    }
    void go() {
        const char turn = 'g';
        EXPECT_EQ(::write(m_toChild[1], &turn, 1), 1);
    }
    int wait() {
        int status = 0;
        ::waitpid(m_child, &status, 0);
        m_child = 0;
        return WIFSIGNALED(status) ? 1000 + WTERMSIG(status) : WEXITSTATUS(status);
    }

private:
    int m_toChild[2];
    int m_toParent[2];
    ::pid_t m_child = 0;
};

class Store : public ::testing::Test {
protected:
    Store() : m_file(m_folder.file("a.qrbx")) {
        session::Session::create(m_file, settings(1, 200), "test", amplitudeOnly());
        session::Session session(m_file, {}, "test");
        commitPoints(session, points(1500, 1));
        m_before = readAll(session);
    }
    // The file is what it was, and can be changed.
    void expectUnchanged() {
        session::Session session(m_file, {}, "test");
        EXPECT_EQ(readAll(session), m_before);
        session.begin("probe", "test", "", "");
        session.setMetaData("probe", "1");
        session.commit();
        EXPECT_EQ(session.metaData("probe"), "1");
    }

    TemporaryFolder m_folder;
    std::string m_file;
    Points m_before;
};

constexpr std::size_t megabyte = 1u << 20;

Bytes noise(std::size_t size, std::uint32_t seed) {
    std::mt19937 random(seed);
    Bytes bytes(size);
    for (std::uint8_t& byte : bytes)
        byte = static_cast<std::uint8_t>(random());
    return bytes;
}

TEST_F(Store, HasOneWriterByWhateverNameTheFileGoes) {
    const std::string link = m_folder.file("link.qrbx");
    const std::string hard = m_folder.file("hard.qrbx");
    std::filesystem::create_symlink(m_file, link);
    std::filesystem::create_hard_link(m_file, hard);
    session::Session writer(m_file, {}, "test");
    writer.begin("first", "test", "", "");
    insert(writer, points(100, 2));
    for (const std::string& name : {m_file, link, hard}) {
        session::Session second(name, {}, "test");
        EXPECT_EQ(outcomeOf([&] { second.begin("second", "test", "", ""); }).code, ErrorCode::Busy);
        EXPECT_EQ(outcomeOf([&] { second.vacuum(); }).code, ErrorCode::Busy);
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
    writer.commit();
    session::Session second(hard, {}, "test");
    commitPoints(second, points(50, 3));
    EXPECT_EQ(readAll(writer).size(), m_before.size() + 150);
    EXPECT_EQ(m_folder.entries(), 3u) << m_folder.names();
}

TEST_F(Store, IsRepairedUnderTheNameThatAKilledWriterKnew) {
    const std::string other = m_folder.file("b.qrbx");
    std::filesystem::create_hard_link(m_file, other);
    session::Session opened(m_file, {}, "test");
    OtherProcess killed([&](const auto&) {
        sqlite3* handle = nullptr;
        sqlite3_open(other.c_str(), &handle);
        sqlite3_exec(handle,
                     "PRAGMA cache_size=5; BEGIN; UPDATE blob SET data = randomblob(20000); INSERT "
                     "INTO blob VALUES(100000, randomblob(3000000))",
                     nullptr, nullptr, nullptr);
        ::raise(SIGKILL);
        return 0;
    });
    EXPECT_EQ(killed.wait(), 1000 + SIGKILL);
    ASSERT_TRUE(std::filesystem::exists(other + "-journal"));
    for (const auto& use : std::initializer_list<std::function<void()>>{
             [&] { session::Session(m_file, {}, "test"); },
             [&] { opened.begin("x", "test", "", ""); }, [&] { opened.vacuum(); }}) {
        const Outcome outcome = outcomeOf(use);
        EXPECT_EQ(outcome.code, ErrorCode::State) << outcome.text;
        EXPECT_NE(outcome.text.find("b.qrbx"), std::string::npos) << outcome.text;
    }
    EXPECT_EQ(readAll(*std::make_unique<session::Session>(other, session::OpenSettings{}, "test")),
              m_before);
    expectUnchanged();
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
        container.abandon();
        expectUnchanged();
    }
}

TEST_F(Store, FailsAWriterBesideWhomTheHistoryChanged) {
    const std::string copy = m_folder.file("copy.qrbx");
    std::filesystem::copy_file(m_file, copy);
    session::Session(copy, {}, "test").restore(1);
    session::Session session(m_file, {}, "test");
    session.begin("late", "test", "", "");
    session.setMetaData("late", "1");
    // What another machine did, on a disk that does not carry locks.
    runSql(m_file, ("ATTACH '" + copy +
                    "' AS other; UPDATE info SET (value, checksum) = (SELECT value, checksum FROM "
                    "other.info WHERE name = 'history') WHERE name = 'history'")
                       .c_str());
    const Outcome outcome = outcomeOf([&] { session.commit(); });
    EXPECT_EQ(outcome.code, ErrorCode::State) << outcome.text;
    session.rollback();
    EXPECT_EQ(session.current(), 1u);
    session.restore(2);
    EXPECT_EQ(readAll(session), m_before);
}

TEST_F(Store, StaysPendingWhileAReaderOfAnotherProcessHoldsTheFile) {
    OtherProcess reader([&](const auto& pause) {
        session::Session session(m_file, {}, "test");
        const store::Container::ReadScope scope(session.container());
        (void)session.rootNode(*session.state());  // the file is read, and stays so
        pause();
        return 0;
    });
    reader.untilPause();
    store::Container container(m_file);
    container.beginWriting();  // needs nobody's leave
    std::vector<BlobRef> blobs;
    int asked = 0;
    {
        const store::Container::Waiting waiting(container, [&] { return ++asked < 3; });
        EXPECT_EQ(outcomeOf([&] {
                      for (std::uint32_t i = 0; i < 20; ++i)
                          blobs.push_back(container.add(noise(megabyte, i)));
                  }).code,
                  ErrorCode::Cancelled);
        EXPECT_EQ(asked, 3);
        EXPECT_EQ(outcomeOf([&] { container.publish(3, container.root(2)); }).code,
                  ErrorCode::Cancelled);
    }
    EXPECT_GE(blobs.size(), 16u);
    for (std::size_t i = 0; i < blobs.size(); ++i)
        EXPECT_EQ(container.read(blobs[i], "a blob"),
                  noise(megabyte, static_cast<std::uint32_t>(i)));
    container.abandon();

    session::Session session(m_file, {}, "test");
    session.begin("patient", "test", "", "");
    insert(session, points(100, 5));
    const Outcome cancelled = outcomeOf([&] { session.commit([&](int) { return ++asked < 9; }); });
    EXPECT_EQ(cancelled.code, ErrorCode::Cancelled) << cancelled.text;
    EXPECT_TRUE(session.pending());
    reader.go();
    EXPECT_EQ(reader.wait(), 0);
    session.commit();
    EXPECT_EQ(readAll(session).size(), m_before.size() + 100);
}

TEST_F(Store, WaitsForAReaderAsLongAsProgressSaysGoOn) {
    std::optional<OtherProcess> reader;
    reader.emplace([&](const auto& pause) {
        session::Session session(m_file, {}, "test");
        const store::Container::ReadScope scope(session.container());
        (void)session.rootNode(*session.state());
        pause();
        return 0;
    });
    reader->untilPause();
    session::Session session(m_file, {}, "test");
    session.begin("patient", "test", "", "");
    session.setMetaData("patience", "1");
    int asked = 0;
    session.commit([&](int) {
        if (++asked == 8)
            reader->go();
        return true;
    });
    EXPECT_GE(asked, 8);
    EXPECT_EQ(session.metaData("patience"), "1");
}

TEST_F(Store, AsksProgressWhereverItWaits) {
    OtherProcess reader([&](const auto& pause) {
        session::Session session(m_file, {}, "test");
        const store::Container::ReadScope scope(session.container());
        (void)session.rootNode(*session.state());
        pause();
        return 0;
    });
    reader.untilPause();
    session::Session session(m_file, {}, "test");
    int asked = 0;
    // A clean-up, and a commit that writes a batch before it publishes.
    EXPECT_EQ(outcomeOf([&] { session.vacuum([&](int) { return ++asked < 5; }); }).code,
              ErrorCode::Cancelled);
    session.begin("large", "test", "", "");
    for (int i = 0; i < 16; ++i)
        session.setMetaData("item" + std::to_string(i), std::string(megabyte, 'x'));
    asked = 0;
    EXPECT_EQ(outcomeOf([&] { query::commit(session, [&](int) { return ++asked < 12; }); }).code,
              ErrorCode::Cancelled);
    EXPECT_EQ(asked, 12);
    EXPECT_TRUE(session.pending());
    reader.go();
    EXPECT_EQ(reader.wait(), 0);
    query::commit(session);
    EXPECT_EQ(session.metaData("item15").size(), megabyte);
}

TEST_F(Store, LosesNothingOfATransactionWhenWritingFails) {
    OtherProcess child([&](const auto&) {
        std::signal(SIGXFSZ, SIG_IGN);
        session::Session session(m_file, {}, "test");
        session.begin("later", "test", "", "");
        insert(session, points(20'000, 7));
        const Points inMemory = readAll(session);
        const rlimit small{100'000, RLIM_INFINITY};
        ::setrlimit(RLIMIT_FSIZE, &small);
        for (int i = 0; i < 3; ++i)
            if (outcomeOf([&] { query::commit(session); }).code != ErrorCode::File ||
                !session.pending())
                return 1;
        if (readAll(session) != inMemory)
            return 2;
        const rlimit large{RLIM_INFINITY, RLIM_INFINITY};
        ::setrlimit(RLIMIT_FSIZE, &large);
        query::commit(session);
        return readAll(session) == inMemory ? 0 : 3;
    });
    EXPECT_EQ(child.wait(), 0);
    session::Session session(m_file, {}, "test");
    EXPECT_EQ(readAll(session).size(), m_before.size() + 20'000);
}

TEST_F(Store, LosesNoPointsWhenThereIsNoRoomToSortThem) {
    OtherProcess child([&](const auto&) {
        std::signal(SIGXFSZ, SIG_IGN);
        session::Session session(m_file, session::OpenSettings{0}, "test");
        session.begin("many", "test", "", "");
        std::size_t taken = 0;
        bool refused = false;
        const rlimit small{100'000, RLIM_INFINITY};
        ::setrlimit(RLIMIT_FSIZE, &small);
        for (std::uint32_t i = 0; i < 40; ++i) {
            const auto batch = points(20'000, i);
            while (outcomeOf([&] { insert(session, batch); }).code == ErrorCode::File) {
                refused = true;  // nothing of the batch was taken: it can be given again
                const rlimit large{RLIM_INFINITY, RLIM_INFINITY};
                ::setrlimit(RLIMIT_FSIZE, &large);
            }
            taken += batch.size();
        }
        query::commit(session);
        return refused && readAll(session).size() == m_before.size() + taken ? 0 : 1;
    });
    EXPECT_EQ(child.wait(), 0);
    session::Session session(m_file, {}, "test");
    EXPECT_EQ(readAll(session).size(), m_before.size() + 40 * 20'000);
}

TEST_F(Store, CleansUpOnADiskThatIsFull) {
    {
        session::Session session(m_file, {}, "test");
        for (std::uint32_t i = 0; i < 6; ++i)
            commitPoints(session, points(30'000, i));
        session.restore(2);
        session.finalize();
    }
    const auto before = static_cast<std::int64_t>(std::filesystem::file_size(m_file));
    {
        const SmallDisk disk(20'000);
        session::Session session(m_file, {}, "test");
        const Outcome outcome = outcomeOf([&] { session.vacuum(); });
        EXPECT_EQ(outcome.code, ErrorCode::File);
        EXPECT_NE(outcome.text.find("Free about one"), std::string::npos) << outcome.text;
    }
    {
        const SmallDisk disk(400'000);
        session::Session session(m_file, {}, "test");
        session.vacuum();
        EXPECT_GT(disk.room(), before / 2);
    }
    EXPECT_LT(std::filesystem::file_size(m_file), static_cast<std::uintmax_t>(before / 4));
    expectUnchanged();
}

TEST_F(Store, NeedsNoRoomForWhatItDeletes) {
    {
        session::Session session(m_file, {}, "test");
        session.begin("large", "test", "", "");
        session.setMetaData("large", std::string(20 * megabyte, 'x'));
        session.commit();
        session.restore(2);
        session.finalize();
    }
    const SmallDisk disk(400'000);
    session::Session session(m_file, {}, "test");
    session.vacuum();
    EXPECT_LT(std::filesystem::file_size(m_file), megabyte);
    EXPECT_EQ(readAll(session), m_before);
}

TEST_F(Store, TellsOfAStateThatVanishedAndLosesNoDataOfIt) {
    {
        session::Session session(m_file, {}, "test");
        commitPoints(session, points(300, 4));
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
                      (void)session.transactions();
                  }).code,
                  ErrorCode::Damaged)
            << damage;
        EXPECT_EQ(outcomeOf([&] {
                      session::Session session(damaged, {}, "test");
                      session.vacuum();
                  }).code,
                  ErrorCode::Damaged)
            << damage;
        EXPECT_EQ(std::filesystem::file_size(damaged), size) << damage;
    }
    // A blob that can't be found any more is not for cleaning up either.
    std::filesystem::copy_file(m_file, damaged, std::filesystem::copy_options::overwrite_existing);
    runSql(damaged, "UPDATE blob SET id = id + 4096 WHERE id = 3");
    session::Session session(damaged, {}, "test");
    EXPECT_EQ(outcomeOf([&] { session.vacuum(); }).code, ErrorCode::Damaged);
    runSql(damaged, "UPDATE blob SET id = 3 WHERE id = 4099");
    session.vacuum();
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
        other.discard({2});
        other.vacuum();
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
    insert(session, points(500, 2));
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
    insert(session, points(500, 3));
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
             [&] { session.vacuum(); }, [&] { session.finalize(); }})
        EXPECT_EQ(outcomeOf(change).code, ErrorCode::State);
    EXPECT_EQ(readAll(session), m_before);  // of the file that was opened
    std::filesystem::rename(m_file, other);
    std::filesystem::rename(away, m_file);
    EXPECT_FALSE(session.hasMoved());

    session.begin("moved meanwhile", "test", "", "");
    insert(session, points(100, 9));
    std::filesystem::rename(m_file, away);
    const Outcome outcome = outcomeOf([&] { session.commit(); });
    EXPECT_EQ(outcome.code, ErrorCode::State) << outcome.text;
    EXPECT_TRUE(session.pending());
    std::filesystem::rename(away, m_file);
    session.commit();
    EXPECT_EQ(readAll(session).size(), m_before.size() + 100);
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
        commitPoints(session, points(700, 6));
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
        EXPECT_EQ(outcomeOf([&] { session.vacuum(); }).code, ErrorCode::State);
    }
    overwrite(backup);
    {
        session::Session session(m_file, {}, "test");
        session.begin("x", "test", "", "");
        session.setMetaData("x", "1");
        overwrite(other);
        EXPECT_EQ(outcomeOf([&] { session.commit(); }).code, ErrorCode::State);
        session.rollback();
    }
    {
        session::Session now(m_file, {}, "test");
        EXPECT_EQ(readAll(now).size(), 700u);
    }
    // Its own backup is taken for what it is.
    overwrite(backup);
    session::Session session(m_file, {}, "test");
    commitPoints(session, points(10, 1));
    EXPECT_EQ(readAll(session).size(), m_before.size() + 10);
    overwrite(backup);
    EXPECT_EQ(readAll(session), m_before);
    commitPoints(session, points(20, 2));
    EXPECT_EQ(readAll(session).size(), m_before.size() + 20);
    session::Session again(m_file, {}, "test");
    EXPECT_EQ(readAll(again).size(), m_before.size() + 20);
}

TEST_F(Store, ReportsNothingAfterItHasPublished) {
    session::Session session(m_file, {}, "test");
    session.begin("done", "test", "", "");
    session.setMetaData("done", "1");
    session.commit([](int percent) { return percent < 100; });
    EXPECT_FALSE(session.pending());
    EXPECT_EQ(session.current(), 3u);
}

TEST_F(Store, RefusesTextsThatCouldNotBeReadAgain) {
    session::Session session(m_file, {}, "test");
    const std::string large(300 * megabyte, 'x');
    EXPECT_EQ(outcomeOf([&] { session.begin("t", "a", large, ""); }).code, ErrorCode::Argument);
    EXPECT_EQ(outcomeOf([&] { session.begin("t", "a", "", large); }).code, ErrorCode::Argument);
    EXPECT_EQ(outcomeOf([&] { session.begin(large, "a", "", ""); }).code, ErrorCode::Argument);
    // The largest that is taken, of characters that need most room, can be read.
    const std::string hard(16 * megabyte, '\1');
    session.begin("t", "a", hard, hard);
    session.commit();
    session::Session again(m_file, {}, "test");
    EXPECT_EQ(again.details(3).settings.size(), hard.size());
    EXPECT_GT(again.changelog().size(), 16 * megabyte);
}

TEST_F(Store, LeavesNoFileWhenACreationFails) {
    session::CreateSettings bad = settings(1, 200);
    bad.primaryAttribute.lodSettings = "{\"method\": \"no such method\"}";
    const std::string file = m_folder.file("b.qrbx");
    EXPECT_THROW(session::Session::create(file, bad, "test"), Failure);
    EXPECT_FALSE(std::filesystem::exists(file));
    {
        const SmallDisk disk(10'000);
        EXPECT_EQ(outcomeOf([&] { session::Session::create(file, settings(1, 9), "test"); }).code,
                  ErrorCode::File);
    }
    EXPECT_EQ(m_folder.entries(), 1u) << m_folder.names();
}

TEST_F(Store, RefusesAFormatOfTheFutureWithItsNumber) {
    runSql(m_file, "PRAGMA user_version = 3");
    const Outcome outcome = outcomeOf([&] { session::Session(m_file, {}, "test"); });
    EXPECT_EQ(outcome.code, ErrorCode::Format);
    EXPECT_NE(outcome.text.find("version 3"), std::string::npos) << outcome.text;
}

// A scan reads ahead on the worker threads while the same session begins, restores, discards and
// cleans up.
TEST_F(Store, IsChangedBesideItsOwnScan) {
    session::Session session(m_file, {}, "test");
    commitPoints(session, points(20'000, 3));
    const std::uint32_t kept = session.current();
    const Points truth = readAll(session);
    for (int round = 0; round < 40; ++round) {
        session.clearCache();
        query::SelectQuery query(session, {}, "amplitude < 8000");
        Point point[100];
        query.bind("xyz", QRB_DATA_TYPE_DOUBLE, &point[0].x, sizeof(Point));
        for (int i = 0; i < 10; ++i)
            (void)query.next(100);
        session.begin("beside", "test", "", "");
        if (round % 2 == 0) {
            session.rollback();
        } else {
            session.setMetaData("round", std::to_string(round));
            session.commit();
        }
        (void)query.next(100);
        session.restore(kept);
        (void)query.next(100);
        session.finalize();
        session.vacuum();
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
                const std::vector<std::uint32_t> ids = session.transactions();
                if (restores) {
                    session.restore(ids.back());
                } else {
                    session.begin("new", "test", "", "");
                    session.commit();
                    session.restore(1);
                    session.discard({session.transactions().back()});
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

}  // namespace
}  // namespace tarvo::engine
