#include "engine/store/connection.h"

#include "files/listing.h"
#include "files/path.h"

#include <chrono>
#include <filesystem>
#include <memory>
#include <random>
#include <thread>

namespace tarvo::engine::store {

// Waits a random while, growing with the number of tries.
int Connection::backOff(void* connection, int tries) noexcept {
    // Nothing may be thrown here. Other threads and processes get other numbers by the clock.
    thread_local std::minstd_rand random(
        static_cast<std::uint32_t>(std::chrono::steady_clock::now().time_since_epoch().count()));
    if (tries >= static_cast<const Connection*>(connection)->m_tries)
        return 0;
    const int longest = tries < 10 ? 5 : 100;
    std::this_thread::sleep_for(std::chrono::milliseconds(1 + random() % longest));
    return 1;
}

Connection::Connection(const std::string& name, int flags)
    : fileName(name),
      path(files::nameOf(std::filesystem::absolute(files::pathOf(name)))),
      file(OpenFile::of(path)) {
    const int result = sqlite3_open_v2(
        path.c_str(), &handle, flags | SQLITE_OPEN_NOMUTEX | SQLITE_OPEN_EXRESCODE, nullptr);
    std::unique_ptr<sqlite3, int (*)(sqlite3*)> opened(handle, sqlite3_close);
    if (result != SQLITE_OK)
        throwSqlite(handle, result, name);
    if (hasMoved())
        throw Failure(ErrorCode::Busy,
                      "The file was replaced while it was being opened. Try again.",
                      "File: " + name);
    sqlite3_busy_handler(handle, backOff, this);
    sqlite3_db_config(handle, SQLITE_DBCONFIG_DEFENSIVE, 1, nullptr);
    sqlite3_db_config(handle, SQLITE_DBCONFIG_TRUSTED_SCHEMA, 0, nullptr);
    sqlite3_db_config(handle, SQLITE_DBCONFIG_ENABLE_TRIGGER, 0, nullptr);
    sqlite3_db_config(handle, SQLITE_DBCONFIG_ENABLE_VIEW, 0, nullptr);
    sqlite3_db_config(handle, SQLITE_DBCONFIG_DQS_DML, 0, nullptr);
    sqlite3_db_config(handle, SQLITE_DBCONFIG_DQS_DDL, 0, nullptr);
    sqlite3_db_config(handle, SQLITE_DBCONFIG_ENABLE_LOAD_EXTENSION, 0, nullptr);
    sqlite3_limit(handle, SQLITE_LIMIT_LENGTH, static_cast<int>(maximumBlob));
    sqlite3_limit(handle, SQLITE_LIMIT_SQL_LENGTH, 10000);
    sqlite3_limit(handle, SQLITE_LIMIT_EXPR_DEPTH, 20);
    sqlite3_limit(handle, SQLITE_LIMIT_ATTACHED, 0);
    handle = opened.release();
}

Connection::~Connection() {
    sqlite3_close(handle);
}

std::int64_t Connection::pragma(const char* sql) {
    Statement statement(handle, sql, fileName);
    return statement.step() ? statement.integer(0) : 0;
}

void Connection::configure() {
    run("PRAGMA cell_size_check=ON");
    run("PRAGMA mmap_size=0");
    // The removal of the journal must last before a commit cuts off what it has freed: a journal
    // that comes back has none of it. What EXTRA does not tell, Container::Impl::Change looks for.
    run("PRAGMA synchronous=EXTRA");
    // Else deleting writes all that it deletes, and first into the journal. What the container is
    // built with decides unless it is told, for each connection.
    run("PRAGMA secure_delete=OFF");
    run("PRAGMA cache_size=-4096");
    // A spilled cache would lock readers out while blobs are staged.
    run("PRAGMA cache_spill=OFF");
}

bool Connection::hasRollbackJournal() {
    Statement statement(handle, "PRAGMA journal_mode", fileName);
    return statement.step() && statement.text(0) == "delete";
}

bool Connection::hasMoved() {
    int moved = 0;
    const int result = sqlite3_file_control(handle, "main", SQLITE_FCNTL_HAS_MOVED, &moved);
    return (result == SQLITE_OK && moved != 0) || files::identityOf(path) != file->identity();
}

bool Connection::isBeingWritten() {
    sqlite3_file* opened = nullptr;
    int reserved = 0;
    return sqlite3_file_control(handle, "main", SQLITE_FCNTL_FILE_POINTER, &opened) == SQLITE_OK &&
           opened->pMethods->xCheckReservedLock(opened, &reserved) == SQLITE_OK && reserved != 0;
}

void Connection::refuseForeignJournal() {
    namespace fs = std::filesystem;
    std::error_code error;
    if (fs::hard_link_count(files::pathOf(path), error) < 2 || error)
        return;
    const fs::path own = fs::canonical(files::pathOf(path), error);
    for (const std::string& entry : files::namesIn(files::nameOf(own.parent_path()))) {
        const std::string name = files::beside(files::nameOf(own), entry);
        const fs::path journal = files::pathOf(name + "-journal");
        std::error_code none;
        if (name == files::nameOf(own) || !fs::exists(journal, none) ||
            files::identityOf(name) != file->identity())
            continue;
        // One that is alive has its journal for a moment only.
        if (isBeingWritten() || !fs::exists(journal, none) || fs::file_size(journal, none) == 0)
            continue;
        throw Failure(ErrorCode::State,
                      "The file was not closed properly under its other name \"" + name + "\".",
                      "File: " + fileName + "\nOpen it under that name first, which repairs it.");
    }
}

}  // namespace tarvo::engine::store
