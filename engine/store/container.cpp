#include "engine/store/container.h"

#include "engine/store/connection.h"
#include "engine/store/writerlock.h"

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <mutex>
#include <optional>

namespace tarvo::engine::store {

namespace {

constexpr std::int64_t formatVersion = 1;
constexpr std::size_t batchSize = 16u << 20;

// The schema, statement by statement as the container keeps it. A file whose schema reads
// otherwise is refused before anything else is read. docs/file-format.md tells what they hold.
constexpr const char* schemaStatements[] = {
    "CREATE TABLE blob(id INTEGER PRIMARY KEY, data BLOB NOT NULL)",
    "CREATE TABLE info(name TEXT PRIMARY KEY, value TEXT NOT NULL, checksum INTEGER NOT NULL) "
    "WITHOUT ROWID",
    "CREATE TABLE snapshot(id INTEGER PRIMARY KEY, last_blob INTEGER NOT NULL, root TEXT NOT NULL, "
    "checksum INTEGER NOT NULL)",
};

std::int64_t textChecksum(const std::string& prefix, std::string_view text) {
    std::string whole = prefix;
    whole.append(text);
    return static_cast<std::int64_t>(
        checksum({reinterpret_cast<const std::uint8_t*>(whole.data()), whole.size()}));
}

std::string snapshotPrefix(std::int64_t id, std::int64_t lastBlob) {
    return std::to_string(id) + ":" + std::to_string(lastBlob) + ":";
}

[[noreturn]] void throwDamaged(const std::string& fileName, const std::string& what) {
    throw Failure(ErrorCode::Damaged,
                  "The file is damaged: " + what + " does not agree with its checksum.",
                  "File: " + fileName + "\nRestore it from a backup.");
}

void checkSchema(Connection& connection) {
    Statement statement(connection.handle,
                        "SELECT sql FROM sqlite_schema WHERE name NOT LIKE 'sqlite\\_%' ESCAPE "
                        "'\\' OR sql IS NOT NULL ORDER BY name",
                        connection.fileName);
    std::size_t count = 0;
    bool same = true;
    while (statement.step()) {
        if (count >= std::size(schemaStatements) || statement.text(0) != schemaStatements[count])
            same = false;
        ++count;
    }
    if (!same || count != std::size(schemaStatements))
        throw Failure(ErrorCode::Format, "The file is not a point-cloud database of this library.",
                      "File: " + connection.fileName + "\nIts tables are not those of the format.");
}

void putInfo(Connection& connection, const std::string& name, std::string_view value) {
    Statement(connection.handle, "INSERT OR REPLACE INTO info VALUES(?, ?, ?)", connection.fileName)
        .bind(1, name)
        .bind(2, value)
        .bind(3, textChecksum(name + ":", value))
        .run();
}

std::string getInfo(Connection& connection, const std::string& name) {
    Statement statement(connection.handle, "SELECT value, checksum FROM info WHERE name = ?",
                        connection.fileName);
    statement.bind(1, name);
    if (!statement.step() || !statement.isText(0) || !statement.isInteger(1))
        throwDamaged(connection.fileName, "the item \"" + name + "\"");
    std::string value = statement.text(0);
    if (statement.integer(1) != textChecksum(name + ":", value))
        throwDamaged(connection.fileName, "the item \"" + name + "\"");
    return value;
}

void putSnapshot(Connection& connection, std::uint32_t id, std::int64_t lastBlob,
                 std::string_view root) {
    Statement(connection.handle, "INSERT INTO snapshot VALUES(?, ?, ?, ?)", connection.fileName)
        .bind(1, id)
        .bind(2, lastBlob)
        .bind(3, root)
        .bind(4, textChecksum(snapshotPrefix(id, lastBlob), root))
        .run();
}

}  // namespace

std::string containerVersion() {
    return std::string("SQLite ") + sqlite3_libversion();
}

struct Container::Impl {
    explicit Impl(std::unique_ptr<Connection> opened) : connection(std::move(opened)) {}

    std::unique_ptr<Connection> connection;
    bool readOnly = false;
    std::mutex mutex;
    sqlite3_blob* reader = nullptr;
    int scopes = 0;

    std::optional<WriterLock> lock;
    std::int64_t nextBlob = 0;
    std::size_t staged = 0;  // bytes in the open container transaction
    bool inBatch = false;
    bool failed = false;  // a staged batch was lost: only a rollback helps
    std::optional<Statement> insert;

