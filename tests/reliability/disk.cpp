#include "tests/reliability/disk.h"

#include <dlfcn.h>
#include <fcntl.h>
#include <linux/fs.h>
#include <sys/syscall.h>
#include <sys/uio.h>
#include <unistd.h>

#include <atomic>
#include <cerrno>
#include <cstdarg>
#include <cstdio>
#include <filesystem>
#include <map>
#include <mutex>
#include <set>
#include <string_view>
#include <utility>

namespace tarvo::trial::disk {

namespace {

using Kind = Operation::Kind;

constexpr int folderItself = 0;

// Which calls a fault can hit.
enum class Call { Look, Room, Other };

struct Watch {
    std::string folder;  // ends with a slash
    std::map<std::string, int> names;
    std::map<int, int> open;  // descriptor -> number of the file
    int lastFile = folderItself;
    std::vector<Operation> operations;
    std::uint64_t calls = 0;
    std::uint64_t failures = 0;
    std::uint64_t failing = 0;  // 0: none
    Fault fault = Fault::Error;
    bool forGood = false;
    std::vector<std::uint64_t> syncs;
    bool namesChanged = false;  // since the folder was synced last
    Unsynced unsynced;
};

std::recursive_mutex s_mutex;
Watch s_watch;
std::atomic<bool> s_watching{false};
std::atomic<bool> s_ignoreLocks{false};

// The name of what stands right in the folder; empty: the folder itself; null: neither.
const char* nameIn(const char* path) {
    const std::string_view text = path;
    const std::string& folder = s_watch.folder;
    if (text.size() + 1 == folder.size() && folder.starts_with(text))
        return "";
    if (!text.starts_with(folder) || text.find('/', folder.size()) != text.npos)
        return nullptr;
    return path + folder.size();
}

// One call on a watched file, at the side of the caller.
class Watched {
public:
    explicit Watched(const char* path) : m_guard(s_mutex) {
        m_name = s_watching && path ? nameIn(path) : nullptr;
        m_is = m_name != nullptr;
    }
    explicit Watched(int descriptor) : m_guard(s_mutex) {
        const auto found = s_watch.open.find(descriptor);
        m_is = s_watching && found != s_watch.open.end();
        if (m_is)
            m_file = found->second;
    }
    explicit operator bool() const { return m_is; }
    const char* name() const { return m_name; }
    int file() const { return m_file; }

