#include "engine/store/namelock.h"

#include "engine/base/error.h"

#ifdef _WIN32
#include <windows.h>
#else
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>
#endif

#include <cerrno>
#include <cstring>

namespace tarvo::engine::store {

#ifdef _WIN32

struct NameLock::Handle {
    HANDLE file = INVALID_HANDLE_VALUE;
    ~Handle() {
        if (file != INVALID_HANDLE_VALUE)
            CloseHandle(file);
    }
};

NameLock::NameLock(const std::string& databaseName) : m_handle(std::make_unique<Handle>()) {
    const std::string name = databaseName + "-writer";
    std::wstring wide(32768, L'\0');
    MultiByteToWideChar(CP_UTF8, 0, name.c_str(), -1, wide.data(), static_cast<int>(wide.size()));
    m_handle->file = CreateFileW(wide.c_str(), GENERIC_WRITE, 0, nullptr, OPEN_ALWAYS,
                                 FILE_FLAG_DELETE_ON_CLOSE, nullptr);
    if (m_handle->file != INVALID_HANDLE_VALUE)
        return;
    if (GetLastError() == ERROR_SHARING_VIOLATION)
        throw Failure(ErrorCode::Busy,
                      "Another program is changing the database. Try again when it is done.",
                      "Lock: " + name);
    throw Failure(ErrorCode::File, "The database can't be changed: its folder is write-protected.",
                  "Lock: " + name);
}

#else

struct NameLock::Handle {
    int file = -1;
    std::string name;
    bool held = false;
    ~Handle() {
        // Removed while still locked: who waits for the old file sees that it has gone.
        if (held)
            ::unlink(name.c_str());
        if (file >= 0)
            ::close(file);
    }
};

NameLock::NameLock(const std::string& databaseName) : m_handle(std::make_unique<Handle>()) {
    m_handle->name = databaseName + "-writer";
    const char* name = m_handle->name.c_str();
    for (;;) {
        m_handle->file = ::open(name, O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW, 0644);
        if (m_handle->file < 0)
            throw Failure(ErrorCode::File,
                          "The database can't be changed: its folder is not writable.",
                          "Lock: " + m_handle->name + ": " + std::strerror(errno));
        if (::flock(m_handle->file, LOCK_EX | LOCK_NB) != 0) {
            char holder[64] = {};
            const ssize_t size = ::pread(m_handle->file, holder, sizeof holder - 1, 0);
            throw Failure(ErrorCode::Busy,
                          "Another program is changing the database. Try again when it is done.",
                          "Lock: " + m_handle->name +
                              (size > 0 ? ", process " + std::string(holder, size) : ""));
        }
        struct stat opened, named;
        if (::fstat(m_handle->file, &opened) == 0 && ::stat(name, &named) == 0 &&
            opened.st_ino == named.st_ino && opened.st_dev == named.st_dev)
            break;
        ::close(m_handle->file);  // its holder removed it meanwhile
        m_handle->file = -1;
    }
    m_handle->held = true;
    const std::string process = std::to_string(::getpid());
    if (::ftruncate(m_handle->file, 0) == 0)
        (void)!::pwrite(m_handle->file, process.data(), process.size(), 0);
}

#endif

NameLock::~NameLock() = default;

}  // namespace tarvo::engine::store
