// The file under bad conditions: crashes, full disks, two writers, damage.
#include "tests/engine/database.h"

#include <gtest/gtest.h>

#include <sys/resource.h>
#include <sys/wait.h>
#include <csignal>
#include <fstream>

namespace tarvo::engine {
namespace {

using namespace testing;

std::vector<char> contents(const std::string& file) {
    std::ifstream in(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), {}};
}

void write(const std::string& file, const std::vector<char>& bytes) {
    std::ofstream(file, std::ios::binary)
        .write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
}

// A file with two transactions, a metadata item and a few leaves.
Points makeDatabase(const std::string& file) {
    session::Session::create(file, settings(1, 200), "test", amplitudeOnly());
    session::Session session(file, {}, "test");
    session.begin("points", "test", "", "");
    insert(session, somePoints(1500, 1));
    session.metaData().set("note", "{\"text\":\"a note\"}");
    query::commit(session);
    return readAll(session);
}

// Runs the function in a process of its own and gives its exit status.
template <typename Function>
int inChild(Function&& function) {
    const pid_t child = ::fork();
    if (child == 0) {
        int status = 100;
        try {
            status = function();
        } catch (...) {
        }
        ::_exit(status);
    }
    int status = 0;
    ::waitpid(child, &status, 0);
    return WIFSIGNALED(status) ? 1000 + WTERMSIG(status) : WEXITSTATUS(status);
}

TEST(File, KeepsWhatWasCommittedWhenAWriterIsKilled) {
    TemporaryFolder folder;
    const std::string file = folder.file("a.qrbx");
    const Points before = makeDatabase(file);
    const auto size = std::filesystem::file_size(file);
    for (int round = 0; round < 3; ++round)
        EXPECT_EQ(inChild([&] {
                      session::Session session(file, {}, "test");
                      session.begin("lost", "test", "", "");
                      insert(session, somePoints(20'000, 2));
                      (void)readAll(session);  // stages blobs
                      ::raise(SIGKILL);
                      return 0;
                  }),
                  1000 + SIGKILL);
    session::Session session(file, {}, "test");
    EXPECT_EQ(readAll(session), before);
    EXPECT_EQ(session.history().transactions(), (std::vector<std::uint32_t>{1, 2}));
    // The next writer uses the space again.
    session.begin("more", "test", "", "");
    insert(session, somePoints(100, 3));
    query::commit(session);
    EXPECT_EQ(readAll(session).size(), before.size() + 100);
    EXPECT_LT(std::filesystem::file_size(file), size + 2'000'000);
}

TEST(File, KeepsWhatWasCommittedWhenTheDiskIsFull) {
    TemporaryFolder folder;
    const std::string file = folder.file("a.qrbx");
    const Points before = makeDatabase(file);
    const int status = inChild([&] {
        std::signal(SIGXFSZ, SIG_IGN);
        const rlimit limit{300'000, 300'000};  // no file may grow beyond
        ::setrlimit(RLIMIT_FSIZE, &limit);
        session::Session session(file, session::OpenSettings{0}, "test");
        session.begin("too much", "test", "", "");
        try {
            for (int i = 0; i < 20; ++i)
                insert(session, somePoints(20'000, static_cast<std::uint32_t>(i)));
            query::commit(session);
            return 1;
        } catch (const Failure& failure) {
            if (failure.code() != ErrorCode::File)
                return 2;
        }
        try {
            query::commit(session);  // must not publish a part
            return 3;
        } catch (const Failure&) {
        }
        session.rollback();
        return readAll(session) == before ? 0 : 4;
    });
    EXPECT_EQ(status, 0);
    session::Session session(file, {}, "test");
    EXPECT_EQ(readAll(session), before);
    commitPoints(session, somePoints(10, 5));
    EXPECT_EQ(readAll(session).size(), before.size() + 10);
}

TEST(File, HasOneWriterAtATimeAndReadersBesideIt) {
    TemporaryFolder folder;
    const std::string file = folder.file("a.qrbx");
    const Points before = makeDatabase(file);
    session::Session writer(file, {}, "test");
    session::Session other(file, {}, "test");
    writer.begin("first", "test", "", "");
    try {
        other.begin("second", "test", "", "");
        FAIL() << "two writers";
    } catch (const Failure& failure) {
        EXPECT_EQ(failure.code(), ErrorCode::Busy);
    }
    insert(writer, somePoints(50, 9));
    (void)readAll(writer);  // staged
    EXPECT_EQ(readAll(other), before);
    query::commit(writer);
    // Another handle sees the new state at its next query.
    EXPECT_EQ(readAll(other).size(), before.size() + 50);
    EXPECT_EQ(other.current(), 3u);
    other.begin("second", "test", "", "");
    insert(other, somePoints(50, 10));
    other.rollback();
    writer.begin("third", "test", "", "");
    writer.rollback();
    EXPECT_EQ(folder.entries(), 1u);
}

TEST(File, IsReadByAnotherProcessWhileItStaysOpen) {
    TemporaryFolder folder;
    const std::string file = folder.file("a.qrbx");
    const Points before = makeDatabase(file);
    // The child reads, reads beside a pending transaction, and after its commit.
    int toChild[2];
    int toParent[2];
    ASSERT_EQ(::pipe(toChild) + ::pipe(toParent), 0);
    const ::pid_t child = ::fork();
    if (child == 0) {
        int fault = 0;
        try {
            session::Session reader(file, {}, "test");
            for (const std::size_t expected : {before.size(), before.size(), before.size() + 50}) {
                char turn = 0;
                if (::read(toChild[0], &turn, 1) != 1 || readAll(reader).size() != expected)
                    ++fault;
                if (::write(toParent[1], &turn, 1) != 1)
                    ++fault;
            }
        } catch (...) {
            fault = 100;
        }
        ::_exit(fault);
    }
    session::Session writer(file, {}, "test");
    const auto childReads = [&] {
        char turn = 'x';
        EXPECT_EQ(::write(toChild[1], &turn, 1), 1);
        EXPECT_EQ(::read(toParent[0], &turn, 1), 1);
    };
    childReads();
    writer.begin("write", "test", "", "");
    insert(writer, somePoints(50, 9));
    (void)readAll(writer);  // staged
    childReads();
    query::commit(writer);
    childReads();
    int status = -1;
    ::waitpid(child, &status, 0);
    EXPECT_EQ(status, 0);
    for (const int end : {toChild[0], toChild[1], toParent[0], toParent[1]})
        ::close(end);
}

// What a reader of a damaged file may see: the truth, or an error.
void expectTruthOrFailure(const std::string& file, const Points& truth, int& silent,
                          const std::string& what) {
    try {
        session::Session session(file, {}, "test");
        const Points points = readAll(session);
        const std::string note = session.metaData().get("note");
        const std::string log = session.changelog().text();
        const std::uint64_t count = countOf(session, "amplitude < 4000");
        std::uint64_t expected = 0;
        for (const auto& [id, point] : truth)
            expected += point.amplitude < 4000;
        EXPECT_TRUE(points == truth && count == expected && note == "{\"text\":\"a note\"}" &&
                    log.starts_with("[#1] Database creation\n"))
            << "wrong values without an error: " << what;
        ++silent;
    } catch (const Failure&) {
    }
}

TEST(File, CutShortGivesAnErrorOrTheTruth) {
    TemporaryFolder folder;
    const std::string file = folder.file("a.qrbx");
    const Points truth = makeDatabase(file);
    const std::vector<char> whole = contents(file);
    const std::string cut = folder.file("cut.qrbx");
    int silent = 0;
    for (std::size_t length = 0; length < whole.size(); length += 1 + whole.size() / 150) {
        write(cut, {whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(length)});
        expectTruthOrFailure(cut, truth, silent, "length " + std::to_string(length));
    }
    EXPECT_EQ(silent, 0);
}

// With right checksums: rows are sorted and found by values that such a table has no room for.
TEST(File, WhoseKeysAreNoKeysIsDamaged) {
    using Record = schema::AttributeRecord;
    const auto read = [](void (*spoil)(Record&, Record&)) -> std::string {
        Record primary = record("xyz", -100, 100, 1, 3);
        Record id = record(std::string(schema::pointIdName), 0, 1e6);
        spoil(primary, id);
        schema::AttributeTable table;
        table.all().emplace_back(primary, 1);
        table.all().emplace_back(id, 2);
        try {
            (void)session::attributesFromText(session::attributesText(table));
        } catch (const Failure& failure) {
            return failure.what();
        }
        return "";
    };
    EXPECT_EQ(read([](Record&, Record&) {}), "");
    const std::string one = "The file is damaged: all its points have one ";
    EXPECT_EQ(read([](Record& primary, Record&) { primary.storageClass = 1; }), one + "\"xyz\".");
    EXPECT_EQ(read([](Record&, Record& id) { id.storageClass = 1; }), one + "\"tarvo.id\".");
    const std::string whole = "The file is damaged: its point id is no whole number.";
    EXPECT_EQ(read([](Record&, Record& id) { id.length = 2; }), whole);
    EXPECT_EQ(read([](Record&, Record& id) { id.resolution = 0; }), whole);
}

TEST(File, ThatIsNoDatabaseIsRefusedWithAReason) {
    TemporaryFolder folder;
    const std::string text = folder.file("text.qrbx");
    write(text, std::vector<char>(10'000, 'x'));
    for (const std::string& file : {text, folder.file("missing.qrbx"), folder.file(".")}) {
        EXPECT_FALSE(store::Container::recognises(file));
        EXPECT_THROW(session::Session(file, {}, "test"), Failure) << file;
    }
    const std::string file = folder.file("a.qrbx");
    makeDatabase(file);
    EXPECT_TRUE(store::Container::recognises(file));
    try {
        session::Session::create(file, settings(1, 10), "test");
        FAIL() << "an existing file was overwritten";
    } catch (const Failure& failure) {
        EXPECT_EQ(failure.code(), ErrorCode::Exists);
    }
    // Settings that no file can have leave no file.
    session::CreateSettings bad = settings(1, 0);
    EXPECT_THROW(session::Session::create(folder.file("b.qrbx"), bad, "test"), Failure);
    EXPECT_FALSE(std::filesystem::exists(folder.file("b.qrbx")));
}

TEST(Transactions, KeepTheirRecordAndEndAsTold) {
    TemporaryFolder folder;
    const std::string file = folder.file("a.qrbx");
    makeDatabase(file);
    session::Session session(file, {}, "the layer");
    EXPECT_THROW(query::commit(session), Failure);
    EXPECT_THROW(session.rollback(), Failure);
    EXPECT_THROW(session.metaData().set("a", "1"), Failure);
    EXPECT_EQ(session.begin("Title", "Agent", "Comments", "{\"a\":1}"), 3u);
    EXPECT_THROW(session.begin("", "", "", ""), Failure);
    EXPECT_TRUE(session.pending());
    EXPECT_EQ(session.current(), 2u);
    EXPECT_THROW(session.metaData().set("", "{}"), Failure);
    session.metaData().set("kept", "[1, 2]");
    session.metaData().remove("note");
    // A commit that is told to stop leaves everything as it is.
    EXPECT_THROW(query::commit(session, [](int) { return false; }), Failure);
    EXPECT_TRUE(session.pending());
    query::commit(session);
    const session::TransactionRecord record = session.history().details(3);
    EXPECT_EQ(record.title, "Title");
    EXPECT_EQ(record.agent, "Agent");
    EXPECT_EQ(record.comments, "Comments");
    EXPECT_EQ(record.settings, "{\"a\":1}");
    EXPECT_EQ(record.qrb, session::libraryVersion() + "\nthe layer");
    EXPECT_LE(record.start, record.stop);
    session::Session again(file, {}, "test");
    EXPECT_EQ(again.metaData().get("kept"), "[1, 2]");
    EXPECT_THROW(again.metaData().get("note"), Failure);
    EXPECT_THROW(again.history().details(9), Failure);
}

}  // namespace
}  // namespace tarvo::engine