    // Counts the call, and whether it shall fail; errno is set then.
    bool fails(Call call) const {
        if (!m_is)
            return false;
        ++s_watch.calls;
        const bool mayFail = s_watch.fault == Fault::Error || call == Call::Room;
        if (s_watch.failing == 0 || s_watch.calls < s_watch.failing || !mayFail ||
            (s_watch.failures > 0 && !s_watch.forGood))
            return false;
        ++s_watch.failures;
        errno = s_watch.fault == Fault::Full ? ENOSPC : EIO;
        return true;
    }
    // The same for a call that opens or syncs the folder, or syncs a file.
    bool failsToSync(Call call) const {
        if (!m_is)
            return false;
        const bool failed = fails(call);
        s_watch.syncs.push_back(s_watch.calls);
        Unsynced& unsynced = s_watch.unsynced;
        if (failed && m_file != folderItself)
            ++unsynced.files;
        if (failed && m_file == folderItself) {
            ++unsynced.folders;
            unsynced.names |= s_watch.namesChanged;
            // A folder that could not be opened can be synced the next time.
            s_watch.namesChanged = s_watch.namesChanged && call == Call::Look;
        }
        return failed;
    }
    void record(Operation operation) const {
        if (!m_is)
            return;
        if (operation.kind == Kind::SyncFolder && s_watch.namesChanged)
            s_watch.unsynced.names = s_watch.namesChanged = false;
        else if (operation.kind == Kind::Create || operation.kind == Kind::Rename ||
                 operation.kind == Kind::Link || operation.kind == Kind::Remove)
            s_watch.namesChanged = true;
        s_watch.operations.push_back(std::move(operation));
    }

private:
    std::lock_guard<std::recursive_mutex> m_guard;
    bool m_is = false;
    const char* m_name = nullptr;
    int m_file = folderItself;
};

template <typename Function>
Function* original(const char* name) {
    return reinterpret_cast<Function*>(dlsym(RTLD_NEXT, name));
}

// The system's own, past what stands in its place below.
template <typename... Arguments>
long directly(long number, Arguments... arguments) {
    static auto* const call = original<long(long, ...)>("syscall");
    return call(number, arguments...);
}

int fileOf(const char* name) {
    const auto found = s_watch.names.find(name);
    return found == s_watch.names.end() ? -1 : found->second;
}

// What a successful opening of a watched name means.
void opened(const Watched& watched, int descriptor, int flags) {
    if (*watched.name() == '\0') {
        s_watch.open[descriptor] = folderItself;
        return;
    }
    int file = fileOf(watched.name());
    if (file < 0) {
        file = s_watch.names[watched.name()] = ++s_watch.lastFile;
        watched.record({.kind = Kind::Create, .file = file, .name = watched.name()});
    }
    s_watch.open[descriptor] = file;
    if (flags & O_TRUNC)
        watched.record({.kind = Kind::Truncate, .file = file});
}

int openFile(const char* path, int flags, mode_t mode) {
    const Watched watched(path);
    const bool creates = (flags & O_CREAT) != 0;
    const bool isFolder = watched && *watched.name() == '\0';
    if (isFolder ? watched.failsToSync(Call::Look)
                 : watched.fails(creates ? Call::Room : Call::Look))
        return -1;
    const int result = static_cast<int>(directly(SYS_openat, AT_FDCWD, path, flags, mode));
    if (watched && result >= 0)
        opened(watched, result, flags);
    return result;
}

std::FILE* openStream(const char* path, const char* mode, const char* function) {
    const Watched watched(path);
    if (watched.fails(*mode == 'r' ? Call::Look : Call::Room))
        return nullptr;
    std::FILE* const result = original<std::FILE*(const char*, const char*)>(function)(path, mode);
    if (watched && result)
        opened(watched, ::fileno(result), *mode == 'w' ? O_TRUNC : 0);
    return result;
}

// A full disk takes the first half.
std::size_t roomFor(const Watched& watched, std::size_t size) {
    if (!watched.fails(Call::Room))
        return size;
    return s_watch.fault == Fault::Full && s_watch.failures == 1 ? size / 2 : 0;
}

ssize_t writeAt(int file, const void* data, std::size_t size, off_t at) {
    const Watched watched(file);
    const std::size_t room = roomFor(watched, size);
    if (room == 0 && size > 0)
        return -1;
    const ssize_t result = directly(SYS_pwrite64, file, data, room, at);
    if (result > 0)
        watched.record(
            {.kind = Kind::Write,
             .file = watched.file(),
             .at = static_cast<std::uint64_t>(at),
             .bytes = {static_cast<const char*>(data), static_cast<std::size_t>(result)}});
    return result;
}

ssize_t writeOn(int file, const void* data, std::size_t size) {
    const Watched watched(file);
    if (!watched)
        return directly(SYS_write, file, data, size);
    const bool appends = (::fcntl(file, F_GETFL) & O_APPEND) != 0;
    const off_t at = ::lseek(file, 0, appends ? SEEK_END : SEEK_CUR);
    const ssize_t result = writeAt(file, data, size, at);
    if (result > 0)
        ::lseek(file, at + result, SEEK_SET);
    return result;
}

ssize_t readAt(int file, void* data, std::size_t size, off_t at) {
    if (Watched(file).fails(Call::Look))
        return -1;
    return directly(SYS_pread64, file, data, size, at);
}

int truncate(int file, off_t size) {
    const Watched watched(file);
    if (watched.fails(Call::Other))
        return -1;
    const int result = static_cast<int>(directly(SYS_ftruncate, file, size));
    if (result == 0)
        watched.record({.kind = Kind::Truncate,
                        .file = watched.file(),
                        .at = static_cast<std::uint64_t>(size)});
    return result;
}

int syncFile(int file, long call) {
    const Watched watched(file);
    if (!watched)
        return static_cast<int>(directly(call, file));
    if (watched.failsToSync(Call::Other))
        return -1;
    // The disk of the trial is in memory: what counts is what was written down.
    watched.record({.kind = watched.file() == folderItself ? Kind::SyncFolder : Kind::Sync,
                    .file = watched.file()});
    return 0;
}

int moveEntry(const char* from, const char* to, unsigned flags) {
    const Watched watched(from);
    if (watched.fails(Call::Room))
        return -1;
    const long result = directly(SYS_renameat2, AT_FDCWD, from, AT_FDCWD, to, flags);
    const char* const name = watched ? nameIn(to) : nullptr;
    if (result == 0 && name) {
        const int file = fileOf(watched.name());
        s_watch.names.erase(watched.name());
        s_watch.names[name] = file;
        watched.record({.kind = Kind::Rename, .file = file, .name = watched.name(), .to = name});
    }
    return static_cast<int>(result);
}

int removeEntry(const char* path, int (*remove)(const char*)) {
    const Watched watched(path);
    if (watched.fails(Call::Other))
        return -1;
    const int result = remove(path);
    if (watched && result == 0) {
        watched.record(
            {.kind = Kind::Remove, .file = fileOf(watched.name()), .name = watched.name()});
        s_watch.names.erase(watched.name());
    }
    return result;
}

int closeFile(int file) {
    {
        const std::lock_guard guard(s_mutex);
        s_watch.open.erase(file);
    }
    return static_cast<int>(directly(SYS_close, file));
}

}  // namespace

void watch(const std::string& folder) {
    const std::lock_guard guard(s_mutex);
    s_watch = {};
    s_watch.folder = folder + "/";
    for (const auto& entry : std::filesystem::directory_iterator(folder))
        s_watch.names[entry.path().filename().string()] = 0;
    for (auto& [name, file] : s_watch.names)
        file = ++s_watch.lastFile;
    s_watching = true;
}

std::vector<Operation> unwatch() {
    const std::lock_guard guard(s_mutex);
    s_watching = false;
    s_watch.open.clear();
    s_watch.failing = 0;
    return std::move(s_watch.operations);
}

void acknowledge() {
    const std::lock_guard guard(s_mutex);
    s_watch.operations.push_back({.kind = Kind::Acknowledge});
}

void failAt(std::uint64_t call, Fault fault, bool forGood) {
    const std::lock_guard guard(s_mutex);
    s_watch.failing = call;
    s_watch.fault = fault;
    s_watch.forGood = forGood;
}

std::uint64_t calls() {
    return s_watch.calls;
}

std::uint64_t failures() {
    return s_watch.failures;
}

std::vector<std::uint64_t> syncs() {
    return s_watch.syncs;
}

Unsynced unsynced() {
    return s_watch.unsynced;
}

void ignoreFileLocks() {
    s_ignoreLocks = true;
}

}  // namespace tarvo::trial::disk

