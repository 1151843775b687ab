// DuckDB's C interface, loaded at run time: what is needed of it. Handles are pointers, a status is
// 0 for success.
#pragma once

#include <cstdint>
#include <string>

namespace bench {

struct DuckdbResult {
    std::uint64_t unused[3];
    void* unusedColumns;
    char* unusedError;
    void* internal;
};

struct DuckdbApi {
    // library: the file name of the shared library. Throws std::runtime_error.
    explicit DuckdbApi(const std::string& library);

    int (*open_ext)(const char*, void**, void*, char**);
    int (*create_config)(void**);
    int (*set_config)(void*, const char*, const char*);
    void (*destroy_config)(void**);
    int (*connect)(void*, void**);
    void (*disconnect)(void**);
    void (*close)(void**);
    int (*query)(void*, const char*, DuckdbResult*);
    void (*destroy_result)(DuckdbResult*);
    const char* (*result_error)(DuckdbResult*);
    std::uint64_t (*row_count)(DuckdbResult*);
    std::uint64_t (*column_count)(DuckdbResult*);
    std::int64_t (*value_int64)(DuckdbResult*, std::uint64_t, std::uint64_t);
    char* (*value_varchar)(DuckdbResult*, std::uint64_t, std::uint64_t);
    void (*free)(void*);
    int (*appender_create)(void*, const char*, const char*, void**);
    int (*appender_destroy)(void**);
    int (*append_data_chunk)(void*, void*);
    void* (*create_logical_type)(int);
    void* (*create_decimal_type)(std::uint8_t, std::uint8_t);
    void (*destroy_logical_type)(void**);
    void* (*create_data_chunk)(void**, std::uint64_t);
    void (*destroy_data_chunk)(void**);
    void (*data_chunk_reset)(void*);
    void* (*data_chunk_get_vector)(void*, std::uint64_t);
    void (*data_chunk_set_size)(void*, std::uint64_t);
    void* (*vector_get_data)(void*);
    std::uint64_t (*vector_size)();
    const char* (*library_version)();
};

// A database, and connections to it that end with their objects. Errors are std::runtime_error.
class DuckdbDatabase {
public:
    // file: empty for one in memory.
    DuckdbDatabase(const DuckdbApi& api, const std::string& file);
    ~DuckdbDatabase();
    DuckdbDatabase(const DuckdbDatabase&) = delete;
    DuckdbDatabase& operator=(const DuckdbDatabase&) = delete;

private:
    friend class DuckdbConnection;
    const DuckdbApi& m_api;
    void* m_handle = nullptr;
};

class DuckdbConnection {
public:
    explicit DuckdbConnection(const DuckdbDatabase& database);
    ~DuckdbConnection();
    DuckdbConnection(const DuckdbConnection&) = delete;
    DuckdbConnection& operator=(const DuckdbConnection&) = delete;

    void run(const std::string& sql) const;
    // The first value of the answer.
    std::uint64_t number(const std::string& sql) const;
    // All values of the answer as lines of text; gives the number of rows.
    std::uint64_t text(const std::string& sql, std::string& lines) const;
    void* handle() const { return m_handle; }
    const DuckdbApi& api() const { return m_api; }

private:
    const DuckdbApi& m_api;
    void* m_handle = nullptr;
};

// Throws std::runtime_error unless the status says success.
void checkDuckdb(int status, const char* what);

}  // namespace bench
