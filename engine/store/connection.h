// A connection to the container, with the settings that every use of a file needs: none of the
// features that a hostile file could use, tight limits, patience with other processes.
#pragma once

#include "engine/store/sqlite.h"

#include <cstdint>
#include <string>

namespace tarvo::engine::store {

inline constexpr std::int64_t applicationId = 0x51524258;  // "QRBX"
inline constexpr std::size_t maximumBlob = 512u << 20;     // bytes

struct Connection {
    // flags: SQLITE_OPEN_READONLY or SQLITE_OPEN_READWRITE; never creates a file. Throws Failure.
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

    sqlite3* handle = nullptr;
    std::string fileName;
};

}  // namespace tarvo::engine::store