namespace disk = tarvo::trial::disk;

// In place of the C library's.
#define QRB_INSTEAD extern "C" __attribute__((visibility("default")))

#define QRB_OPEN(name)                                                    \
    QRB_INSTEAD int name(const char* path, int flags, ...) {              \
        std::va_list more;                                                \
        va_start(more, flags);                                            \
        const mode_t mode = (flags & O_CREAT) ? va_arg(more, mode_t) : 0; \
        va_end(more);                                                     \
        return disk::openFile(path, flags, mode);                         \
    }
QRB_OPEN(open)
QRB_OPEN(open64)
#undef QRB_OPEN

QRB_INSTEAD std::FILE* fopen(const char* path, const char* mode) {
    return disk::openStream(path, mode, "fopen");
}
QRB_INSTEAD std::FILE* fopen64(const char* path, const char* mode) {
    return disk::openStream(path, mode, "fopen64");
}
// What a stream gathers counts as written at once: no promise rests on it before it is synced.
QRB_INSTEAD std::size_t fwrite(const void* data, std::size_t size, std::size_t count,
                               std::FILE* stream) {
    const int file = ::fileno(stream);
    const disk::Watched watched(file);
    if (watched) {
        if (watched.fails(disk::Call::Room))
            return 0;
        watched.record({.kind = disk::Kind::Write,
                        .file = watched.file(),
                        .at = static_cast<std::uint64_t>(std::ftell(stream)),
                        .bytes = {static_cast<const char*>(data), size * count}});
    }
    using Write = std::size_t(const void*, std::size_t, std::size_t, std::FILE*);
    static Write* const real = disk::original<Write>("fwrite");
    return real(data, size, count, stream);
}
QRB_INSTEAD int fflush(std::FILE* stream) {
    if (stream && disk::Watched(::fileno(stream)).fails(disk::Call::Room))
        return EOF;
    static auto* const real = disk::original<int(std::FILE*)>("fflush");
    return real(stream);
}
QRB_INSTEAD int fclose(std::FILE* stream) {
    const int file = ::fileno(stream);
    bool fails = false;
    {
        const disk::Watched watched(file);
        fails = watched.fails(disk::Call::Room);
        if (watched)
            disk::s_watch.open.erase(file);
    }
    static auto* const real = disk::original<int(std::FILE*)>("fclose");
    const int error = errno;
    const int result = real(stream);
    if (!fails)
        return result;
    errno = error;
    return EOF;
}
QRB_INSTEAD int close(int file) {
    return disk::closeFile(file);
}

