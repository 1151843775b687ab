// Thin owners for the container's connection and statements; every failure becomes Failure with
// words that say what to do.
#pragma once

#include "engine/base/bytes.h"
#include "engine/base/error.h"

#include <sqlite3.h>

#include <cstdint>
#include <string>
#include <string_view>

namespace tarvo::engine::store {

// The disk, a quota or a limit has no room for what is to be written.
class NoRoom : public Failure {
public:
    using Failure::Failure;
};

// The disk does not give or take what it should.
class DiskError : public Failure {
public:
    using Failure::Failure;
};

// Throws the Failure that a result code of the container means.
[[noreturn]] void throwSqlite(sqlite3* database, int result, const std::string& fileName);

class Statement {
public:
    Statement(sqlite3* database, const char* sql, const std::string& fileName);
    ~Statement();
    Statement(const Statement&) = delete;
    Statement& operator=(const Statement&) = delete;

    Statement& bind(int index, std::int64_t value);
    Statement& bind(int index, std::string_view value);  // must live until the last step
    Statement& bind(int index, ByteSpan value);          // must live until the last step

    // Whether there is a row.
    bool step();
    // Runs a statement without rows and makes it ready to run again.
    void run();
    void reset();

    std::int64_t integer(int column);
    std::string text(int column);
    bool isInteger(int column);
    bool isText(int column);

private:
    void check(int result);

    sqlite3* m_database;
    sqlite3_stmt* m_statement = nullptr;
    const std::string& m_fileName;
};

void execute(sqlite3* database, const char* sql, const std::string& fileName);

}  // namespace tarvo::engine::store
