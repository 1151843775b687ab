// Container: all that changes a file.
#include "engine/base/interruption.h"
#include "engine/store/containerimpl.h"
#include "files/error.h"
#include "files/place.h"

#include <algorithm>
#include <chrono>
#include <random>
#include <thread>
#include <vector>

namespace tarvo::engine::store {

namespace {

constexpr std::size_t batchSize = 16u << 20;  // bytes
constexpr auto longestWait = std::chrono::seconds(10);
constexpr auto pause = std::chrono::milliseconds(10);
constexpr const char* tokenName = "writer";

// Blobs or pages that one step deletes or moves.
constexpr std::int64_t firstStep = 64;
constexpr std::int64_t longestStep = 2048;

std::string randomToken() {
    std::random_device random;
    std::string token;
    for (int i = 0; i < 32; ++i)
        token += "0123456789abcdef"[random() & 15];
    return token;
}

constexpr const char* lockFailed =
    "Its lock did not keep the other program out: are both on one machine?";

[[noreturn]] void throwPlaceLost(const std::string& fileName) {
    throw Failure(ErrorCode::State,
                  "Another program has changed the database meanwhile; the transaction can only be "
                  "rolled back.",
                  "File: " + fileName + "\n" + lockFailed);
}

[[noreturn]] void throwNotSynced(const char* reason) {
    throw NotSynced(ErrorCode::File,
                    "The change is in the file, but the file's folder could not be synced: the "
                    "disk may be failing.",
                    std::string("A power cut may still undo the change.\n") + reason);
}

[[noreturn]] void throwNoRoom(const std::string& details) {
    throw Failure(ErrorCode::File,
                  "The disk takes nothing more, not even what giving space back needs. Free about "
                  "one megabyte of it first, or have it checked; nothing is lost.",
                  details);
}

}  // namespace

Container::Impl::Change::Change(Impl& impl) : m_impl(impl), m_guard(impl.mutex) {
    impl.closeReader();
    // The rest of the patience is patiently's, which lets others at the file in between.
    impl.connection->setTries(fewTries);
    try {
        impl.connection->run("BEGIN IMMEDIATE");
    } catch (...) {
        impl.connection->setTries(mostTries);
        throw;
    }
}

Container::Impl::Change::~Change() {
    if (!m_committed && !sqlite3_get_autocommit(m_impl.connection->handle))
        sqlite3_exec(m_impl.connection->handle, "ROLLBACK", nullptr, nullptr, nullptr);
    m_impl.connection->setTries(mostTries);
}

void Container::Impl::Change::commit() {
    try {
        m_impl.connection->run("COMMIT");
    } catch (const Failure& failure) {
        if (sqlite3_extended_errcode(m_impl.connection->handle) != SQLITE_IOERR_DIR_FSYNC)
            throw;
        m_committed = true;
        throwNotSynced(failure.what());
    }
    m_committed = true;
    m_impl.requireSynced();
}

void Container::Impl::requireSynced() {
    try {
        // Where the journal was: links may lead to the file from other folders.
        files::syncFolderOf(sqlite3_db_filename(connection->handle, "main"));
    } catch (const files::FileError& error) {
        throwNotSynced(error.what());
    }
}

Container::Waiting::Waiting(Container& container, std::function<bool()> goOn)
    : m_container(container), m_before(std::move(container.m->goOn)) {
    container.m->goOn = std::move(goOn);
}

Container::Waiting::~Waiting() {
    m_container.m->goOn = std::move(m_before);
}

void Container::Impl::patiently(const std::function<void()>& work) {
    const auto end = std::chrono::steady_clock::now() + longestWait;
    for (;;) {
        try {
            work();
            return;
        } catch (const Failure& failure) {
            if (failure.code() != ErrorCode::Busy)
                throw;
        }
        std::this_thread::sleep_for(pause);
        if (goOn && !goOn())
            throw Failure(ErrorCode::Cancelled,
                          "Waiting for programs that read the database was cancelled.",
                          writing ? "The transaction is still pending." : "");
        Interruption::check();
        if (!goOn && std::chrono::steady_clock::now() > end)
            throw Failure(
                ErrorCode::Busy,
                "Other programs keep reading the database, so that it can't be written "
                "now. Try again when they are done.",
                "File: " + fileName() + (writing ? "\nThe transaction is still pending." : ""));
    }
}

void Container::Impl::inSteps(const std::function<bool(std::int64_t count)>& step) {
    for (std::int64_t count = firstStep;;) {
        bool left = true;
        try {
            patiently([&] { left = step(count); });
            count = std::min(count * 2, longestStep);
        } catch (const NoRoom& failure) {
            if (count == 1)
                throwNoRoom(failure.details());
            count = std::max<std::int64_t>(1, count / 8);
        }
        if (!left)
            return;
    }
}

void Container::Impl::takeLock() {
    if (readOnly)
        throw Failure(ErrorCode::File,
                      "The database can only be read: the file or its folder is "
                      "write-protected.",
                      "File: " + fileName());
    const std::lock_guard guard(mutex);
    if (connection->hasMoved())
        throwMoved(fileName());
    lock.emplace(connection->file, connection->path);
    try {
        connection->refuseForeignJournal();
        requireSame();
        if (isFirstFormat(*connection))
            nameLock.emplace(connection->path);
    } catch (...) {
        lock.reset();
        throw;
    }
}

void Container::Impl::releaseLock() {
    nameLock.reset();
    lock.reset();
}

void Container::Impl::requireSame() {
    // Another program may have written over the file without the container's ways, which what is
    // remembered of it does not show.
    closeReader();
    sqlite3_db_release_memory(connection->handle);
    if (getInfo(*connection, "identity") != identity)
        throw Failure(ErrorCode::State, "The file holds another database than when it was opened.",
                      "File: " + fileName() + "\nClose it and open it anew.");
}

bool Container::Impl::holdsToken() {
    return hasInfo(*connection, tokenName) && getInfo(*connection, tokenName) == writing->token;
}

void Container::Impl::takePlace() {
    if (writing->placeTaken)
        return;
    patiently([this] {
        Change change(*this);
        requireSame();
        if (readHistory(*connection) != writing->base)
            throwPlaceLost(fileName());
        // Of version 1 only the roots' own checksums tell whether their last blobs are right.
        if (isFirstFormat(*connection))
            for (const std::uint32_t id : writing->base.kept)
                (void)readRoot(*connection, id);
        putInfo(*connection, tokenName, writing->token);
        change.commit();
    });
    deleteFrom(writing->base.lastBlob + 1);
    writing->placeTaken = true;
}

void Container::Impl::requirePlace() {
    if (!holdsToken())
        throwPlaceLost(fileName());
    // A program that knows nothing of tokens may have deleted what this one wrote.
    for (const std::int64_t blob : {writing->base.lastBlob + 1, writing->firstInMemory - 1}) {
        if (blob <= writing->base.lastBlob || blob >= writing->firstInMemory)
            continue;
        Statement there(connection->handle, "SELECT 1 FROM blob WHERE id = ?", fileName());
        if (!there.bind(1, blob).step())
            throwPlaceLost(fileName());
    }
}

// Of a writer that has its place.
void Container::Impl::deleteFrom(std::int64_t first) {
    inSteps([&](std::int64_t count) {
        Change change(*this);
        if (!holdsToken())
            throwPlaceLost(fileName());
        Statement(connection->handle,
                  "DELETE FROM blob WHERE id IN (SELECT id FROM blob WHERE id >= ? LIMIT ?)",
                  fileName())
            .bind(1, first)
            .bind(2, count)
            .run();
        const bool left = sqlite3_changes(connection->handle) == count;
        change.commit();
        return left;
    });
}

void Container::Impl::writeMemory() {
    // A batch whose commit failed may be in the file all the same.
    Statement insert(connection->handle, "INSERT OR REPLACE INTO blob VALUES(?, ?)", fileName());
    std::int64_t id = writing->firstInMemory;
    for (const Bytes& blob : writing->memory) {
        insert.bind(1, id++).bind(2, ByteSpan(blob));
        insert.run();
    }
}

void Container::Impl::forgetMemory() {
    writing->firstInMemory = writing->nextBlob();
    writing->memory.clear();
    writing->bytes = 0;
}

void Container::Impl::flush() {
    takePlace();
    patiently([this] {
        Change change(*this);
        requirePlace();
        writeMemory();
        change.commit();
        forgetMemory();
    });
}

void Container::beginWriting() {
    m->takeLock();
    try {
        const std::lock_guard guard(m->mutex);
        Impl::Writing writing;
        writing.base = readHistory(*m->connection);
        if (writing.base.lastBlob > mostBlobsBefore)
            throw Failure(ErrorCode::Damaged,
                          "The file is damaged: it has no room for another transaction.",
                          "File: " + fileName() + "\nCopy its points into a new database.");
        writing.token = randomToken();
        writing.firstInMemory = writing.base.lastBlob + 1;
        m->writing = std::move(writing);
    } catch (...) {
        m->releaseLock();
        throw;
    }
}

bool Container::writing() const {
    return m && m->writing.has_value();
}

std::uint32_t Container::nextTransaction() const {
    const std::uint32_t last = m->writing->base.last;
    if (last == UINT32_MAX)
        throw Failure(ErrorCode::State, "The database has no more transaction numbers.",
                      "Copy its points into a new database.");
    return last + 1;
}

std::uint64_t Container::lastBlob() const {
    return static_cast<std::uint64_t>(m->writing->base.lastBlob);
}

BlobRef Container::add(ByteSpan data) {
    if (!m->writing)
        throw Failure(ErrorCode::State, "No transaction is pending.");
    if (data.size() > maximumBlob - 1024)
        throw Failure(ErrorCode::Argument, "A value of " + std::to_string(data.size()) +
                                               " bytes is too large to be stored.");
    if (m->writing->bytes >= batchSize)
        m->flush();
    const std::lock_guard guard(m->mutex);
    Impl::Writing& writing = *m->writing;
    const std::int64_t id = writing.nextBlob();
    writing.memory.emplace_back(data.begin(), data.end());
    writing.bytes += data.size();
    return {static_cast<std::uint64_t>(id), 0, static_cast<std::uint32_t>(data.size()),
            checksum(data)};
}

void Container::publish(std::uint32_t id, std::string_view root) {
    m->takePlace();
    try {
        m->patiently([&] {
            Impl::Change change(*m);
            Connection& connection = *m->connection;
            m->requirePlace();
            History history = readHistory(connection);
            if (history != m->writing->base)
                throwPlaceLost(fileName());
            m->writeMemory();
            raiseFormat(connection);
            history.current = history.last = id;
            history.lastBlob = m->writing->nextBlob() - 1;
            history.kept.push_back(id);
            putSnapshot(connection, id, history.lastBlob, root);
            writeHistory(connection, history);
            removeInfo(connection, tokenName);
            change.commit();
        });
    } catch (const NotSynced&) {
        throw;
    } catch (...) {
        if (!m->isPublished(id, root))
            throw;
        m->requireSynced();
    }
    const std::lock_guard guard(m->mutex);
    m->writing.reset();
    m->releaseLock();
}

// Whether a commit that failed is in the file all the same: the last thing that it does, removing
// the journal for good, comes after what makes it valid.
bool Container::Impl::isPublished(std::uint32_t id, std::string_view root) {
    try {
        const std::lock_guard guard(mutex);
        return readHistory(*connection).current == id && readRoot(*connection, id) == root;
    } catch (...) {
        return false;
    }
}

void Container::abandon() noexcept {
    if (!m || !m->writing)
        return;
    try {
        m->goOn = [] { return false; };  // the next writer collects what can't be collected now
        const std::int64_t last = m->writing->base.lastBlob;
        if (m->writing->placeTaken) {
            m->deleteFrom(last + 1);
            Impl::Change change(*m);
            removeInfo(*m->connection, tokenName);
            change.commit();
        }
    } catch (...) {
    }
    m->goOn = nullptr;
    const std::lock_guard guard(m->mutex);
    m->writing.reset();
    m->releaseLock();
}

void Container::alone(const std::function<void()>& work) {
    m->takeLock();
    try {
        {
            const std::lock_guard guard(m->mutex);
            m->found = readHistory(*m->connection);
        }
        work();
    } catch (...) {
        m->releaseLock();
        throw;
    }
    m->releaseLock();
}

void Container::Impl::requireAlone() {
    if (readHistory(*connection) != found)
        throw Failure(ErrorCode::State,
                      "Another program has changed the database meanwhile; the clean-up was "
                      "stopped. Nothing is lost.",
                      "File: " + fileName() + "\n" + lockFailed);
    // A transaction that it has pending can't go on after this.
    if (hasInfo(*connection, tokenName))
        removeInfo(*connection, tokenName);
}

void Container::makeCurrent(std::uint32_t id) {
    m->patiently([&] {
        Impl::Change change(*m);
        (void)readRoot(*m->connection, id);  // there, and whole
        History history = readHistory(*m->connection);
        history.current = id;
        writeHistory(*m->connection, history);
        change.commit();
    });
}

void Container::discard(const std::vector<std::uint32_t>& ids) {
    m->patiently([&] {
        Impl::Change change(*m);
        Connection& connection = *m->connection;
        History history = readHistory(connection);
        for (const std::uint32_t id : ids) {
            (void)readRoot(connection, id);
            const bool first = id == history.kept.front();
            if (first || id == history.current)
                throw Failure(ErrorCode::Argument,
                              "Transaction " + std::to_string(id) + " can't be discarded: it is " +
                                  (first ? "the first one." : "the current one."));
            removeSnapshot(connection, id);
            std::erase(history.kept, id);
        }
        writeHistory(connection, history);
        change.commit();
    });
}

}  // namespace tarvo::engine::store