QRB_INSTEAD ssize_t pwrite(int file, const void* data, std::size_t size, off_t at) {
    return disk::writeAt(file, data, size, at);
}
QRB_INSTEAD ssize_t pwrite64(int file, const void* data, std::size_t size, off64_t at) {
    return disk::writeAt(file, data, size, at);
}
QRB_INSTEAD ssize_t write(int file, const void* data, std::size_t size) {
    return disk::writeOn(file, data, size);
}
QRB_INSTEAD ssize_t writev(int file, const iovec* parts, int count) {
    ssize_t sum = 0;
    for (int i = 0; i < count; ++i) {
        const ssize_t part = disk::writeOn(file, parts[i].iov_base, parts[i].iov_len);
        if (part < 0)
            return sum > 0 ? sum : part;
        sum += part;
        if (static_cast<std::size_t>(part) < parts[i].iov_len)
            break;
    }
    return sum;
}
QRB_INSTEAD ssize_t pread(int file, void* data, std::size_t size, off_t at) {
    return disk::readAt(file, data, size, at);
}
QRB_INSTEAD ssize_t pread64(int file, void* data, std::size_t size, off64_t at) {
    return disk::readAt(file, data, size, at);
}
QRB_INSTEAD int ftruncate(int file, off_t size) noexcept {
    return disk::truncate(file, size);
}
QRB_INSTEAD int ftruncate64(int file, off64_t size) noexcept {
    return disk::truncate(file, size);
}
QRB_INSTEAD int fsync(int file) {
    return disk::syncFile(file, SYS_fsync);
}
QRB_INSTEAD int fdatasync(int file) {
    return disk::syncFile(file, SYS_fdatasync);
}

QRB_INSTEAD int rename(const char* from, const char* to) noexcept {
    return disk::moveEntry(from, to, 0);
}
QRB_INSTEAD int link(const char* from, const char* to) noexcept {
    const disk::Watched watched(from);
    if (watched.fails(disk::Call::Room))
        return -1;
    const int result =
        static_cast<int>(disk::directly(SYS_linkat, AT_FDCWD, from, AT_FDCWD, to, 0));
    const char* const name = watched ? disk::nameIn(to) : nullptr;
    if (result == 0 && name) {
        const int file = disk::s_watch.names[name] = disk::fileOf(watched.name());
        watched.record(
            {.kind = disk::Kind::Link, .file = file, .name = watched.name(), .to = name});
    }
    return result;
}
QRB_INSTEAD int unlink(const char* path) noexcept {
    return disk::removeEntry(path, [](const char* entry) {
        return static_cast<int>(disk::directly(SYS_unlinkat, AT_FDCWD, entry, 0));
    });
}
QRB_INSTEAD int remove(const char* path) noexcept {
    static auto* const real = disk::original<int(const char*)>("remove");
    return disk::removeEntry(path, [](const char* entry) { return real(entry); });
}

QRB_INSTEAD long syscall(long number, ...) noexcept {
    std::va_list more;
    va_start(more, number);
    long a[6];
    for (long& argument : a)
        argument = va_arg(more, long);
    va_end(more);
    if (number == SYS_renameat2 && disk::s_watching)
        return disk::moveEntry(reinterpret_cast<const char*>(a[1]),
                               reinterpret_cast<const char*>(a[3]), static_cast<unsigned>(a[4]));
    return disk::directly(number, a[0], a[1], a[2], a[3], a[4], a[5]);
}

QRB_INSTEAD int fcntl(int file, int command, ...) {
    std::va_list more;
    va_start(more, command);
    void* const argument = va_arg(more, void*);
    va_end(more);
    if (command == F_OFD_SETLK && disk::s_ignoreLocks)
        return 0;
    static auto* const real = disk::original<int(int, int, ...)>("fcntl64");
    return real(file, command, argument);
}
QRB_INSTEAD int flock(int file, int operation) noexcept {
    return disk::s_ignoreLocks ? 0 : static_cast<int>(disk::directly(SYS_flock, file, operation));
}
QRB_INSTEAD int fcntl64(int file, int command, ...) {
    std::va_list more;
    va_start(more, command);
    void* const argument = va_arg(more, void*);
    va_end(more);
    return fcntl(file, command, argument);
}
