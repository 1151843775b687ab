#include "engine/store/sqlite.h"

#include "engine/store/writerlock.h"

#include <cerrno>
#include <new>

namespace tarvo::engine::store {

namespace {

[[noreturn]] void throwDiskError(const std::string& details) {
    throw DiskError(
        ErrorCode::File,
        "Reading or writing the file failed. What was committed is safe; check the disk.", details);
}

// The container takes pages that the disk can't read for damaged ones.
bool isReadError(sqlite3* database) {
    int error = 0;
    return database &&
           sqlite3_file_control(database, "main", SQLITE_FCNTL_LAST_ERRNO, &error) == SQLITE_OK &&
           (error == EIO || error == ENXIO || error == ERANGE);
}

}  // namespace

void throwSqlite(sqlite3* database, int result, const std::string& fileName) {
    std::string details = "File: " + fileName + "\n";
    if (database)
        details += std::string("Container: ") + sqlite3_errmsg(database) + " (code " +
                   std::to_string(sqlite3_extended_errcode(database)) + ")";
    switch (result & 0xff) {
        case SQLITE_FULL:
            throw NoRoom(ErrorCode::File,
                         "The disk is full. What was committed is safe: free some space and try "
                         "again.",
                         details);
        case SQLITE_READONLY:
            if (result == SQLITE_READONLY_DBMOVED)
                throwMoved(fileName);
            if (result == SQLITE_READONLY_ROLLBACK || result == SQLITE_READONLY_RECOVERY ||
                result == SQLITE_READONLY_CANTINIT)
                throw Failure(ErrorCode::File,
                              "The file was not closed properly and needs a repair that a "
                              "read-only place does not allow. Copy it, with the file of the same "
                              "name that ends in \"-journal\", to a place that is writable, and "
                              "open it there.",
                              details);
            throw Failure(ErrorCode::File,
                          "The file can only be read: it or its folder is "
                          "write-protected.",
                          details);
        case SQLITE_BUSY:
        case SQLITE_LOCKED:
            throw Failure(ErrorCode::Busy,
                          "The file is in use by another program. Try again when that is done.",
                          details);
        case SQLITE_NOTADB:
            throw Failure(ErrorCode::Format, "The file is not a point-cloud database.", details);
        case SQLITE_CORRUPT:
            if (isReadError(database))
                throwDiskError(details);
            throw Failure(ErrorCode::Damaged, "The file is damaged. Restore it from a backup.",
                          details);
        case SQLITE_CANTOPEN:
            if (database && sqlite3_system_errno(database) == EIO)
                throwDiskError(details);
            throw Failure(ErrorCode::File, "The file can't be opened.", details);
        case SQLITE_NOMEM:
            throw Failure(ErrorCode::Memory, "Out of memory.", details);
        case SQLITE_IOERR:
            if (result == SQLITE_IOERR_WRITE)
                throw NoRoom(
                    ErrorCode::File,
                    "Writing the file failed: the disk may be full, or a limit on the "
                    "size of files be reached. What was committed is safe: free some space "
                    "and try again.",
                    details);
            throwDiskError(details);
        default:
            throw Failure(ErrorCode::File, "The file can't be read or written.", details);
    }
}

Statement::Statement(sqlite3* database, const char* sql, const std::string& fileName)
    : m_database(database), m_fileName(fileName) {
    check(sqlite3_prepare_v2(database, sql, -1, &m_statement, nullptr));
}

Statement::~Statement() {
    sqlite3_finalize(m_statement);
}

void Statement::check(int result) {
    if (result != SQLITE_OK)
        throwSqlite(m_database, result, m_fileName);
}

Statement& Statement::bind(int index, std::int64_t value) {
    check(sqlite3_bind_int64(m_statement, index, value));
    return *this;
}

Statement& Statement::bind(int index, std::string_view value) {
    check(sqlite3_bind_text64(m_statement, index, value.data(), value.size(), SQLITE_STATIC,
                              SQLITE_UTF8));
    return *this;
}

Statement& Statement::bind(int index, ByteSpan value) {
    // No bytes come as a null pointer, which would be stored as NULL.
    const void* const bytes = value.empty() ? "" : static_cast<const void*>(value.data());
    check(sqlite3_bind_blob64(m_statement, index, bytes, value.size(), SQLITE_STATIC));
    return *this;
}

bool Statement::step() {
    const int result = sqlite3_step(m_statement);
    if (result == SQLITE_ROW)
        return true;
    if (result != SQLITE_DONE)
        check(result);
    return false;
}

void Statement::run() {
    step();
    reset();
}

void Statement::reset() {
    sqlite3_reset(m_statement);
    sqlite3_clear_bindings(m_statement);
}

std::int64_t Statement::integer(int column) {
    return sqlite3_column_int64(m_statement, column);
}

std::string Statement::text(int column) {
    const auto* text = reinterpret_cast<const char*>(sqlite3_column_text(m_statement, column));
    if (!text && sqlite3_column_type(m_statement, column) != SQLITE_NULL)
        throw std::bad_alloc();
    return text ? std::string(text,
                              static_cast<std::size_t>(sqlite3_column_bytes(m_statement, column)))
                : std::string();
}

bool Statement::isInteger(int column) {
    return sqlite3_column_type(m_statement, column) == SQLITE_INTEGER;
}

bool Statement::isText(int column) {
    return sqlite3_column_type(m_statement, column) == SQLITE_TEXT;
}

void execute(sqlite3* database, const char* sql, const std::string& fileName) {
    const int result = sqlite3_exec(database, sql, nullptr, nullptr, nullptr);
    if (result != SQLITE_OK)
        throwSqlite(database, result, fileName);
}

}  // namespace tarvo::engine::store
