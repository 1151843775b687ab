// The inside of a Container, for the files that implement it.
#pragma once

#include "engine/store/connection.h"
#include "engine/store/container.h"
#include "engine/store/extents.h"
#include "engine/store/history.h"
#include "engine/store/namelock.h"
#include "engine/store/writerlock.h"

#include <deque>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <string>

namespace tarvo::engine::store {

class NotSynced : public Failure {
public:
    using Failure::Failure;
};

struct Container::Impl {
    explicit Impl(std::unique_ptr<Connection> opened) : connection(std::move(opened)) {}

    // What a pending transaction has added.
    struct Writing {
        History base;       // what the file had when the transaction began
        std::string token;  // see takePlace
        bool placeTaken = false;
        std::int64_t firstInMemory = 0;  // the blob at the front of `memory`
        std::deque<Bytes> memory;        // blobs that are not in the file yet, one after another
        std::size_t bytes = 0;           // of them

        std::int64_t nextBlob() const {
            return firstInMemory + static_cast<std::int64_t>(memory.size());
        }
        // Null: the blob is not among them.
        const Bytes* inMemory(std::uint64_t blob) const;
    };

    // A container transaction: holds the mutex for its life, and is rolled back unless committed.
    class Change {
    public:
        explicit Change(Impl& impl);
        ~Change();
        Change(const Change&) = delete;
        Change& operator=(const Change&) = delete;

        // Throws NotSynced where the change is in the file, but a power cut may still undo it.
        void commit();

    private:
        Impl& m_impl;
        std::lock_guard<std::mutex> m_guard;
        bool m_committed = false;
    };

    const std::string& fileName() const { return connection->fileName; }
    // The row that the reader stands on.
    struct Row {
        std::uint64_t bytes = 0;
        bool sparse = false;
    };
    // Sets the reader on a blob's row, `what` names it in errors.
    Row openBlob(std::uint64_t blob, std::string_view what);
    int openRow(std::int64_t id);
    Bytes readRow(std::uint64_t offset, std::uint64_t length);
    // Where the bytes that are wanted of a blob begin in its row; Failure(Damaged) where it has not
    // all of them.
    std::uint64_t placeInRow(const Row& row, Extent wanted, std::string_view what);
    void closeReader();
    void closeUnscopedReader();
    Bytes readBlob(std::uint64_t blob, Extent wanted, std::string_view what);

    // Throws Failure(State) when the file was overwritten with another database.
    void requireSame();
    void takeLock();
    void releaseLock();
    // Tries work until the file is not busy. Work must leave everything as it was when it fails,
    // and not hold the mutex then.
    void patiently(const std::function<void()>& work);
    // Repeats step with a number of things to do, fewer when the disk is full, until it returns
    // that nothing is left.
    void inSteps(const std::function<bool(std::int64_t count)>& step);
    // Makes this writer the one whose batches are taken, and deletes what others have left.
    void takePlace();
    // Within a Change: throws unless this writer still is the one, and what it wrote is there.
    void requirePlace();
    bool holdsToken();
    void deleteFrom(std::int64_t first);
    void writeMemory();
    void forgetMemory();
    // In a Change of work that is done alone: throws where another program has changed the file.
    void requireAlone();
    // Puts what is wanted of a blob in place of the blob, in a Change.
    void makeSparse(std::uint64_t blob, const Extents& wanted);
    void flush();
    bool isPublished(std::uint32_t id, std::string_view root);
    // Makes sure that the removal of the journal is durable, which a power cut would bring back and
    // with it what the change has undone: the container takes a folder that it can't open for one
    // that is synced. Throws NotSynced. Not to be tried again: a folder that could not be synced
    // once may seem to be the next time though nothing was written.
    void requireSynced();

    std::unique_ptr<Connection> connection;
    std::string identity;  // of the database that was opened
    bool readOnly = false;
    std::mutex mutex;  // for the connection, the reader, and the blobs in memory
    sqlite3_blob* reader = nullptr;
    int scopes = 0;
    std::optional<WriterLock> lock;
    std::optional<NameLock> nameLock;
    std::optional<Writing> writing;
    History found;               // by alone(), before its work
    std::function<bool()> goOn;  // see Waiting
};

}  // namespace tarvo::engine::store
