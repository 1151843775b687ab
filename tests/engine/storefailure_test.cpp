// Writing that has to wait, finds no room or fails: nothing is lost.
#include "tests/engine/smalldisk.h"
#include "tests/engine/store.h"
#include "tests/files/foldersyncs.h"

#include "engine/query/commit.h"

#include <sys/resource.h>
#include <csignal>
#include <optional>

namespace tarvo::engine {
namespace {

using namespace testing;

TEST_F(Store, StaysPendingWhileAReaderOfAnotherProcessHoldsTheFile) {
    OtherProcess reader([&](const auto& pause) {
        session::Session session(m_file, {}, "test");
        const session::Blobs::Scope scope(session.blobs());
        (void)session.blobs().rootNode(*session.state());  // the file is read, and stays so
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
    insert(session, somePoints(100, 5));
    const Outcome cancelled =
        outcomeOf([&] { query::commit(session, [&](int) { return ++asked < 9; }); });
    EXPECT_EQ(cancelled.code, ErrorCode::Cancelled) << cancelled.text;
    EXPECT_TRUE(session.pending());
    reader.go();
    EXPECT_EQ(reader.wait(), 0);
    query::commit(session);
    EXPECT_EQ(readAll(session).size(), m_before.size() + 100);
}

TEST_F(Store, WaitsForAReaderAsLongAsProgressSaysGoOn) {
    std::optional<OtherProcess> reader;
    reader.emplace([&](const auto& pause) {
        session::Session session(m_file, {}, "test");
        const session::Blobs::Scope scope(session.blobs());
        (void)session.blobs().rootNode(*session.state());
        pause();
        return 0;
    });
    reader->untilPause();
    session::Session session(m_file, {}, "test");
    session.begin("patient", "test", "", "");
    session.metaData().set("patience", "1");
    int asked = 0;
    query::commit(session, [&](int) {
        if (++asked == 8)
            reader->go();
        return true;
    });
    EXPECT_GE(asked, 8);
    EXPECT_EQ(session.metaData().get("patience"), "1");
}

TEST_F(Store, AsksProgressWhereverItWaits) {
    OtherProcess reader([&](const auto& pause) {
        session::Session session(m_file, {}, "test");
        const session::Blobs::Scope scope(session.blobs());
        (void)session.blobs().rootNode(*session.state());
        pause();
        return 0;
    });
    reader.untilPause();
    session::Session session(m_file, {}, "test");
    int asked = 0;
    // A clean-up, and a commit that writes a batch before it publishes.
    EXPECT_EQ(outcomeOf([&] { session.history().vacuum([&](int) { return ++asked < 5; }); }).code,
              ErrorCode::Cancelled);
    // Also behind the part of a commit that puts the changes of queries in.
    session.begin("points", "test", "", "");
    insert(session, somePoints(10, 3));
    asked = 0;
    EXPECT_EQ(outcomeOf([&] { query::commit(session, [&](int) { return ++asked < 40; }); }).code,
              ErrorCode::Cancelled);
    session.rollback();
    session.begin("large", "test", "", "");
    for (int i = 0; i < 16; ++i)
        session.metaData().set("item" + std::to_string(i), std::string(megabyte, 'x'));
    asked = 0;
    EXPECT_EQ(outcomeOf([&] { query::commit(session, [&](int) { return ++asked < 12; }); }).code,
              ErrorCode::Cancelled);
    EXPECT_EQ(asked, 12);
    EXPECT_TRUE(session.pending());
    reader.go();
    EXPECT_EQ(reader.wait(), 0);
    query::commit(session);
    EXPECT_EQ(session.metaData().get("item15").size(), megabyte);
}

// A power cut must not bring the journal back, which would undo the commit.
TEST_F(Store, SyncsTheFolderThatTheJournalWasIn) {
    const TemporaryFolder elsewhere;
    const std::string link = elsewhere.file("link.qrbx");
    const std::filesystem::path file = std::filesystem::absolute(m_file);
    std::filesystem::create_symlink(file, link);
    for (const std::string& name : {m_file, link}) {
        session::Session session(name, {}, "test");
        session.begin("durable", "test", "", "");
        session.metaData().set("place", "1");
        lastSyncedNames().clear();
        query::commit(session);
        EXPECT_TRUE(lastSyncedNames().contains(file.filename().string())) << name;
        EXPECT_FALSE(lastSyncedNames().contains(file.filename().string() + "-journal")) << name;
    }
}

TEST_F(Store, LosesNothingOfATransactionWhenWritingFails) {
    OtherProcess child([&](const auto&) {
        std::signal(SIGXFSZ, SIG_IGN);
        session::Session session(m_file, {}, "test");
        session.begin("later", "test", "", "");
        insert(session, somePoints(20'000, 7));
        const Points inMemory = readAll(session);
        const rlimit small{100'000, RLIM_INFINITY};
        ::setrlimit(RLIMIT_FSIZE, &small);
        for (int i = 0; i < 3; ++i) {
            const Outcome outcome = outcomeOf([&] { query::commit(session); });
            if (outcome.code != ErrorCode::File || !session.pending() ||
                outcome.text.find("a limit on the size of files") == std::string::npos)
                return 1;
        }
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
            const auto batch = somePoints(60'000, i);
            while (outcomeOf([&] { insert(session, batch); }).code == ErrorCode::File) {
                refused = true;  // nothing of the batch was taken: it can be given again
                const rlimit large{RLIM_INFINITY, RLIM_INFINITY};
                ::setrlimit(RLIMIT_FSIZE, &large);
            }
            taken += batch.size();
        }
        query::commit(session);
        return refused && session.state()->pointCount == m_before.size() + taken ? 0 : 1;
    });
    EXPECT_EQ(child.wait(), 0);
    session::Session session(m_file, {}, "test");
    EXPECT_EQ(readAll(session).size(), m_before.size() + 40 * 60'000);
}

// The disk may be full in the middle of a batch and at its very end.
TEST_F(Store, KeepsABatchUntilItIsInTheFile) {
    const std::string original = m_file + ".original";
    std::filesystem::copy_file(m_file, original);
    std::vector<Bytes> contents;
    for (std::uint32_t i = 0; i < 17; ++i)
        contents.push_back(noise(megabyte, i));
    int failures = 0;
    for (const int tenths : {100, 160, 165, 170, 200}) {
        std::filesystem::copy_file(original, m_file,
                                   std::filesystem::copy_options::overwrite_existing);
        SmallDisk disk(std::int64_t(tenths) * 100'000);
        store::Container container(m_file);
        container.beginWriting();
        std::vector<BlobRef> blobs;
        const auto addAll = [&] {
            while (blobs.size() < contents.size())
                blobs.push_back(container.add(contents[blobs.size()]));
        };
        failures += outcomeOf(addAll).code == ErrorCode::File;
        disk.setRoom(100'000'000);
        addAll();
        container.publish(3, container.root(2));
        for (std::size_t i = 0; i < blobs.size(); ++i)
            ASSERT_EQ(container.read(blobs[i], "a blob"), contents[i]) << tenths;
    }
    EXPECT_GT(failures, 1);
    EXPECT_LT(failures, 5);
}

TEST_F(Store, CleansUpOnADiskThatIsFull) {
    {
        session::Session session(m_file, {}, "test");
        for (std::uint32_t i = 0; i < 6; ++i)
            commitPoints(session, somePoints(30'000, i));
        session.restore(2);
        session.history().finalize();
    }
    const auto before = static_cast<std::int64_t>(std::filesystem::file_size(m_file));
    {
        const SmallDisk disk(20'000);
        session::Session session(m_file, {}, "test");
        const Outcome outcome = outcomeOf([&] { session.history().vacuum(); });
        EXPECT_EQ(outcome.code, ErrorCode::File);
        EXPECT_NE(outcome.text.find("Free about one"), std::string::npos) << outcome.text;
    }
    {
        const SmallDisk disk(68'000);  // enough for some steps, not for the first
        session::Session session(m_file, {}, "test");
        session.history().vacuum();
        EXPECT_GT(disk.room(), before / 2);
    }
    EXPECT_LT(std::filesystem::file_size(m_file), static_cast<std::uintmax_t>(before / 4));
    expectUnchanged();
}

TEST_F(Store, NeedsNoRoomForWhatItDeletes) {
    {
        session::Session session(m_file, {}, "test");
        session.begin("large", "test", "", "");
        session.metaData().set("large", std::string(20 * megabyte, 'x'));
        query::commit(session);
        session.restore(2);
        session.history().finalize();
    }
    const SmallDisk disk(400'000);
    session::Session session(m_file, {}, "test");
    session.history().vacuum();
    EXPECT_LT(std::filesystem::file_size(m_file), megabyte);
    EXPECT_EQ(readAll(session), m_before);
}

TEST_F(Store, ReportsNothingAfterItHasPublished) {
    session::Session session(m_file, {}, "test");
    session.begin("done", "test", "", "");
    session.metaData().set("done", "1");
    query::commit(session, [](int percent) { return percent < 100; });
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
    query::commit(session);
    session::Session again(m_file, {}, "test");
    EXPECT_EQ(again.history().details(3).settings.size(), hard.size());
    EXPECT_GT(again.changelog().text().size(), 16 * megabyte);

    session.begin("t", "a", hard, hard);
    const std::string rest = " would be too large to be read again.";
    EXPECT_EQ(outcomeOf([&] { session.changelog().import(std::string(48 * megabyte, '\1')); }).text,
              "The changelog" + rest);
    const std::string name(245, '\1');
    for (int i = 0; i < 45'000; ++i)
        session.metaData().set(name + std::to_string(i), "");
    EXPECT_EQ(outcomeOf([&] { query::commit(session); }).text,
              "The list of what the transaction holds" + rest);
    EXPECT_TRUE(session.pending());
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

}  // namespace
}  // namespace tarvo::engine
