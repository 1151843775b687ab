#include "engine/store/writerlock.h"

#include "engine/base/error.h"

#ifdef _WIN32
#include "files/path.h"

#include <windows.h>
#else
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>
#endif

#include <cerrno>
#include <cstdint>
#include <cstring>
#include <mutex>
#include <utility>
#include <vector>

namespace tarvo::engine::store {

namespace {

// No file reaches it, and the container's own locks lie elsewhere.
constexpr std::int64_t lockedByte = std::int64_t(1) << 62;

[[noreturn]] void throwBusy(const std::string& fileName) {
    throw Failure(ErrorCode::Busy,
                  "Another program is changing the database. Try again when it is done.",
                  "File: " + fileName);
}

[[noreturn]] void throwNotWritable(const std::string& fileName, const std::string& reason) {
    throw Failure(ErrorCode::File, "The database can't be changed: " + reason + ".",
                  "File: " + fileName);
}

}  // namespace

#ifdef _WIN32

const HANDLE closedFile = INVALID_HANDLE_VALUE;

struct OpenFile::Descriptors {
    HANDLE file = closedFile;
    ~Descriptors() {
        if (isOpen())
            CloseHandle(file);
    }
    bool isOpen() const { return file != closedFile; }
    static OVERLAPPED place() {
        OVERLAPPED place = {};
        place.Offset = static_cast<DWORD>(lockedByte);
        place.OffsetHigh = static_cast<DWORD>(lockedByte >> 32);
        return place;
    }
    void open(const std::string& fileName) {
        file = CreateFileW(files::pathOf(fileName).c_str(), GENERIC_READ | GENERIC_WRITE,
                           FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                           OPEN_EXISTING, 0, nullptr);
        if (file == INVALID_HANDLE_VALUE)
            throwNotWritable(fileName, "it can't be opened for writing");
    }
    void lock(const std::string& fileName) {
        OVERLAPPED where = place();
        if (!LockFileEx(file, LOCKFILE_EXCLUSIVE_LOCK | LOCKFILE_FAIL_IMMEDIATELY, 0, 1, 0, &where))
            throwBusy(fileName);
    }
    void unlock() {
        OVERLAPPED where = place();
        UnlockFileEx(file, 0, 1, 0, &where);
    }
};

#else

constexpr int closedFile = -1;

struct OpenFile::Descriptors {
    int file = closedFile;    // what the lock is taken with
    std::vector<int> strays;  // opened by a name that had come to lead here; never used
    ~Descriptors() {
        if (isOpen())
            ::close(file);
        for (const int stray : strays)
            ::close(stray);
    }
    bool isOpen() const { return file != closedFile; }
    // Locks of the open file, not of the process, are what other descriptors of this process can't
    // drop; where a system has none, flock is as good on its local disks.
    void lock(const std::string& fileName) const {
#ifdef F_OFD_SETLK
        if (change(F_WRLCK))
            return;
#else
        if (::flock(file, LOCK_EX | LOCK_NB) == 0)
            return;
#endif
        if (errno == EAGAIN || errno == EACCES || errno == EWOULDBLOCK)
            throwBusy(fileName);
        throwNotWritable(fileName, std::string("it can't be locked: ") + std::strerror(errno));
    }
    void unlock() const {
#ifdef F_OFD_SETLK
        change(F_UNLCK);
#else
        ::flock(file, LOCK_UN);
#endif
    }
#ifdef F_OFD_SETLK
    bool change(short type) const {
        struct flock lock = {};
        lock.l_type = type;
        lock.l_whence = SEEK_SET;
        lock.l_start = lockedByte;
        lock.l_len = 1;
        return ::fcntl(file, F_OFD_SETLK, &lock) == 0;
    }
#endif
};

#endif

// The files that this process has open. Its mutex guards all that happens to them here, their
// closing included: nobody opens one of them while its descriptors are being closed.
struct OpenFile::Registry {
    std::mutex mutex;
    std::vector<std::unique_ptr<OpenFile>> files;

    static const std::shared_ptr<Registry>& instance() {
        static const auto registry = std::make_shared<Registry>();
        return registry;
    }
    OpenFile* find(const files::Identity& identity) const {
        for (const std::unique_ptr<OpenFile>& file : files)
            if (file->identity() == identity)
                return file.get();
        return nullptr;
    }
};

std::shared_ptr<OpenFile> OpenFile::of(const std::string& fileName) {
    const std::optional<files::Identity> identity = files::identityOf(fileName);
    if (!identity)
        throw Failure(ErrorCode::NotFound, "The file \"" + fileName + "\" does not exist.");
    const std::shared_ptr<Registry> registry = Registry::instance();
    OpenFile* file = nullptr;
    {
        const std::lock_guard guard(registry->mutex);
        file = registry->find(*identity);
        if (!file)
            file =
                registry->files.emplace_back(std::make_unique<OpenFile>(registry, *identity)).get();
        ++file->m_shares;
    }
    return {file, [](OpenFile* shared) { shared->release(); }};
}

void OpenFile::release() {
    const std::shared_ptr<Registry> registry = m_registry;
    const std::lock_guard guard(registry->mutex);
    if (--m_shares == 0)
        std::erase_if(registry->files, [this](const auto& each) { return each.get() == this; });
}

OpenFile::OpenFile(std::shared_ptr<Registry> registry, const files::Identity& identity)
    : m_registry(std::move(registry)), m_identity(identity) {}
OpenFile::~OpenFile() = default;

WriterLock::WriterLock(std::shared_ptr<OpenFile> file, const std::string& fileName)
    : m_file(std::move(file)) {
    OpenFile::Registry& registry = *m_file->m_registry;
    const std::lock_guard guard(registry.mutex);
    if (m_file->m_locked)
        throwBusy(fileName);
    if (!m_file->m_descriptors || !m_file->m_descriptors->isOpen()) {
        auto descriptors = std::make_unique<OpenFile::Descriptors>();
#ifdef _WIN32
        descriptors->open(fileName);
#else
        descriptors->file = ::open(fileName.c_str(), O_RDWR | O_CLOEXEC);
        if (descriptors->file < 0)
            throwNotWritable(fileName, std::strerror(errno));
        struct stat status;
        if (::fstat(descriptors->file, &status) != 0)
            throwNotWritable(fileName, std::strerror(errno));
        const files::Identity opened{static_cast<std::uint64_t>(status.st_dev),
                                     static_cast<std::uint64_t>(status.st_ino)};
        if (opened != m_file->identity()) {
            // Another file that this process may have open, too: not to be closed before that is.
            if (OpenFile* const other = registry.find(opened)) {
                if (!other->m_descriptors)
                    other->m_descriptors = std::make_unique<OpenFile::Descriptors>();
                other->m_descriptors->strays.push_back(descriptors->file);
                descriptors->file = closedFile;
            }
            throwMoved(fileName);
        }
#endif
        if (m_file->m_descriptors)
            m_file->m_descriptors->file = std::exchange(descriptors->file, closedFile);
        else
            m_file->m_descriptors = std::move(descriptors);
    }
    m_file->m_descriptors->lock(fileName);
    m_file->m_locked = true;
}

WriterLock::~WriterLock() {
    const std::lock_guard guard(m_file->m_registry->mutex);
    m_file->m_descriptors->unlock();
    m_file->m_locked = false;
}

void throwMoved(const std::string& fileName) {
    throw Failure(ErrorCode::State, "The file was renamed, replaced or deleted while it was open.",
                  "File: " + fileName +
                      "\nWhat it held can still be read. Put it back under this name to change it, "
                      "or open anew what stands there now.");
}

}  // namespace tarvo::engine::store
