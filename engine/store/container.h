// The container: one file that keeps immutable blobs and one root text per committed transaction.
// Nothing outside of engine/store knows that it is an SQLite database.
//
// Who writes holds the writer's lock of the file (writerlock.h). Changes come in two kinds. A
// pending transaction adds blobs: they gather in memory and go into the file in batches that
// nothing refers to yet, and publish makes them part of it, with the last batch, in one container
// transaction. Everything else is done alone(), in one container transaction each.
//
// Before its first batch a writer puts a token into the file, and each batch and the publishing
// look for it in their own container transaction: should the lock fail to keep two writers apart,
// the second one takes the first one's place, and the first one fails instead of publishing a root
// whose blobs the second has collected. Whatever a crash or a rollback leaves behind is collected
// by the next writer. Every text and blob is checked against the checksum that its reference
// carries.
//
// A failed write loses nothing: what was added stays in memory, and is written by the next try.
//
// Functions may be called from several threads at once as far as they only read; all others from
// one thread at a time. None of them holds a lock while it calls back.
#pragma once

#include "engine/base/blobref.h"
#include "engine/base/bytes.h"
#include "engine/store/extents.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace tarvo::engine::store {

// The name and version of what the container is built on, for people.
std::string containerVersion();

class Container {
public:
    // Makes a new file whose only transaction is number 1. `fill` is called once with a function
    // that adds a blob, and returns the root. Throws Failure(Exists) when the file is there; a
    // failure leaves no file.
    using AddBlob = std::function<BlobRef(ByteSpan)>;
    static void create(const std::string& fileName, std::string_view identity,
                       const std::function<std::string(const AddBlob& add)>& fill);

    // Whether the file exists and is such a container; never throws for other files. Throws
    // Failure(File) where the disk can't tell.
    static bool recognises(const std::string& fileName);

    // Opens for reading and, where the place allows, writing.
    explicit Container(const std::string& fileName);
    ~Container();
    Container(const Container&) = delete;
    Container& operator=(const Container&) = delete;

    const std::string& fileName() const;
    // The text given at creation.
    const std::string& identity() const;
    // Bytes of the file.
    std::uint64_t size();
    // A number that changes when somebody else changed the file, or this did.
    std::uint64_t version();

    std::vector<std::uint32_t> transactions();  // ascending
    std::uint32_t current();
    bool keeps(std::uint32_t id);
    std::string root(std::uint32_t id);  // Failure(NotFound) when there is none
    // The largest blob that a kept transaction may refer to.
    std::uint64_t lastBlob(std::uint32_t id);
    // The current transaction and its root, of one moment. Failure(State) when the file was
    // overwritten with another database.
    std::pair<std::uint32_t, std::string> currentRoot();
    // The blobs in the file, whoever wants them.
    std::uint64_t blobCount();
    // What the container finds wrong with its own pages, a line each, not all of very many. Reads
    // the whole file; meanwhile the commits of other connections wait.
    std::vector<std::string> structureFaults();

    // While a scope lives, reads keep their place in the file open, which makes the next faster
    // and keeps writers of other processes waiting: for the length of one call only.
    class ReadScope {
    public:
        explicit ReadScope(Container& container);
        ~ReadScope();
        ReadScope(const ReadScope&) = delete;
        ReadScope& operator=(const ReadScope&) = delete;

    private:
        Container& m_container;
    };

    // What the reference refers to; `what` names it in errors.
    Bytes read(const BlobRef& reference, std::string_view what);

    // Whether the name leads to another file than when this was opened, or to none: what is open
    // can be read, but not changed.
    bool hasMoved();

    // Takes the writer's lock for a pending transaction; writes nothing yet. Failure(Busy) when
    // somebody else has the lock, Failure(State) when the file has moved, Failure(Damaged) when it
    // can't be continued.
    void beginWriting();
    bool writing() const;
    // The number of the next transaction; numbers are never given twice. While writing.
    std::uint32_t nextTransaction() const;
    // The largest blob that any kept transaction may refer to: what is behind it is deleted. While
    // writing.
    std::uint64_t lastBlob() const;
    // Adds a blob. May write a batch, see publish.
    BlobRef add(ByteSpan data);
    // Writes the blobs and this root, and makes them the current state. Ends writing. On failure
    // nothing is published and nothing lost: it can be tried again, or abandoned. Failure(State)
    // when another program has changed the file in spite of the lock, after which only abandon is
    // left.
    void publish(std::uint32_t id, std::string_view root);
    // Forgets what was added and ends writing; never throws.
    void abandon() noexcept;

    // Writing waits while programs read. While a Waiting lives, goOn is asked several times a
    // second and ends the wait with Failure(Cancelled) when it says false; without one it ends with
    // Failure(Busy) after ten seconds.
    class Waiting {
    public:
        Waiting(Container& container, std::function<bool()> goOn);
        ~Waiting();
        Waiting(const Waiting&) = delete;
        Waiting& operator=(const Waiting&) = delete;

    private:
        Container& m_container;
        std::function<bool()> m_before;
    };

    // Runs work under the writer's lock, which refuses as in beginWriting; not while writing.
    void alone(const std::function<void()>& work);
    // The following only from within work.
    // Makes a kept transaction the current one.
    void makeCurrent(std::uint32_t id);
    // Forgets transactions, but neither the first nor the current one (Failure(Argument)); their
    // blobs stay until they are removed.
    void discard(const std::vector<std::uint32_t>& ids);
    // Deletes the blobs that nobody wants, and of those of which more than a quarter is not wanted
    // that part, and gives their space back to the disk, in steps that need little room. All that
    // is wanted must be there (Failure(Damaged), before anything is deleted). progress gets per
    // cent and returns whether to go on; what was given back before a stop stays so
    // (Failure(Cancelled)).
    void giveBack(const WantedExtents& wanted, const std::function<bool(int)>& progress);
    // About how many bytes that would give back now. Throws as it does.
    std::uint64_t unusedSize(const WantedExtents& wanted);

private:
    struct Impl;
    std::unique_ptr<Impl> m;
};

}  // namespace tarvo::engine::store
