// Statements on a database file behind the library's back.
#pragma once

#include "engine/base/bytes.h"

#include <sqlite3.h>

#include <stdexcept>
#include <string>

namespace tarvo::fuzz {

using engine::Bytes;

class Sql {
public:
    explicit Sql(const std::string& file) {
        if (sqlite3_open(file.c_str(), &m_handle) != SQLITE_OK)
            throw std::runtime_error("no database");
    }
    ~Sql() { sqlite3_close(m_handle); }
    Sql(const Sql&) = delete;
    Sql& operator=(const Sql&) = delete;

    void run(const char* sql) { sqlite3_exec(m_handle, sql, nullptr, nullptr, nullptr); }
    template <typename... Values>
    void insert(const char* sql, const Values&... values) {
        sqlite3_stmt* statement = nullptr;
        sqlite3_prepare_v2(m_handle, sql, -1, &statement, nullptr);
        int at = 0;
        (bind(statement, ++at, values), ...);
        sqlite3_step(statement);
        sqlite3_finalize(statement);
    }
    Bytes get(const char* sql, std::int64_t id = 0) {
        sqlite3_stmt* statement = nullptr;
        sqlite3_prepare_v2(m_handle, sql, -1, &statement, nullptr);
        sqlite3_bind_int64(statement, 1, id);
        Bytes result;
        if (sqlite3_step(statement) == SQLITE_ROW) {
            const auto* data = static_cast<const std::uint8_t*>(sqlite3_column_blob(statement, 0));
            result.assign(data, data + sqlite3_column_bytes(statement, 0));
        }
        sqlite3_finalize(statement);
        return result;
    }

private:
    static void bind(sqlite3_stmt* statement, int at, std::int64_t value) {
        sqlite3_bind_int64(statement, at, value);
    }
    static void bind(sqlite3_stmt* statement, int at, const std::string& value) {
        sqlite3_bind_text(statement, at, value.data(), static_cast<int>(value.size()),
                          SQLITE_TRANSIENT);
    }
    static void bind(sqlite3_stmt* statement, int at, const Bytes& value) {
        sqlite3_bind_blob(statement, at,
                          value.empty() ? "" : reinterpret_cast<const char*>(value.data()),
                          static_cast<int>(value.size()), SQLITE_TRANSIENT);
    }
    sqlite3* m_handle = nullptr;
};

}  // namespace tarvo::fuzz
