#include "files/place.h"

#include "files/error.h"
#include "files/listing.h"
#include "files/path.h"

#include <atomic>
#include <cerrno>
#include <charconv>
#include <chrono>
#include <cstdint>
#include <cstdio>
#include <fstream>
#include <string_view>
#include <system_error>

#ifdef _WIN32
#include <process.h>
#include <windows.h>
#else
#include <fcntl.h>
#include <signal.h>
#include <unistd.h>
#if defined(__linux__)
#include <linux/fs.h>
#include <sys/syscall.h>
#endif
#endif

namespace tarvo::files {

namespace fs = std::filesystem;

namespace {

constexpr int maximumLinks = 40;
// Bytes of a file's name that its temporary ones begin with: they have to fit, too.
constexpr std::size_t longestStem = 190;
// How long a file of the first release's kind must have rested to be a leftover.
constexpr auto longestPause = std::chrono::minutes(10);

std::string messageOf(int error) {
    return std::system_category().message(error);
}

[[noreturn]] void failRename(const std::string& from, const std::string& to, int error) {
    throw FileError("\"" + from + "\" can't be renamed to \"" + to + "\": " + messageOf(error) +
                    ".");
}

#ifdef _WIN32

long processId() {
    return _getpid();
}
bool isRunning(long process) {
    const HANDLE handle = OpenProcess(SYNCHRONIZE, FALSE, static_cast<DWORD>(process));
    const bool running = handle ? WaitForSingleObject(handle, 0) == WAIT_TIMEOUT
                                : GetLastError() == ERROR_ACCESS_DENIED;
    if (handle)
        CloseHandle(handle);
    return running;
}
std::string machineName() {
    char name[256];
    DWORD size = sizeof name;
    return GetComputerNameA(name, &size) ? std::string(name, size) : std::string();
}

// Whether it was renamed; false only where the place is taken and may not be.
bool moveFile(const std::string& from, const std::string& to, bool replace) {
    const DWORD flags = MOVEFILE_WRITE_THROUGH | (replace ? MOVEFILE_REPLACE_EXISTING : 0);
    if (MoveFileExW(pathOf(from).c_str(), pathOf(to).c_str(), flags))
        return true;
    const DWORD error = GetLastError();
    if (!replace && (error == ERROR_ALREADY_EXISTS || error == ERROR_FILE_EXISTS))
        return false;
    failRename(from, to, static_cast<int>(error));
}

#else

long processId() {
    return ::getpid();
}
bool isRunning(long process) {
    return ::kill(static_cast<pid_t>(process), 0) == 0 || errno != ESRCH;
}
// With the numbers of whose processes this one's can be compared.
std::string machineName() {
    char name[256] = {};
    std::string result = ::gethostname(name, sizeof name - 1) == 0 ? name : "";
    std::error_code error;
    result += nameOf(fs::read_symlink("/proc/self/ns/pid", error));
    std::string id;
    std::getline(std::ifstream("/etc/machine-id"), id);
    return result + id;
}

bool moveFile(const std::string& from, const std::string& to, bool replace) {
    if (!replace) {
#if defined(__linux__) && defined(SYS_renameat2)
        if (::syscall(SYS_renameat2, AT_FDCWD, from.c_str(), AT_FDCWD, to.c_str(),
                      RENAME_NOREPLACE) == 0)
            return true;
        if (errno == EEXIST)
            return false;
        if (errno != EINVAL && errno != ENOSYS)
            failRename(from, to, errno);
#endif
        // A file system that can't do it in one step: a link can't take a place either.
        if (::link(from.c_str(), to.c_str()) == 0) {
            ::unlink(from.c_str());
            return true;
        }
        if (errno == EEXIST)
            return false;
        std::error_code error;
        if (fs::exists(fs::symlink_status(to, error)))
            return false;
    }
    if (::rename(from.c_str(), to.c_str()) != 0)
        failRename(from, to, errno);
    return true;
}

#endif

// What a temporary name has between that of its file and the process number: tells the machine.
std::string mark() {
    std::uint64_t hash = 0xcbf29ce484222325u;  // FNV-1a
    for (const char c : machineName())
        hash = (hash ^ static_cast<unsigned char>(c)) * 0x100000001b3u;
    char text[17];
    std::snprintf(text, sizeof text, "%016llx", static_cast<unsigned long long>(hash));
    return std::string(".new-") + text + "-";
}

std::string stemOf(const std::string& fileName) {
    std::string stem = nameOf(pathOf(fileName).filename());
    if (stem.size() > longestStem) {
        std::size_t end = longestStem;
        while (end > 0 && (static_cast<unsigned char>(stem[end]) & 0xc0) == 0x80)
            --end;  // within a character
        stem.resize(end);
    }
    return stem;
}

// The number that stands behind a prefix, and in `rest` what follows; 0 where there is none.
long numberBehind(const std::string& prefix, const std::string& name, std::string_view& rest) {
    if (!name.starts_with(prefix))
        return 0;
    long number = 0;
    const char* const end = name.data() + name.size();
    const auto [next, error] = std::from_chars(name.data() + prefix.size(), end, number);
    rest = {next, end};
    return error == std::errc() && number > 0 ? number : 0;
}

// The process that a temporary name tells; 0 where it is none of this file and machine.
long processOf(const std::string& name, const std::string& prefix) {
    std::string_view rest;
    const long process = numberBehind(prefix, name, rest);
    return rest.starts_with('-') ? process : 0;
}

// The same for names of the first release, "NAME.new-PROCESS", which tell no machine: only files
// that nobody has written for a while.
long formerProcessOf(const fs::path& file, const std::string& prefix) {
    const std::string name = nameOf(file.filename());
    std::string_view rest;
    const long process = numberBehind(prefix, name, rest);
    if (process == 0 || (!rest.empty() && rest != "-journal"))
        return 0;
    std::error_code unknown;
    const auto written = fs::last_write_time(file, unknown);
    const bool rests = !unknown && fs::file_time_type::clock::now() - written > longestPause;
    return rests ? process : 0;
}

// Whether a temporary name is the whole of a name, without anything behind it.
bool isWholeTemporaryName(const std::string& name) {
    const std::size_t dash = name.rfind('-');
    return dash + 1 < name.size() && name.find_first_not_of("0123456789", dash + 1) == name.npos;
}

// Removes the regular files beside `fileName` that the function accepts.
template <typename Accept>
void removeBeside(const std::string& fileName, Accept accept) {
    const fs::path path = pathOf(fileName);
    const fs::path folder = path.has_parent_path() ? path.parent_path() : fs::path(".");
    for (const std::string& name : namesIn(nameOf(folder))) {
        const fs::path file = pathOf(beside(fileName, name));
        std::error_code ignored;
        if (accept(file) && fs::is_regular_file(fs::symlink_status(file, ignored)))
            fs::remove(file, ignored);
    }
}

// Whether a link is the system's view of an open file, which its text need not name.
bool isOpenFile(const fs::path& link) {
    std::error_code error;
    const fs::path folder = fs::canonical(link.parent_path(), error);
    return !error && nameOf(folder).compare(0, 6, "/proc/") == 0;
}

}  // namespace

std::string resolved(const std::string& fileName) {
    fs::path path = pathOf(fileName);
    std::error_code error;
    for (int links = 0; links < maximumLinks && fs::is_symlink(path, error) && !isOpenFile(path);
         ++links) {
        const fs::path target = fs::read_symlink(path, error);
        if (error)
            break;
        path = target.is_absolute() ? target : pathOf(beside(nameOf(path), nameOf(target)));
    }
    return nameOf(path);
}

std::string temporaryNameFor(const std::string& fileName) {
    static std::atomic<unsigned> number{0};
    return beside(fileName, stemOf(fileName) + mark() + std::to_string(processId()) + "-" +
                                std::to_string(++number));
}

void removeLeftovers(const std::string& fileName) noexcept {
    try {
        const std::string prefix = stemOf(fileName) + mark();
        const std::string former = nameOf(pathOf(fileName).filename()) + ".new-";
        const auto isGone = [](long process) {
            return process != 0 && process != processId() && !isRunning(process);
        };
        removeBeside(fileName, [&](const fs::path& file) {
            const std::string name = nameOf(file.filename());
            const long process = processOf(name, prefix);
            std::error_code ignored;
            if (isGone(process) && isWholeTemporaryName(name) &&
                fs::is_directory(fs::symlink_status(file, ignored)))
                fs::remove_all(file, ignored);
            return isGone(process == 0 ? formerProcessOf(file, former) : process);
        });
    } catch (...) {
        // They only take room.
    }
}

void removeTemporary(const std::string& temporaryName) noexcept {
    try {
        const std::string own = nameOf(pathOf(temporaryName).filename());
        removeBeside(temporaryName, [&own](const fs::path& file) {
            const std::string name = nameOf(file.filename());
            return name == own || name.compare(0, own.size() + 1, own + "-") == 0;
        });
    } catch (...) {
        // The next one removes what is left.
    }
}

void replaceDurably(const std::string& from, const std::string& to) {
    moveFile(from, to, true);
    syncFolderOf(to);
}

bool placeDurably(const std::string& from, const std::string& to) {
    if (!moveFile(from, to, false))
        return false;
    syncFolderOf(to);
    return true;
}

void syncFolderOf(const std::string& fileName) {
#ifdef _WIN32
    (void)fileName;  // the rename has written it through
#else
    const fs::path parent = pathOf(fileName).parent_path();
    const std::string folder = parent.empty() ? "." : parent.string();
    const auto fail = [&fileName](int error) {
        throw FileError("\"" + fileName +
                            "\" is in its place, but its folder could not be "
                            "synced: " +
                            messageOf(error) + ".",
                        "A power cut may still undo it.");
    };
    const int descriptor = ::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (descriptor < 0 && errno == EACCES)
        return;  // may be entered but not listed: there is no other way to sync it
    if (descriptor < 0)
        fail(errno);
    const bool synced = ::fsync(descriptor) == 0 || errno == EINVAL || errno == EROFS;
    const int error = errno;
    ::close(descriptor);
    if (!synced)
        fail(error);
#endif
}

}  // namespace tarvo::files
