#include "benchmarks/duckdb_api.h"

#include <dlfcn.h>

#include <stdexcept>

namespace bench {

namespace {

template <typename Function>
void load(void* module, Function*& slot, const char* name) {
    slot = reinterpret_cast<Function*>(dlsym(module, name));
    if (!slot)
        throw std::runtime_error(std::string("DuckDB lacks ") + name);
}

// A statement's result, freed at the end.
class Answer {
public:
    Answer(const DuckdbApi& api, void* connection, const std::string& sql) : m_api(api) {
        if (api.query(connection, sql.c_str(), &m_result) == 0)
            return;
        const char* const told = api.result_error(&m_result);
        const std::string error = told ? told : "failed";
        api.destroy_result(&m_result);
        throw std::runtime_error("DuckDB: " + error + "\n" + sql);
    }
    ~Answer() { m_api.destroy_result(&m_result); }
    Answer(const Answer&) = delete;
    Answer& operator=(const Answer&) = delete;

    DuckdbResult* get() { return &m_result; }

private:
    const DuckdbApi& m_api;
    DuckdbResult m_result{};
};

}  // namespace

void checkDuckdb(int status, const char* what) {
    if (status != 0)
        throw std::runtime_error(std::string("DuckDB: ") + (what ? what : "failed"));
}

DuckdbApi::DuckdbApi(const std::string& library) {
    void* module = dlopen(library.c_str(), RTLD_NOW | RTLD_LOCAL);
    if (!module)
        throw std::runtime_error(std::string("can't load DuckDB: ") + dlerror());
#define LOAD(name) load(module, name, "duckdb_" #name)
    LOAD(open_ext);
    LOAD(create_config);
    LOAD(set_config);
    LOAD(destroy_config);
    LOAD(connect);
    LOAD(disconnect);
    LOAD(close);
    LOAD(query);
    LOAD(destroy_result);
    LOAD(result_error);
    LOAD(row_count);
    LOAD(column_count);
    LOAD(value_int64);
    LOAD(value_varchar);
    LOAD(free);
    LOAD(appender_create);
    LOAD(appender_destroy);
    LOAD(append_data_chunk);
    LOAD(create_logical_type);
    LOAD(create_decimal_type);
    LOAD(destroy_logical_type);
    LOAD(create_data_chunk);
    LOAD(destroy_data_chunk);
    LOAD(data_chunk_reset);
    LOAD(data_chunk_get_vector);
    LOAD(data_chunk_set_size);
    LOAD(vector_get_data);
    LOAD(vector_size);
    LOAD(library_version);
#undef LOAD
}

DuckdbDatabase::DuckdbDatabase(const DuckdbApi& api, const std::string& file) : m_api(api) {
    void* config = nullptr;
    checkDuckdb(api.create_config(&config), "create_config");
    checkDuckdb(api.set_config(config, "threads", "2"), "threads");
    checkDuckdb(api.set_config(config, "memory_limit", "8GiB"), "memory_limit");
    char* error = nullptr;
    checkDuckdb(api.open_ext(file.empty() ? nullptr : file.c_str(), &m_handle, config, &error),
                error);
    api.destroy_config(&config);
}

DuckdbDatabase::~DuckdbDatabase() {
    m_api.close(&m_handle);
}

DuckdbConnection::DuckdbConnection(const DuckdbDatabase& database) : m_api(database.m_api) {
    checkDuckdb(m_api.connect(database.m_handle, &m_handle), "connect");
}

DuckdbConnection::~DuckdbConnection() {
    m_api.disconnect(&m_handle);
}

void DuckdbConnection::run(const std::string& sql) const {
    Answer(m_api, m_handle, sql);
}

std::uint64_t DuckdbConnection::number(const std::string& sql) const {
    Answer answer(m_api, m_handle, sql);
    return static_cast<std::uint64_t>(m_api.value_int64(answer.get(), 0, 0));
}

std::uint64_t DuckdbConnection::text(const std::string& sql, std::string& lines) const {
    Answer answer(m_api, m_handle, sql);
    const std::uint64_t rows = m_api.row_count(answer.get());
    const std::uint64_t columns = m_api.column_count(answer.get());
    for (std::uint64_t row = 0; row < rows; ++row)
        for (std::uint64_t column = 0; column < columns; ++column) {
            char* const value = m_api.value_varchar(answer.get(), column, row);
            lines += value ? value : "";
            lines += column + 1 < columns ? ',' : '\n';
            m_api.free(value);
        }
    return rows;
}

}  // namespace bench
