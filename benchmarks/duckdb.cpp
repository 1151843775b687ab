#include "benchmarks/duckdb.h"

#include "benchmarks/duckdb_import.h"

#include <memory>
#include <stdexcept>

namespace bench {

namespace {

// A file that is open for questions. A Parquet file is a view in a database in memory.
class OpenFile {
public:
    OpenFile(const DuckdbApi& api, const std::string& file)
        : m_database(api, isParquet(file) ? "" : file), m_connection(m_database) {
        if (isParquet(file)) {
            m_connection.run("SET parquet_metadata_cache = true");
            m_connection.run("CREATE VIEW points AS FROM read_parquet('" + file + "')");
        }
    }
    std::uint64_t count(const std::string& condition) const {
        return m_connection.number("SELECT count(*) FROM points" + where(condition));
    }
    std::uint64_t page(const std::string& condition) const {
        std::string lines;
        return m_connection.text("SELECT * FROM points" + where(condition) + " LIMIT 100", lines);
    }
    void writeCsv(const std::string& target) const {
        // Ours has an order of its own, too.
        m_connection.run("SET preserve_insertion_order = false");
        m_connection.run("COPY (FROM points) TO '" + target + "' (FORMAT csv, HEADER)");
    }

private:
    static bool isParquet(const std::string& file) {
        return file.size() > 7 && file.substr(file.size() - 7) == "parquet";
    }
    static std::string where(const std::string& condition) {
        return condition.empty() ? "" : " WHERE " + condition;
    }

    DuckdbDatabase m_database;
    DuckdbConnection m_connection;
};

template <typename Question>
void ask(const DuckdbApi& api, const std::string& file, Question&& question) {
    std::unique_ptr<OpenFile> open;
    tell("first", measured([&] {
             open = std::make_unique<OpenFile>(api, file);
             return question(*open);
         }));
    tell("again", repeated([&] { return question(*open); }));
}

}  // namespace

void runDuckdb(const std::string& library, const std::vector<std::string>& words) {
    const DuckdbApi api(library);
    const std::string& task = words.at(0);
    const std::string& file = words.at(1);
    if (task == "import") {
        const StoredPoints points = readPoints(file, words.at(2));
        tell("import", measured([&] { return importIntoDuckdb(api, points, words.at(3)); }));
    } else if (task == "count") {
        ask(api, file, [&](const OpenFile& open) { return open.count(words.at(2)); });
    } else if (task == "page") {
        ask(api, file, [&](const OpenFile& open) { return open.page(words.at(2)); });
    } else if (task == "csv") {
        tell("csv", measured([&] {
                 const OpenFile open(api, file);
                 open.writeCsv(words.at(2));
                 return std::uint64_t{0};
             }));
    } else {
        throw std::runtime_error("no such task: " + task);
    }
}

std::string duckdbVersion(const std::string& library) {
    return DuckdbApi(library).library_version();
}

}  // namespace bench