    void closeReader() {
        sqlite3_blob_close(reader);
        reader = nullptr;
    }
    void endBatch() {
        if (inBatch) {
            connection->run("COMMIT");
            inBatch = false;
            staged = 0;
        }
    }
    // Deletes what is behind the last published blob.
    void collect() {
        connection->run("BEGIN IMMEDIATE");
        const std::int64_t last =
            connection->pragma("SELECT coalesce(max(last_blob), 0) FROM snapshot");
        Statement(connection->handle, "DELETE FROM blob WHERE id > ?", connection->fileName)
            .bind(1, last)
            .run();
        connection->run("COMMIT");
        nextBlob = last + 1;
    }
};

void Container::create(const std::string& fileName, std::string_view identity,
                       const std::function<std::string(const AddBlob& add)>& fill) {
    // Reserves the name, so that two creators of one file do not meet.
    std::FILE* reserved = std::fopen(fileName.c_str(), "wbx");
    if (!reserved) {
        if (std::filesystem::exists(fileName))
            throw Failure(ErrorCode::Exists, "The file \"" + fileName + "\" exists already.",
                          "Choose another name or remove the file first.");
        throw Failure(ErrorCode::File, "The file \"" + fileName + "\" can't be created.",
                      "Check that its folder exists and is writable.");
    }
    std::fclose(reserved);
    try {
        Connection connection(fileName, SQLITE_OPEN_READWRITE);
        connection.run("PRAGMA page_size=8192");
        connection.run("PRAGMA auto_vacuum=INCREMENTAL");
        connection.run("PRAGMA secure_delete=OFF");
        connection.configure();
        connection.run("BEGIN EXCLUSIVE");
        connection.run(("PRAGMA application_id=" + std::to_string(applicationId)).c_str());
        connection.run(("PRAGMA user_version=" + std::to_string(formatVersion)).c_str());
        for (const char* statement : schemaStatements)
            connection.run(statement);
        putInfo(connection, "identity", identity);
        putInfo(connection, "current", "1");
        std::int64_t lastBlob = 0;
        const std::string root = fill([&](ByteSpan data) {
            Statement(connection.handle, "INSERT INTO blob VALUES(?, ?)", connection.fileName)
                .bind(1, ++lastBlob)
                .bind(2, data)
                .run();
            return BlobRef{static_cast<std::uint64_t>(lastBlob), 0,
                           static_cast<std::uint32_t>(data.size()), checksum(data)};
        });
        putSnapshot(connection, 1, lastBlob, root);
        connection.run("COMMIT");
    } catch (...) {
        std::remove(fileName.c_str());
        std::remove((fileName + "-journal").c_str());
        throw;
    }
}

bool Container::recognises(const std::string& fileName) {
    std::error_code error;
    if (!std::filesystem::is_regular_file(fileName, error))
        return false;
    for (int flags : {SQLITE_OPEN_READONLY, SQLITE_OPEN_READWRITE}) {
        try {
            return Connection(fileName, flags).hasOurHeader();
        } catch (const Failure& failure) {
            // A journal to be played back needs the second way.
            if (failure.code() != ErrorCode::File)
                return false;
        }
    }
    return false;
}

Container::Container(const std::string& fileName) {
    std::error_code error;
    if (!std::filesystem::exists(fileName, error))
        throw Failure(ErrorCode::NotFound, "The file \"" + fileName + "\" does not exist.");
    if (!std::filesystem::is_regular_file(fileName, error))
        throw Failure(ErrorCode::Format, "\"" + fileName + "\" is not a file.");
    std::unique_ptr<Connection> connection;
    try {
        connection = std::make_unique<Connection>(fileName, SQLITE_OPEN_READWRITE);
    } catch (const Failure& failure) {
        if (failure.code() != ErrorCode::File)
            throw;
        connection = std::make_unique<Connection>(fileName, SQLITE_OPEN_READONLY);
    }
    m = std::make_unique<Impl>(std::move(connection));
    m->readOnly = sqlite3_db_readonly(m->connection->handle, "main") == 1;
    m->connection->configure();
    if (!m->connection->hasOurHeader())
        throw Failure(ErrorCode::Format, "The file is not a point-cloud database.",
                      "File: " + fileName);
    if (!m->connection->hasRollbackJournal())
        throw Failure(ErrorCode::Format, "The file is not a point-cloud database of this library.",
                      "File: " + fileName + "\nAnother program changed its journal mode.");
    const std::int64_t version = m->connection->pragma("PRAGMA user_version");
    if (version != formatVersion)
        throw Failure(ErrorCode::Format,
                      "The file has the format version " + std::to_string(version) +
                          ", this library reads version " + std::to_string(formatVersion) + ".",
                      "File: " + fileName + "\nOpen it with a later library.");
    checkSchema(*m->connection);
}

Container::~Container() {
    abandon();
    if (m)
        m->closeReader();
}

const std::string& Container::fileName() const {
    return m->connection->fileName;
}

std::string Container::identity() {
    const std::lock_guard guard(m->mutex);
    return getInfo(*m->connection, "identity");
}

std::uint64_t Container::size() {
    const std::lock_guard guard(m->mutex);
    return static_cast<std::uint64_t>(m->connection->pragma("PRAGMA page_count")) *
           static_cast<std::uint64_t>(m->connection->pragma("PRAGMA page_size"));
}

std::uint64_t Container::version() {
    const std::lock_guard guard(m->mutex);
    return static_cast<std::uint64_t>(m->connection->pragma("PRAGMA data_version"));
}

std::vector<std::uint32_t> Container::transactions() {
    const std::lock_guard guard(m->mutex);
    Statement statement(m->connection->handle, "SELECT id FROM snapshot ORDER BY id", fileName());
    std::vector<std::uint32_t> ids;
    while (statement.step())
        ids.push_back(static_cast<std::uint32_t>(statement.integer(0)));
    return ids;
}

std::uint32_t Container::current() {
    const std::lock_guard guard(m->mutex);
    return static_cast<std::uint32_t>(
        std::strtoul(getInfo(*m->connection, "current").c_str(), nullptr, 10));
}

std::string Container::root(std::uint32_t id) {
    const std::lock_guard guard(m->mutex);
    Statement statement(m->connection->handle,
                        "SELECT last_blob, root, checksum FROM snapshot WHERE id = ?", fileName());
    statement.bind(1, id);
    if (!statement.step())
        throw Failure(ErrorCode::NotFound,
                      "The database has no transaction " + std::to_string(id) + ".");
    std::string root = statement.text(1);
    if (statement.integer(2) != textChecksum(snapshotPrefix(id, statement.integer(0)), root))
        throwDamaged(fileName(), "transaction " + std::to_string(id));
    return root;
}

Container::ReadScope::ReadScope(Container& container) : m_container(container) {
    const std::lock_guard guard(container.m->mutex);
    ++container.m->scopes;
}

Container::ReadScope::~ReadScope() {
    const std::lock_guard guard(m_container.m->mutex);
    if (--m_container.m->scopes == 0)
        m_container.m->closeReader();
}

Bytes Container::read(const BlobRef& reference, std::string_view what) {
    Bytes data;
    {
        const std::lock_guard guard(m->mutex);
        sqlite3* handle = m->connection->handle;
        const auto row = static_cast<sqlite3_int64>(reference.blob);
        int result = m->reader
                         ? sqlite3_blob_reopen(m->reader, row)
                         : sqlite3_blob_open(handle, "main", "blob", "data", row, 0, &m->reader);
        if (result == SQLITE_ABORT) {
            m->closeReader();
            result = sqlite3_blob_open(handle, "main", "blob", "data", row, 0, &m->reader);
        }
        if (result != SQLITE_OK) {
            m->closeReader();
            if ((result & 0xff) == SQLITE_ERROR)
                throw Failure(ErrorCode::Damaged,
                              "The file is damaged: " + std::string(what) + " is missing.",
                              "File: " + fileName() + ", blob " + std::to_string(reference.blob));
            throwSqlite(handle, result, fileName());
        }
        const auto size = static_cast<std::uint64_t>(sqlite3_blob_bytes(m->reader));
        if (reference.offset > size || reference.length > size - reference.offset)
            throwDamaged(fileName(), std::string(what));
        data.resize(reference.length);
        result = sqlite3_blob_read(m->reader, data.data(), static_cast<int>(reference.length),
                                   static_cast<int>(reference.offset));
        if (result != SQLITE_OK) {
            m->closeReader();
            throwSqlite(handle, result, fileName());
        }
        if (m->scopes == 0)
            m->closeReader();
    }
    if (checksum(data) != reference.checksum)
        throwDamaged(fileName(), std::string(what));
    return data;
}

void Container::beginWriting() {
    if (m->readOnly)
        throw Failure(ErrorCode::File,
                      "The database can only be read: the file or its folder is "
                      "write-protected.",
                      "File: " + fileName());
    m->lock.emplace(fileName());
    try {
        m->failed = false;
        m->collect();
    } catch (...) {
        sqlite3_exec(m->connection->handle, "ROLLBACK", nullptr, nullptr, nullptr);
        m->lock.reset();
        throw;
    }
}

bool Container::writing() const {
    return m && m->lock.has_value();
}

BlobRef Container::add(ByteSpan data) {
    const std::lock_guard guard(m->mutex);
    if (!m->lock || m->failed)
        throw Failure(ErrorCode::State,
                      "The transaction failed while writing; it can only be rolled back.");
    if (data.size() > maximumBlob - 1024)
        throw Failure(ErrorCode::Argument, "A value of " + std::to_string(data.size()) +
                                               " bytes is too large to be stored.");
    try {
        if (!m->inBatch) {
            m->connection->run("BEGIN IMMEDIATE");
            m->inBatch = true;
        }
        if (!m->insert)
            m->insert.emplace(m->connection->handle, "INSERT INTO blob VALUES(?, ?)",
                              m->connection->fileName);
        m->insert->bind(1, m->nextBlob).bind(2, data);
        m->insert->run();
        const BlobRef reference{static_cast<std::uint64_t>(m->nextBlob++), 0,
                                static_cast<std::uint32_t>(data.size()), checksum(data)};
        m->staged += data.size();
        if (m->staged >= batchSize)
            m->endBatch();
        return reference;
    } catch (...) {
        m->failed = true;
        if (m->insert)
            m->insert->reset();
        throw;
    }
}

void Container::publish(std::uint32_t id, std::uint32_t parent, std::string_view root) {
    const std::lock_guard guard(m->mutex);
    if (!m->lock || m->failed)
        throw Failure(ErrorCode::State,
                      "The transaction failed while writing; it can only be rolled back.");
    m->closeReader();
    try {
        m->endBatch();
    } catch (...) {
        // A commit that only met readers can be tried again, one that lost its batch can't.
        m->failed = sqlite3_get_autocommit(m->connection->handle) != 0;
        throw;
    }
    try {
        m->connection->run("BEGIN IMMEDIATE");
        if (getInfo(*m->connection, "current") != std::to_string(parent))
            throw Failure(ErrorCode::State,
                          "Another program changed the database meanwhile; the transaction can "
                          "only be rolled back.");
        putSnapshot(*m->connection, id, m->nextBlob - 1, root);
        putInfo(*m->connection, "current", std::to_string(id));
        putInfo(*m->connection, "last", std::to_string(id));
        m->connection->run("COMMIT");
    } catch (...) {
        sqlite3_exec(m->connection->handle, "ROLLBACK", nullptr, nullptr, nullptr);
        throw;
    }
    m->insert.reset();
    m->lock.reset();
}

void Container::makeCurrent(std::uint32_t id) {
    (void)root(id);  // there, and whole
    changeAlone([&] {
        m->connection->run("BEGIN IMMEDIATE");
        putInfo(*m->connection, "current", std::to_string(id));
        m->connection->run("COMMIT");
    });
}

std::uint32_t Container::nextTransaction() {
    const std::vector<std::uint32_t> kept = transactions();
    const std::lock_guard guard(m->mutex);
    std::uint64_t last = kept.empty() ? 0 : kept.back();
    Statement given(m->connection->handle, "SELECT 1 FROM info WHERE name = 'last'", fileName());
    if (given.step())
        last = std::max<std::uint64_t>(
            last, std::strtoull(getInfo(*m->connection, "last").c_str(), nullptr, 10));
    if (last >= UINT32_MAX)
        throw Failure(ErrorCode::State, "The database has no more transaction numbers.",
                      "Copy its points into a new database.");
    return static_cast<std::uint32_t>(last + 1);
}

std::uint64_t Container::blobSize(std::uint64_t blob) {
    const std::lock_guard guard(m->mutex);
    Statement statement(m->connection->handle, "SELECT length(data) FROM blob WHERE id = ?",
                        fileName());
    statement.bind(1, static_cast<std::int64_t>(blob));
    return statement.step() ? static_cast<std::uint64_t>(statement.integer(0)) : 0;
}

// Runs one change of the container as a writer of its own; not while a transaction is pending.
void Container::changeAlone(const std::function<void()>& change) {
    beginWriting();
    const std::lock_guard guard(m->mutex);
    m->closeReader();
    try {
        change();
    } catch (...) {
        if (!sqlite3_get_autocommit(m->connection->handle))
            sqlite3_exec(m->connection->handle, "ROLLBACK", nullptr, nullptr, nullptr);
        m->lock.reset();
        throw;
    }
    m->lock.reset();
}

void Container::discard(const std::vector<std::uint32_t>& ids) {
    for (const std::uint32_t id : ids)
        (void)root(id);  // there, and whole
    const std::vector<std::uint32_t> kept = transactions();
    changeAlone([&] {
        Connection& connection = *m->connection;
        connection.run("BEGIN IMMEDIATE");
        const std::string current = getInfo(connection, "current");
        for (const std::uint32_t id : ids) {
            if (std::to_string(id) == current || id == kept.front())
                throw Failure(ErrorCode::Argument,
                              "Transaction " + std::to_string(id) + " can't be discarded: it is " +
                                  (id == kept.front() ? "the first one." : "the current one."));
            Statement(connection.handle, "DELETE FROM snapshot WHERE id = ?", connection.fileName)
                .bind(1, id)
                .run();
        }
        connection.run("COMMIT");
    });
}

void Container::vacuum(const std::function<KeepBlob()>& plan,
                       const std::function<bool(int)>& progress) {
    beginWriting();
    try {
        const KeepBlob keep = plan();
        giveBack(keep, progress);
    } catch (...) {
        const std::lock_guard guard(m->mutex);
        if (!sqlite3_get_autocommit(m->connection->handle))
            sqlite3_exec(m->connection->handle, "ROLLBACK", nullptr, nullptr, nullptr);
        m->lock.reset();
        throw;
    }
    m->lock.reset();
}

void Container::giveBack(const KeepBlob& keep, const std::function<bool(int)>& progress) {
    const std::lock_guard guard(m->mutex);
    m->closeReader();
    Connection& connection = *m->connection;
    const auto report = [&](std::int64_t done, std::int64_t all, int from, int to) {
        const auto share = all > 0 ? done * (to - from) / all : to - from;
        if (!progress(from + static_cast<int>(share)))
            throw Failure(ErrorCode::Cancelled, "The clean-up was cancelled.",
                          "The space given back so far stays so; nothing is lost.");
    };
    const std::int64_t last = connection.pragma("SELECT coalesce(max(id), 0) FROM blob");
    const auto deleteBatch = [&](const std::vector<std::int64_t>& unwanted) {
        connection.run("BEGIN IMMEDIATE");
        Statement statement(connection.handle, "DELETE FROM blob WHERE id = ?",
                            connection.fileName);
        for (const std::int64_t id : unwanted) {
            statement.bind(1, id);
            statement.run();
        }
        connection.run("COMMIT");
    };
    for (std::int64_t at = 0; at < last;) {
        std::vector<std::int64_t> unwanted;
        {
            Statement ids(connection.handle,
                          "SELECT id FROM blob WHERE id > ? ORDER BY id LIMIT 2000",
                          connection.fileName);
            ids.bind(1, at);
            at = last;
            while (ids.step()) {
                at = ids.integer(0);
                if (!keep(static_cast<std::uint64_t>(at)))
                    unwanted.push_back(at);
            }
        }
        deleteBatch(unwanted);
        report(at, last, 0, 50);
    }
    const std::int64_t unused = connection.pragma("PRAGMA freelist_count");
    for (std::int64_t left = unused; left > 0;) {
        report(unused - left, unused, 50, 100);
        connection.run("PRAGMA incremental_vacuum(2000)");
        const std::int64_t now = connection.pragma("PRAGMA freelist_count");
        if (now >= left)
            break;
        left = now;
    }
    progress(100);
}

void Container::abandon() noexcept {
    if (!m || !m->lock)
        return;
    const std::lock_guard guard(m->mutex);
    m->insert.reset();
    m->closeReader();
    if (!sqlite3_get_autocommit(m->connection->handle))
        sqlite3_exec(m->connection->handle, "ROLLBACK", nullptr, nullptr, nullptr);
    m->inBatch = false;
    m->staged = 0;
    try {
        m->collect();
    } catch (...) {
        // The next writer collects what is left.
        sqlite3_exec(m->connection->handle, "ROLLBACK", nullptr, nullptr, nullptr);
    }
    m->lock.reset();
}

}  // namespace tarvo::engine::store
