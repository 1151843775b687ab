// A connection to the container, with the settings that every use of a file needs: none of the
// features that a hostile file could use, tight limits, patience with other processes.
#pragma once

#include "engine/store/sqlite.h"
#include "engine/store/writerlock.h"

#include <cstdint>
#include <memory>
#include <string>

namespace tarvo::engine::store {

inline constexpr std::int64_t applicationId = 0x51524258;  // "QRBX"
inline constexpr std::size_t maximumBlob = 512u << 20;     // bytes
inline constexpr int mostTries = 200;
inline constexpr int fewTries = 20;  // well below a second

struct Connection {
    // flags: SQLITE_OPEN_READONLY or SQLITE_OPEN_READWRITE; never creates a file. Throws Failure.
    // One thread at a time.
    Connection(const std::string& name, int flags);
    ~Connection();
    Connection(const Connection&) = delete;
    Connection& operator=(const Connection&) = delete;

    void run(const char* sql) { execute(handle, sql, fileName); }
    // The number in the first column of the first row; 0 without one.
    std::int64_t pragma(const char* sql);
    // What must be set anew for each connection.
    void configure();
    bool hasOurHeader() { return pragma("PRAGMA application_id") == applicationId; }
    bool hasRollbackJournal();
    // Whether the name leads to another file than when this was opened, or to none.
    bool hasMoved();
    // A writer that was killed while it knew the file by another name, a hard link beside this one,
    // has left its journal under that name: throws Failure(State) that tells it. The container
    // itself looks only under the name that it knows.
    void refuseForeignJournal();
    // How often a lock of the container is tried before an operation fails as busy: about ten
    // seconds at first.
    void setTries(int count) { m_tries = count; }

    std::string fileName;            // as given
    std::string path;                // the same, wherever the program's current folder moves to
    std::shared_ptr<OpenFile> file;  // closed after the handle
    sqlite3* handle = nullptr;

private:
    bool isBeingWritten();
    static int backOff(void* connection, int tries) noexcept;

    int m_tries = mostTries;
};

}  // namespace tarvo::engine::store
