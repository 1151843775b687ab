// Disks that fail: what is told of them, and what is in the file then. (tests/reliability tries the
// programs on such disks.)
#include "tests/engine/smalldisk.h"
#include "tests/engine/store.h"
#include "tests/files/foldersyncs.h"

#include "engine/store/connection.h"

#include <sys/mman.h>

#include <cerrno>
#include <vector>

namespace tarvo::engine {
namespace {

using namespace testing;
using Call = SmallDisk::Call;

class DiskFaults : public Store {
protected:
    static constexpr std::int64_t room = 1 << 30;
    // What a commit of an item comes to, in a copy of the file.
    Outcome commit(const std::string& name) {
        std::filesystem::copy_file(m_file, name, std::filesystem::copy_options::overwrite_existing);
        session::Session session(name, {}, "test");
        session.begin("item", "test", "", "");
        session.metaData().set("item", "1");
        folderSyncs().count = 0;
        const Outcome outcome = outcomeOf([&] { query::commit(session); });
        folderSyncs().failing = 0;
        return outcome;
    }
    const std::string m_copy = m_folder.file("copy.qrbx");
};

TEST_F(DiskFaults, AreToldFromDamageAndFromFilesOfOthers) {
    const std::string disk =
        "Reading or writing the file failed. What was committed is safe; check the disk.";
    struct Case {
        Call call;
        int result;
        int systemError;
        ErrorCode code;
        std::string text;
        bool isTold;  // where a database is looked for
    };
    const Case cases[] = {
        {Call::Read, SQLITE_IOERR_READ, EIO, ErrorCode::File, disk, true},
        {Call::Read, SQLITE_IOERR_CORRUPTFS, EIO, ErrorCode::File, disk, true},
        {Call::Read, SQLITE_IOERR_CORRUPTFS, ENXIO, ErrorCode::File, disk, true},
        {Call::Read, SQLITE_IOERR_CORRUPTFS, ERANGE, ErrorCode::File, disk, true},
        {Call::Read, SQLITE_CORRUPT, 0, ErrorCode::Damaged,
         "The file is damaged. Restore it from a backup.", false},
        {Call::Read, SQLITE_NOMEM, 0, ErrorCode::Memory, "Out of memory.", false},
        {Call::Open, SQLITE_CANTOPEN, EIO, ErrorCode::File, disk, true},
        {Call::Open, SQLITE_CANTOPEN, EACCES, ErrorCode::File, "The file can't be opened.", false},
        {Call::Open, SQLITE_PERM, 0, ErrorCode::File, "The file can't be read or written.", false},
    };
    for (const Case& one : cases) {
        SCOPED_TRACE(one.text + " " + std::to_string(one.systemError));
        SmallDisk disk(room);
        disk.fail(one.call, one.result, one.systemError);
        const Outcome outcome = outcomeOf([&] { session::Session(m_file, {}, "test"); });
        EXPECT_EQ(outcome.code, one.code);
        EXPECT_EQ(outcome.text, one.text);
        bool recognised = false;
        const Outcome looking =
            outcomeOf([&] { recognised = store::Container::recognises(m_file); });
        EXPECT_EQ(looking.text, one.isTold ? one.text : "");
        EXPECT_EQ(recognised, one.code == ErrorCode::Damaged);
    }
    // Of a database that is open the container calls a page that can't be read a damaged one.
    for (const int systemError : {EIO, ENXIO, ERANGE, 0}) {
        SmallDisk small(room);
        session::Session session(m_file, {}, "test");
        small.fail(Call::Read, SQLITE_IOERR_CORRUPTFS, systemError);
        const Outcome outcome = outcomeOf([&] { (void)session.history().transactions(); });
        EXPECT_EQ(outcome.text,
                  systemError != 0 ? disk : "The file is damaged. Restore it from a backup.")
            << systemError;
    }
    expectUnchanged();
}

// Neither the file nor its name is lost by a power cut when it has been made.
TEST_F(DiskFaults, TakeAwayNoFileThatWasMade) {
    lastSyncedNames().clear();
    session::Session::create(m_copy, settings(1, 200), "test");
    EXPECT_TRUE(lastSyncedNames().contains("copy.qrbx"));
}

// The folder that the journal was in, by the container and after it: whichever fails.
TEST_F(DiskFaults, ThatMayUndoACommitAreToldWithIt) {
    EXPECT_EQ(commit(m_copy).text, "");
    const int syncs = folderSyncs().count;
    ASSERT_GE(syncs, 3);
    // Behind the last: the container's own.
    for (int failing = 1; failing <= syncs + 1; ++failing) {
        SCOPED_TRACE("sync " + std::to_string(failing) + " of " + std::to_string(syncs));
        folderSyncs().failing = failing;
        SmallDisk disk(room);
        if (failing > syncs)
            disk.fail(Call::Remove, SQLITE_IOERR_DIR_FSYNC, EIO);
        const Outcome outcome = commit(m_copy);
        disk.fail(Call::None, SQLITE_OK);
        EXPECT_EQ(outcome.code, ErrorCode::File);
        EXPECT_EQ(outcome.text,
                  "The change is in the file, but the file's folder could not be synced: the disk "
                  "may be failing.");
        session::Session session(m_copy, {}, "test");
        EXPECT_EQ(readAll(session), m_before);
        EXPECT_EQ(session.state()->metaData.count("item"), failing == syncs ? 1u : 0u);
    }
}

// The journal has gone, and with that the change is made, whatever is told of its removal.
TEST_F(DiskFaults, AtTheEndOfACommitDoNotMakeItAFailedOne) {
    {
        SmallDisk disk(room);
        disk.fail(Call::Remove, SQLITE_IOERR_DELETE, EIO);
        store::Container container(m_file);
        container.beginWriting();
        std::vector<BlobRef> blobs;
        // A batch that is in the file though its commit failed is written once more.
        Outcome outcome;
        for (std::uint32_t i = 0; i < 20; ++i) {
            outcome = outcomeOf([&] { blobs.push_back(container.add(noise(megabyte, i))); });
            if (outcome.text.empty())
                continue;
            EXPECT_EQ(outcome.code, ErrorCode::File) << outcome.text;
            disk.fail(Call::None, SQLITE_OK);
            container.add(noise(10, 0));  // takes the writer's place
            disk.fail(Call::Remove, SQLITE_IOERR_DELETE, EIO);
            for (std::uint32_t more = 20; more < 40; ++more)
                if (!outcomeOf([&] {
                         blobs.push_back(container.add(noise(megabyte, more)));
                     }).text.empty())
                    break;
            disk.fail(Call::None, SQLITE_OK);
            container.add(noise(10, 0));
            break;
        }
        for (const BlobRef& blob : blobs)
            EXPECT_EQ(container.read(blob, "a blob").size(), megabyte);
        disk.fail(Call::Remove, SQLITE_IOERR_DELETE, EIO);
        const std::string root = container.root(2);
        EXPECT_EQ(outcomeOf([&] { container.publish(3, root); }).text, "");
        EXPECT_FALSE(container.writing());
        EXPECT_EQ(container.current(), 3u);
    }
    store::Container container(m_file);
    EXPECT_EQ(container.transactions(), (std::vector<std::uint32_t>{1, 2, 3}));
    container.beginWriting();
    container.add(noise(100, 1));
    {
        const std::string root = container.root(2);
        EXPECT_EQ(outcomeOf([&] { container.publish(4, root); }).text, "");
    }
}

TEST_F(DiskFaults, AtTheEndOfACommitWhoseFolderIsNotSyncedAreTold) {
    SmallDisk disk(room);
    store::Container container(m_file);
    container.beginWriting();
    for (std::uint32_t i = 0; i < 20; ++i)
        container.add(noise(megabyte, i));
    disk.fail(Call::Remove, SQLITE_IOERR_DELETE, EIO);
    folderSyncs() = {0, 1};
    const std::string root = container.root(2);
    const Outcome outcome = outcomeOf([&] { container.publish(3, root); });
    folderSyncs().failing = 0;
    EXPECT_NE(outcome.text.find("could not be synced"), std::string::npos) << outcome.text;
    EXPECT_EQ(container.current(), 3u);
}

TEST_F(DiskFaults, OrLimitsRefuseAValueBeforeItIsTaken) {
    const std::size_t most = store::maximumBlob - 1024;
    void* const memory =
        ::mmap(nullptr, most + 1, PROT_READ, MAP_PRIVATE | MAP_ANONYMOUS | MAP_NORESERVE, -1, 0);
    ASSERT_NE(memory, MAP_FAILED);
    store::Container container(m_file);
    container.beginWriting();
    const Outcome outcome = outcomeOf([&] {
        container.add({static_cast<const std::uint8_t*>(memory), most + 1});
    });
    EXPECT_EQ(outcome.code, ErrorCode::Argument);
    EXPECT_EQ(outcome.text,
              "A value of " + std::to_string(most + 1) + " bytes is too large to be stored.");
    container.add(noise(10, 1));
    ::munmap(memory, most + 1);
}

}  // namespace
}  // namespace tarvo::engine
