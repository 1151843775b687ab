#include "benchmarks/duckdb_import.h"

#include <algorithm>
#include <cstring>
#include <exception>
#include <thread>
#include <vector>

namespace bench {

namespace {

// As the C interface numbers types.
enum TypeNumber { TINYINT = 2, SMALLINT = 3, INTEGER, BIGINT, UTINYINT, USMALLINT, UINTEGER };
constexpr int doubleNumber = 11;

struct SqlType {
    const char* name;
    int number;
};

SqlType sqlTypeOf(ColumnType type) {
    switch (type) {
        case ColumnType::Unsigned8:
            return {"UTINYINT", UTINYINT};
        case ColumnType::Unsigned16:
            return {"USMALLINT", USMALLINT};
        case ColumnType::Unsigned32:
            return {"UINTEGER", UINTEGER};
        case ColumnType::Signed8:
            return {"TINYINT", TINYINT};
        case ColumnType::Signed16:
            return {"SMALLINT", SMALLINT};
        case ColumnType::Signed32:
            return {"INTEGER", INTEGER};
        case ColumnType::Signed64:
            return {"BIGINT", BIGINT};
        case ColumnType::Double:
            break;
    }
    return {"DOUBLE", doubleNumber};
}

// Coordinates are decimals: whole numbers of 4 bytes that are written with their places.
std::uint8_t digitsOf(const StoredColumn& column) {
    return column.type == ColumnType::Signed32 ? 9 : 18;
}

std::string definitionOf(const StoredColumn& column) {
    const std::string name = "\"" + column.name + "\" ";
    if (column.places > 0)
        return name + "DECIMAL(" + std::to_string(digitsOf(column)) + "," +
               std::to_string(column.places) + ")";
    return name + sqlTypeOf(column.type).name;
}

std::string definitionsOf(const std::vector<StoredColumn>& columns) {
    std::string definitions;
    for (const StoredColumn& column : columns)
        definitions += (definitions.empty() ? "" : ", ") + definitionOf(column);
    return definitions;
}

class Appender {
public:
    Appender(const DuckdbConnection& connection, const std::vector<StoredColumn>& columns)
        : m_api(connection.api()), m_columns(columns) {
        for (const StoredColumn& column : columns)
            m_types.push_back(column.places > 0
                                  ? m_api.create_decimal_type(
                                        digitsOf(column), static_cast<std::uint8_t>(column.places))
                                  : m_api.create_logical_type(sqlTypeOf(column.type).number));
        m_chunk = m_api.create_data_chunk(m_types.data(), m_types.size());
        checkDuckdb(m_api.appender_create(connection.handle(), nullptr, "arriving", &m_appender),
                    "appender");
    }
    ~Appender() {
        m_api.appender_destroy(&m_appender);
        m_api.destroy_data_chunk(&m_chunk);
        for (void*& type : m_types)
            m_api.destroy_logical_type(&type);
    }
    Appender(const Appender&) = delete;
    Appender& operator=(const Appender&) = delete;

    void append(std::uint64_t begin, std::uint64_t end) {
        const std::uint64_t capacity = m_api.vector_size();
        for (; begin < end; begin += capacity) {
            const std::uint64_t count = std::min(capacity, end - begin);
            m_api.data_chunk_reset(m_chunk);
            for (std::size_t i = 0; i < m_columns.size(); ++i) {
                const std::size_t width = m_columns[i].width();
                std::memcpy(m_api.vector_get_data(m_api.data_chunk_get_vector(m_chunk, i)),
                            m_columns[i].bytes.data() + begin * width, count * width);
            }
            m_api.data_chunk_set_size(m_chunk, count);
            checkDuckdb(m_api.append_data_chunk(m_appender, m_chunk), "append");
        }
    }
    void finish() { checkDuckdb(m_api.appender_destroy(&m_appender), "appender"); }

private:
    const DuckdbApi& m_api;
    const std::vector<StoredColumn>& m_columns;
    std::vector<void*> m_types;
    void* m_chunk = nullptr;
    void* m_appender = nullptr;
};

// Each half by a thread and a connection of its own.
void appendAll(const DuckdbDatabase& database, const std::vector<StoredColumn>& columns,
               std::uint64_t count) {
    std::exception_ptr failures[2];
    std::vector<std::thread> threads;
    for (std::uint64_t half = 0; half < 2; ++half)
        threads.emplace_back([&, half] {
            try {
                const DuckdbConnection connection(database);
                Appender appender(connection, columns);
                appender.append(half * count / 2, (half + 1) * count / 2);
                appender.finish();
            } catch (...) {
                failures[half] = std::current_exception();
            }
        });
    for (std::thread& thread : threads)
        thread.join();
    for (const std::exception_ptr& failure : failures)
        if (failure)
            std::rethrow_exception(failure);
}

bool endsWith(const std::string& text, const std::string& end) {
    return text.size() >= end.size() &&
           text.compare(text.size() - end.size(), end.size(), end) == 0;
}

// The points with their places on the curve, in memory until they are sorted.
StoredColumn keyColumn(const StoredPoints& points) {
    StoredColumn key;
    key.name = "key";
    key.type = ColumnType::Unsigned32;
    const std::vector<std::uint32_t> keys = hilbertKeys(points);
    key.bytes.resize(keys.size() * sizeof keys[0]);
    std::memcpy(key.bytes.data(), keys.data(), key.bytes.size());
    return key;
}

void importSorted(const DuckdbApi& api, const StoredPoints& points, const std::string& target) {
    std::vector<StoredColumn> columns = points.columns;
    columns.push_back(keyColumn(points));
    const bool parquet = endsWith(target, "parquet");
    const DuckdbDatabase database(api, "");
    const DuckdbConnection connection(database);
    connection.run("CREATE TABLE arriving(" + definitionsOf(columns) + ")");
    appendAll(database, columns, points.count);
    const std::string sorted = "SELECT * EXCLUDE (key) FROM arriving ORDER BY key";
    if (parquet) {
        connection.run("COPY (" + sorted + ") TO '" + target +
                       "' (FORMAT parquet, COMPRESSION zstd)");
        return;
    }
    connection.run("ATTACH '" + target + "' AS target");
    connection.run("CREATE TABLE target.points AS " + sorted);
    connection.run("CHECKPOINT target");
    connection.run("DETACH target");
}

}  // namespace

std::uint64_t importIntoDuckdb(const DuckdbApi& api, const StoredPoints& points,
                               const std::string& target) {
    if (!endsWith(target, "plain.duckdb")) {
        importSorted(api, points, target);
        return points.count;
    }
    const DuckdbDatabase database(api, target);
    const DuckdbConnection connection(database);
    connection.run("CREATE TABLE arriving(" + definitionsOf(points.columns) + ")");
    appendAll(database, points.columns, points.count);
    connection.run("ALTER TABLE arriving RENAME TO points");
    connection.run("CHECKPOINT");
    return points.count;
}

}  // namespace bench
