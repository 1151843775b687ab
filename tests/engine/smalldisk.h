// A disk that can be full or fail: stands between the container and the file system of the process.
#pragma once

#include <sqlite3.h>

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <stdexcept>

namespace tarvo::engine::testing {

// While it lives, the files that the container opens share the room that is left; what is removed
// or cut off gives its room back, as on a disk. One at a time.
class SmallDisk {
public:
    // room: bytes by which the files may still grow.
    explicit SmallDisk(std::int64_t room) : m_real(sqlite3_vfs_find(nullptr)) {
        s_room = room;
        s_failing = Call::None;
        s_real = m_real;
        m_vfs = *m_real;
        m_vfs.szOsFile = static_cast<int>(sizeof(File)) + m_real->szOsFile;
        m_vfs.pNext = nullptr;
        m_vfs.zName = "small disk";
        m_vfs.xOpen = open;
        m_vfs.xDelete = remove;
        m_vfs.xGetLastError = [](sqlite3_vfs*, int, char*) { return s_systemError; };
        if (sqlite3_vfs_register(&m_vfs, 1) != SQLITE_OK)
            throw std::runtime_error("The disk can't be made.");
    }
    ~SmallDisk() {
        sqlite3_vfs_unregister(&m_vfs);
        sqlite3_vfs_register(m_real, 1);
    }
    SmallDisk(const SmallDisk&) = delete;
    SmallDisk& operator=(const SmallDisk&) = delete;

    std::int64_t room() const { return s_room; }
    void setRoom(std::int64_t room) { s_room = room; }

    // From now on each call of the kind comes to this result of the container, and the system tells
    // this errno. What is removed has gone all the same.
    enum class Call { None, Open, Read, Remove };
    void fail(Call call, int result, int systemError = 0) {
        s_failing = call;
        s_result = result;
        s_systemError = systemError;
    }

private:
    struct File {
        sqlite3_file base;
        sqlite3_file* real() { return reinterpret_cast<sqlite3_file*>(this + 1); }
    };
    static File* of(sqlite3_file* file) { return reinterpret_cast<File*>(file); }
    static std::int64_t sizeOf(sqlite3_file* file) {
        sqlite3_int64 size = 0;
        file->pMethods->xFileSize(file, &size);
        return size;
    }

    static int open(sqlite3_vfs*, const char* name, sqlite3_file* file, int flags, int* given) {
        File* const made = of(file);
        made->base.pMethods = nullptr;
        if (s_failing == Call::Open)
            return s_result;
        const int result = s_real->xOpen(s_real, name, made->real(), flags, given);
        if (made->real()->pMethods)
            made->base.pMethods = methods(made->real()->pMethods);
        return result;
    }
    static int remove(sqlite3_vfs*, const char* name, int sync) {
        sqlite3_file* const file = static_cast<sqlite3_file*>(sqlite3_malloc(s_real->szOsFile));
        std::memset(file, 0, static_cast<std::size_t>(s_real->szOsFile));
        int flags = SQLITE_OPEN_READONLY | SQLITE_OPEN_MAIN_JOURNAL;
        std::int64_t size = 0;
        if (s_real->xOpen(s_real, name, file, flags, &flags) == SQLITE_OK) {
            size = sizeOf(file);
            file->pMethods->xClose(file);
        }
        sqlite3_free(file);
        const int result = s_real->xDelete(s_real, name, sync);
        if (result == SQLITE_OK)
            s_room += size;
        return s_failing == Call::Remove ? s_result : result;
    }
    static int write(sqlite3_file* file, const void* data, int size, sqlite3_int64 at) {
        sqlite3_file* const real = of(file)->real();
        const std::int64_t growth = std::max<std::int64_t>(0, at + size - sizeOf(real));
        if (growth > s_room)
            return SQLITE_FULL;
        const int result = real->pMethods->xWrite(real, data, size, at);
        if (result == SQLITE_OK)
            s_room -= growth;
        return result;
    }
    static int truncate(sqlite3_file* file, sqlite3_int64 size) {
        sqlite3_file* const real = of(file)->real();
        s_room += sizeOf(real) - size;
        return real->pMethods->xTruncate(real, size);
    }
#define QRB_PASS_ON(name, parameters, arguments)     \
    static int name parameters {                     \
        sqlite3_file* const real = of(file)->real(); \
        return real->pMethods->name arguments;       \
    }
    QRB_PASS_ON(xClose, (sqlite3_file * file), (real))
    QRB_PASS_ON(xSync, (sqlite3_file * file, int flags), (real, flags))
    QRB_PASS_ON(xFileSize, (sqlite3_file * file, sqlite3_int64* size), (real, size))
    QRB_PASS_ON(xLock, (sqlite3_file * file, int lock), (real, lock))
    QRB_PASS_ON(xUnlock, (sqlite3_file * file, int lock), (real, lock))
    QRB_PASS_ON(xCheckReservedLock, (sqlite3_file * file, int* out), (real, out))
    QRB_PASS_ON(xSectorSize, (sqlite3_file * file), (real))
    QRB_PASS_ON(xDeviceCharacteristics, (sqlite3_file * file), (real))
#undef QRB_PASS_ON
    static int read(sqlite3_file* file, void* data, int size, sqlite3_int64 at) {
        sqlite3_file* const real = of(file)->real();
        return s_failing == Call::Read ? s_result : real->pMethods->xRead(real, data, size, at);
    }
    static int control(sqlite3_file* file, int what, void* data) {
        sqlite3_file* const real = of(file)->real();
        if (what != SQLITE_FCNTL_LAST_ERRNO || s_failing == Call::None)
            return real->pMethods->xFileControl(real, what, data);
        *static_cast<int*>(data) = s_systemError;
        return SQLITE_OK;
    }

    static const sqlite3_io_methods* methods(const sqlite3_io_methods* real) {
        static sqlite3_io_methods methods;
        methods = *real;
        methods.iVersion = 1;
        methods.xClose = xClose;
        methods.xRead = read;
        methods.xWrite = write;
        methods.xTruncate = truncate;
        methods.xSync = xSync;
        methods.xFileSize = xFileSize;
        methods.xLock = xLock;
        methods.xUnlock = xUnlock;
        methods.xCheckReservedLock = xCheckReservedLock;
        methods.xFileControl = control;
        methods.xSectorSize = xSectorSize;
        methods.xDeviceCharacteristics = xDeviceCharacteristics;
        return &methods;
    }

    static inline std::int64_t s_room = 0;
    static inline Call s_failing = Call::None;
    static inline int s_result = SQLITE_OK;
    static inline int s_systemError = 0;
    static inline sqlite3_vfs* s_real = nullptr;
    sqlite3_vfs* m_real;
    sqlite3_vfs m_vfs;
};

}  // namespace tarvo::engine::testing
