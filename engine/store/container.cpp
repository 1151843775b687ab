#include "engine/store/container.h"

#include "engine/store/containerimpl.h"
#include "files/error.h"
#include "files/path.h"
#include "files/place.h"

#include <algorithm>
#include <cstdio>
#include <filesystem>

namespace tarvo::engine::store {

namespace {

// The schema, statement by statement as the container keeps it. A file whose schema reads
// otherwise is refused before anything else is read. docs/file-format.md tells what they hold.
constexpr const char* schemaStatements[] = {
    "CREATE TABLE blob(id INTEGER PRIMARY KEY, data BLOB NOT NULL)",
    "CREATE TABLE info(name TEXT PRIMARY KEY, value TEXT NOT NULL, checksum INTEGER NOT NULL) "
    "WITHOUT ROWID",
    "CREATE TABLE snapshot(id INTEGER PRIMARY KEY, last_blob INTEGER NOT NULL, root TEXT NOT NULL, "
    "checksum INTEGER NOT NULL)",
};

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

void checkVersion(Connection& connection) {
    const std::int64_t version = connection.pragma("PRAGMA user_version");
    if (version < oldestFormat)
        throw Failure(
            ErrorCode::Damaged,
            "The file is damaged: there is no format version " + std::to_string(version) + ".",
            "File: " + connection.fileName + "\nRestore it from a backup.");
    if (version > newestFormat)
        throw Failure(ErrorCode::Format,
                      "The file has the format version " + std::to_string(version) +
                          ", this library reads versions up to " + std::to_string(newestFormat) +
                          ".",
                      "File: " + connection.fileName + "\nOpen it with a later library.");
}

void reserveName(const std::string& fileName) {
    std::FILE* reserved = std::fopen(fileName.c_str(), "wbx");
    if (!reserved) {
        std::error_code error;
        if (std::filesystem::exists(files::pathOf(fileName), error))
            throw Failure(ErrorCode::Exists, "The file \"" + fileName + "\" exists already.",
                          "Choose another name or remove the file first.");
        throw Failure(ErrorCode::File, "The file \"" + fileName + "\" can't be created.",
                      "Check that its folder exists and is writable.");
    }
    std::fclose(reserved);
}

void fillNewFile(const std::string& fileName, std::string_view identity,
                 const std::function<std::string(const Container::AddBlob& add)>& fill) {
    Connection connection(fileName, SQLITE_OPEN_READWRITE);
    connection.run("PRAGMA page_size=8192");
    connection.run("PRAGMA auto_vacuum=INCREMENTAL");
    connection.configure();
    connection.run("BEGIN EXCLUSIVE");
    connection.run(("PRAGMA application_id=" + std::to_string(applicationId)).c_str());
    connection.run(("PRAGMA user_version=" + std::to_string(writtenFormat)).c_str());
    for (const char* statement : schemaStatements)
        connection.run(statement);
    putInfo(connection, "identity", identity);
    History history{1, 1, 0, {1}};
    const std::string root = fill([&](ByteSpan data) {
        Statement(connection.handle, "INSERT INTO blob VALUES(?, ?)", connection.fileName)
            .bind(1, ++history.lastBlob)
            .bind(2, data)
            .run();
        return BlobRef{static_cast<std::uint64_t>(history.lastBlob), 0,
                       static_cast<std::uint32_t>(data.size()), checksum(data)};
    });
    putSnapshot(connection, 1, history.lastBlob, root);
    writeHistory(connection, history);
    connection.run("COMMIT");
}

// The container's state of one moment, for several reads under the mutex.
class Moment {
public:
    explicit Moment(Connection& connection) : m_connection(connection) {
        m_connection.run("BEGIN");
    }
    ~Moment() { sqlite3_exec(m_connection.handle, "COMMIT", nullptr, nullptr, nullptr); }
    Moment(const Moment&) = delete;
    Moment& operator=(const Moment&) = delete;

private:
    Connection& m_connection;
};

}  // namespace

std::string containerVersion() {
    return std::string("SQLite ") + sqlite3_libversion();
}

void Container::create(const std::string& fileName, std::string_view identity,
                       const std::function<std::string(const AddBlob& add)>& fill) {
    // Before there is a file: its removal needs no memory then.
    const std::filesystem::path file = files::pathOf(fileName);
    const std::filesystem::path journal = files::pathOf(fileName + "-journal");
    // So that two creators of one file do not meet.
    reserveName(fileName);
    try {
        fillNewFile(fileName, identity, fill);
        files::syncFolderOf(fileName);
    } catch (...) {
        std::error_code error;
        std::filesystem::remove(file, error);
        std::filesystem::remove(journal, error);
        throw;
    }
}

bool Container::recognises(const std::string& fileName) {
    std::error_code error;
    if (!std::filesystem::is_regular_file(files::pathOf(fileName), error))
        return false;
    for (int flags : {SQLITE_OPEN_READONLY, SQLITE_OPEN_READWRITE}) {
        try {
            return Connection(fileName, flags).hasOurHeader();
        } catch (const DiskError&) {
            throw;
        } catch (const Failure& failure) {
            // Only a database is in use by another program, or damaged behind its header.
            if (failure.code() == ErrorCode::Busy || failure.code() == ErrorCode::Damaged)
                return true;
            // A journal to be played back needs the second way.
            if (failure.code() != ErrorCode::File)
                return false;
        }
    }
    return false;
}

Container::Container(const std::string& fileName) {
    std::error_code error;
    if (!std::filesystem::exists(files::pathOf(fileName), error))
        throw Failure(ErrorCode::NotFound, "The file \"" + fileName + "\" does not exist.");
    if (!std::filesystem::is_regular_file(files::pathOf(fileName), error))
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
    m->connection->refuseForeignJournal();
    if (!m->connection->hasOurHeader())
        throw Failure(ErrorCode::Format, "The file is not a point-cloud database.",
                      "File: " + fileName);
    if (!m->connection->hasRollbackJournal())
        throw Failure(ErrorCode::Format, "The file is not a point-cloud database of this library.",
                      "File: " + fileName + "\nAnother program changed its journal mode.");
    checkVersion(*m->connection);
    checkSchema(*m->connection);
    m->identity = getInfo(*m->connection, "identity");
}

Container::~Container() {
    abandon();
    if (m)
        m->closeReader();
}

const std::string& Container::fileName() const {
    return m->fileName();
}

const std::string& Container::identity() const {
    return m->identity;
}

std::uint64_t Container::size() {
    const std::lock_guard guard(m->mutex);
    return static_cast<std::uint64_t>(m->connection->pragma("PRAGMA page_count")) *
           static_cast<std::uint64_t>(m->connection->pragma("PRAGMA page_size"));
}

std::uint64_t Container::version() {
    const std::lock_guard guard(m->mutex);
    // What another program wrote over the file without the container's ways shows in its time.
    std::error_code error;
    const auto path = files::pathOf(m->connection->path);
    const auto time = std::filesystem::last_write_time(path, error).time_since_epoch().count();
    const auto version = static_cast<std::uint64_t>(m->connection->pragma("PRAGMA data_version"));
    return version ^ (static_cast<std::uint64_t>(time) << 20);
}

bool Container::hasMoved() {
    const std::lock_guard guard(m->mutex);
    return m->connection->hasMoved();
}

std::vector<std::uint32_t> Container::transactions() {
    const std::lock_guard guard(m->mutex);
    const Moment moment(*m->connection);
    return readHistory(*m->connection).kept;
}

std::uint32_t Container::current() {
    const std::lock_guard guard(m->mutex);
    const Moment moment(*m->connection);
    return readHistory(*m->connection).current;
}

bool Container::keeps(std::uint32_t id) {
    const std::lock_guard guard(m->mutex);
    const Moment moment(*m->connection);
    return readHistory(*m->connection).keeps(id);
}

std::string Container::root(std::uint32_t id) {
    const std::lock_guard guard(m->mutex);
    return readRoot(*m->connection, id);
}

std::uint64_t Container::lastBlob(std::uint32_t id) {
    const std::lock_guard guard(m->mutex);
    return static_cast<std::uint64_t>(readLastBlob(*m->connection, id));
}

std::pair<std::uint32_t, std::string> Container::currentRoot() {
    const std::lock_guard guard(m->mutex);
    m->requireSame();
    const Moment moment(*m->connection);
    const std::uint32_t id = readHistory(*m->connection).current;
    return {id, readRoot(*m->connection, id)};
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

const Bytes* Container::Impl::Writing::inMemory(std::uint64_t blob) const {
    const auto first = static_cast<std::uint64_t>(firstInMemory);
    return blob >= first && blob - first < memory.size() ? &memory[blob - first] : nullptr;
}

void Container::Impl::closeReader() {
    sqlite3_blob_close(reader);
    reader = nullptr;
}

void Container::Impl::closeUnscopedReader() {
    if (scopes == 0)
        closeReader();
}

Bytes Container::Impl::readBlob(std::uint64_t blob, Extent wanted, std::string_view what) {
    if (const Bytes* const added = writing ? writing->inMemory(blob) : nullptr) {
        if (wanted.offset > added->size() || wanted.length > added->size() - wanted.offset)
            throwDamaged(fileName(), std::string(what));
        const auto begin = added->begin() + static_cast<std::ptrdiff_t>(wanted.offset);
        return {begin, begin + static_cast<std::ptrdiff_t>(wanted.length)};
    }
    const Row row = openBlob(blob, what);
    Bytes data;
    try {
        data = readRow(placeInRow(row, wanted, what), wanted.length);
    } catch (...) {
        closeReader();
        throw;
    }
    closeUnscopedReader();
    return data;
}

std::uint64_t Container::Impl::placeInRow(const Row& row, Extent wanted, std::string_view what) {
    std::optional<std::uint64_t> place = wanted.offset;
    if (row.sparse) {
        if (row.bytes < extentCountBytes)
            throwDamaged(fileName(), std::string(what));
        const auto count = ByteReader(readRow(0, extentCountBytes), what).number<std::uint32_t>();
        if (count > (row.bytes - extentCountBytes) / extentBytes)
            throwDamaged(fileName(), std::string(what));
        place = placeOf(wanted, readRow(extentCountBytes, count * extentBytes), row.bytes, what);
    }
    if (!place || *place > row.bytes || wanted.length > row.bytes - *place)
        throwDamaged(fileName(), std::string(what));
    return *place;
}

Bytes Container::Impl::readRow(std::uint64_t offset, std::uint64_t length) {
    Bytes data(length);
    const int result =
        sqlite3_blob_read(reader, data.data(), static_cast<int>(length), static_cast<int>(offset));
    if (result != SQLITE_OK)
        throwSqlite(connection->handle, result, fileName());
    return data;
}

int Container::Impl::openRow(std::int64_t id) {
    sqlite3* const handle = connection->handle;
    int result = reader ? sqlite3_blob_reopen(reader, id)
                        : sqlite3_blob_open(handle, "main", "blob", "data", id, 0, &reader);
    if (result == SQLITE_ABORT) {
        closeReader();
        result = sqlite3_blob_open(handle, "main", "blob", "data", id, 0, &reader);
    }
    if (result != SQLITE_OK)
        closeReader();
    return result;
}

Container::Impl::Row Container::Impl::openBlob(std::uint64_t blob, std::string_view what) {
    // A number that no blob can have has no negative either.
    const auto id = static_cast<std::int64_t>(std::min<std::uint64_t>(blob, INT64_MAX));
    const auto isMissing = [](int result) { return (result & 0xff) == SQLITE_ERROR; };
    Row row;
    int result = openRow(id);
    if (isMissing(result)) {
        result = openRow(-id);
        row.sparse = true;
    }
    if (isMissing(result))
        throw Failure(ErrorCode::Damaged,
                      "The file is damaged: " + std::string(what) + " is missing.",
                      "File: " + fileName() + ", blob " + std::to_string(blob));
    if (result != SQLITE_OK)
        throwSqlite(connection->handle, result, fileName());
    row.bytes = static_cast<std::uint64_t>(sqlite3_blob_bytes(reader));
    return row;
}

Bytes Container::read(const BlobRef& reference, std::string_view what) {
    Bytes data;
    {
        const std::lock_guard guard(m->mutex);
        data = m->readBlob(reference.blob, {reference.offset, reference.length}, what);
    }
    if (checksum(data) != reference.checksum)
        throwDamaged(fileName(), std::string(what));
    return data;
}

std::uint64_t Container::blobCount() {
    const std::lock_guard guard(m->mutex);
    return static_cast<std::uint64_t>(m->connection->pragma("SELECT count(*) FROM blob"));
}

std::vector<std::string> Container::structureFaults() {
    const std::lock_guard guard(m->mutex);
    Statement statement(m->connection->handle, "PRAGMA integrity_check", fileName());
    std::vector<std::string> lines;
    while (statement.step())
        if (std::string line(statement.text(0)); line != "ok")
            lines.push_back(std::move(line));
    return lines;
}

}  // namespace tarvo::engine::store
