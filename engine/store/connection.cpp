#include "engine/store/connection.h"

#include <chrono>
#include <memory>
#include <random>
#include <thread>

namespace tarvo::engine::store {

namespace {

// Waits a random while, growing with the number of tries, for ten seconds at most.
int backOff(void*, int tries) {
    thread_local std::minstd_rand random{std::random_device{}()};
    if (tries > 200)
        return 0;
    const int longest = tries < 10 ? 5 : 100;
    std::this_thread::sleep_for(std::chrono::milliseconds(1 + random() % longest));
    return 1;
}

}  // namespace

Connection::Connection(const std::string& name, int flags) : fileName(name) {
    const int result = sqlite3_open_v2(
        name.c_str(), &handle, flags | SQLITE_OPEN_NOMUTEX | SQLITE_OPEN_EXRESCODE, nullptr);
    if (result != SQLITE_OK) {
        const std::unique_ptr<sqlite3, int (*)(sqlite3*)> owner(handle, sqlite3_close);
        throwSqlite(handle, result, name);
    }
    sqlite3_busy_handler(handle, backOff, nullptr);
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
    run("PRAGMA synchronous=EXTRA");
    run("PRAGMA cache_size=-32768");
    // A spilled cache would lock readers out while blobs are staged.
    run("PRAGMA cache_spill=OFF");
}

bool Connection::hasRollbackJournal() {
    Statement statement(handle, "PRAGMA journal_mode", fileName);
    return statement.step() && statement.text(0) == "delete";
}

}  // namespace tarvo::engine::store
