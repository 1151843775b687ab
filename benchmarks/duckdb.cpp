#include "benchmarks/duckdb.h"

#include <dlfcn.h>

#include <algorithm>
#include <optional>
#include <stdexcept>

namespace bench {

namespace {

// What is needed of the C interface; its handles are pointers, its status 0 for success.
struct Result {
    std::uint64_t unused[3];
    void* unusedColumns;
    char* unusedError;
    void* internal;
};
enum Type { utinyint = 6, usmallint = 7, floatType = 10, doubleType = 11 };

struct Api {
    int (*open_ext)(const char*, void**, void*, char**);
    int (*create_config)(void**);
    int (*set_config)(void*, const char*, const char*);
    void (*destroy_config)(void**);
    int (*connect)(void*, void**);
    void (*disconnect)(void**);
    void (*close)(void**);
    int (*query)(void*, const char*, Result*);
    void (*destroy_result)(Result*);
    const char* (*result_error)(Result*);
    std::uint64_t (*row_count)(Result*);
    std::int64_t (*value_int64)(Result*, std::uint64_t, std::uint64_t);
    int (*appender_create)(void*, const char*, const char*, void**);
    int (*appender_destroy)(void**);
    int (*append_data_chunk)(void*, void*);
    void* (*create_logical_type)(int);
    void (*destroy_logical_type)(void**);
    void* (*create_data_chunk)(void**, std::uint64_t);
    void (*destroy_data_chunk)(void**);
    void (*data_chunk_reset)(void*);
    void* (*data_chunk_get_vector)(void*, std::uint64_t);
    void (*data_chunk_set_size)(void*, std::uint64_t);
    void* (*vector_get_data)(void*);
    std::uint64_t (*vector_size)();
    const char* (*library_version)();

    explicit Api(const std::string& library) {
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
        LOAD(value_int64);
        LOAD(appender_create);
        LOAD(appender_destroy);
        LOAD(append_data_chunk);
        LOAD(create_logical_type);
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

private:
    template <typename Function>
    static void load(void* module, Function*& slot, const char* name) {
        slot = reinterpret_cast<Function*>(dlsym(module, name));
        if (!slot)
            throw std::runtime_error(std::string("DuckDB lacks ") + name);
    }
};

// One open file with a connection.
class Session {
public:
    Session(const Api& api, const std::string& file) : m_api(api) {
        void* config = nullptr;
        check(api.create_config(&config), "create_config");
        check(api.set_config(config, "threads", "2"), "threads");
        check(api.set_config(config, "memory_limit",
                             (std::to_string(cacheSize >> 20) + "MiB").c_str()),
              "memory_limit");
        char* error = nullptr;
        check(api.open_ext(file.c_str(), &m_database, config, &error), error);
        api.destroy_config(&config);
        check(api.connect(m_database, &connection), "connect");
    }
    ~Session() {
        m_api.disconnect(&connection);
        m_api.close(&m_database);
    }
    static void check(int status, const char* what) {
        if (status != 0)
            throw std::runtime_error(std::string("DuckDB: ") + (what ? what : "failed"));
    }
    // Runs a statement; gives the number of rows and the first value.
    std::pair<std::uint64_t, std::int64_t> run(const std::string& sql) {
        Result result{};
        const int status = m_api.query(connection, sql.c_str(), &result);
        check(status, m_api.result_error(&result));
        const std::uint64_t rows = m_api.row_count(&result);
        const std::pair<std::uint64_t, std::int64_t> answer(
            rows, rows > 0 ? m_api.value_int64(&result, 0, 0) : 0);
        m_api.destroy_result(&result);
        return answer;
    }

    void* connection = nullptr;

private:
    const Api& m_api;
    void* m_database = nullptr;
};

std::string where(const Condition& condition) {
    return condition.sql.empty() ? "" : " WHERE " + condition.sql;
}

class Duckdb final : public Engine {
public:
    explicit Duckdb(const std::string& library) : m_api(library) {}

    void import(const std::string& rowFile, const std::string&,
                const std::string& target) override {
        Session session(m_api, target);
        session.run(
            "CREATE TABLE points(x DOUBLE, y DOUBLE, z DOUBLE, timestamp DOUBLE, reflectance "
            "FLOAT, amplitude FLOAT, deviation USMALLINT, target_index UTINYINT, target_count "
            "UTINYINT, class UTINYINT)");
        const int types[] = {doubleType, doubleType, doubleType, doubleType, floatType,
                             floatType,  usmallint,  utinyint,   utinyint,   utinyint};
        void* logical[10];
        for (int i = 0; i < 10; ++i)
            logical[i] = m_api.create_logical_type(types[i]);
        void* chunk = m_api.create_data_chunk(logical, 10);
        void* appender = nullptr;
        Session::check(m_api.appender_create(session.connection, nullptr, "points", &appender),
                       "appender");
        const auto capacity = static_cast<std::uint32_t>(m_api.vector_size());
        forEachBatch(rowFile, [&](const Row* rows, std::uint32_t count) {
            for (std::uint32_t begin = 0; begin < count; begin += capacity)
                append(chunk, appender, rows + begin, std::min(capacity, count - begin));
        });
        Session::check(m_api.appender_destroy(&appender), "appender");
        m_api.destroy_data_chunk(&chunk);
        for (void*& type : logical)
            m_api.destroy_logical_type(&type);
        session.run("CHECKPOINT");
    }
    void open(const std::string& file) override { m_session.emplace(m_api, file); }
    std::uint64_t count(const Condition& condition) override {
        return static_cast<std::uint64_t>(
            m_session->run("SELECT count(*) FROM points" + where(condition)).second);
    }
    std::uint64_t firstPage(const Condition& condition) override {
        return m_session
            ->run("SELECT * FROM points" + where(condition) + " LIMIT " + std::to_string(pageSize))
            .first;
    }

private:
    template <typename T>
    void fill(void* chunk, std::uint64_t column, const Row* rows, std::uint32_t count,
              T Row::*member) const {
        T* out = static_cast<T*>(m_api.vector_get_data(m_api.data_chunk_get_vector(chunk, column)));
        for (std::uint32_t i = 0; i < count; ++i)
            out[i] = rows[i].*member;
    }
    void append(void* chunk, void* appender, const Row* rows, std::uint32_t count) const {
        m_api.data_chunk_reset(chunk);
        fill(chunk, 0, rows, count, &Row::x);
        fill(chunk, 1, rows, count, &Row::y);
        fill(chunk, 2, rows, count, &Row::z);
        fill(chunk, 3, rows, count, &Row::timestamp);
        fill(chunk, 4, rows, count, &Row::reflectance);
        fill(chunk, 5, rows, count, &Row::amplitude);
        fill(chunk, 6, rows, count, &Row::deviation);
        fill(chunk, 7, rows, count, &Row::targetIndex);
        fill(chunk, 8, rows, count, &Row::targetCount);
        fill(chunk, 9, rows, count, &Row::classification);
        m_api.data_chunk_set_size(chunk, count);
        Session::check(m_api.append_data_chunk(appender, chunk), "append");
    }

    Api m_api;
    std::optional<Session> m_session;
};

}  // namespace

std::unique_ptr<Engine> makeDuckdb(const std::string& library) {
    return std::make_unique<Duckdb>(library);
}

std::string duckdbVersion(const std::string& library) {
    return Api(library).library_version();
}

}  // namespace bench
