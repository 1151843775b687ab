// The container: one file that keeps immutable blobs and one root text per committed transaction.
// Nothing outside of engine/store knows that it is an SQLite database.
//
// Writing is staged: blobs are appended in batches that nothing refers to yet, and publish makes
// them part of the file with one short container transaction. Whatever a crash or a rollback
// leaves behind is collected by the next writer. Every text and blob is checked against the
// checksum that its reference carries.
//
// Reads may come from several threads at once, everything else from one.
#pragma once

#include "engine/base/blobref.h"
#include "engine/base/bytes.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
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

    // Whether the file exists and is such a container; never throws for other files.
    static bool recognises(const std::string& fileName);

    // Opens for reading and, where the place allows, writing.
    explicit Container(const std::string& fileName);
    ~Container();
    Container(const Container&) = delete;
    Container& operator=(const Container&) = delete;

    const std::string& fileName() const;
    // The text given at creation.
    std::string identity();
    // Bytes of the file.
    std::uint64_t size();
    // A number that changes when another connection changed the file.
    std::uint64_t version();

    std::vector<std::uint32_t> transactions();  // ascending
    std::uint32_t current();
    std::string root(std::uint32_t id);  // Failure(NotFound) when there is none
    // The number of the next transaction; numbers are never given twice.
    std::uint32_t nextTransaction();
    // Bytes of a stored blob.
    std::uint64_t blobSize(std::uint64_t blob);

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

    // Takes the writer's lock and collects what nothing refers to. Failure(Busy) when another
    // process has the lock.
    void beginWriting();
    bool writing() const;
    // Stages a blob.
    BlobRef add(ByteSpan data);
    // Makes the staged blobs and this root the current state; only if `parent` still is the
    // current transaction. Ends writing.
    void publish(std::uint32_t id, std::uint32_t parent, std::string_view root);
    // Makes an older transaction the current one; not while writing.
    void makeCurrent(std::uint32_t id);
    // Forgets older transactions, but neither the first nor the current one (Failure(Argument));
    // their blobs stay until vacuum. Not while writing.
    void discard(const std::vector<std::uint32_t>& ids);
    // Deletes the blobs that nobody wants and gives their space back to the disk. plan: called
    // once nobody else can add blobs, tells which to keep. progress gets per cent and returns
    // whether to go on; what was given back before a stop stays so (Failure(Cancelled)). Not while
    // writing.
    using KeepBlob = std::function<bool(std::uint64_t blob)>;
    void vacuum(const std::function<KeepBlob()>& plan, const std::function<bool(int)>& progress);
    // Forgets the staged blobs and ends writing; never throws.
    void abandon() noexcept;

private:
    void changeAlone(const std::function<void()>& change);
    void giveBack(const KeepBlob& keep, const std::function<bool(int)>& progress);

    struct Impl;
    std::unique_ptr<Impl> m;
};

}  // namespace tarvo::engine::store
