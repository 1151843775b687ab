// An open database: its states and transactions, attribute definitions, metadata, and what
// queries share (caches, worker threads). One thread at a time.
#pragma once

#include "engine/base/lrucache.h"
#include "engine/base/threadpool.h"
#include "engine/schema/column.h"
#include "engine/session/changelog.h"
#include "engine/session/progress.h"
#include "engine/session/settings.h"
#include "engine/session/state.h"
#include "engine/store/container.h"

#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace tarvo::engine::session {

// What never changes in a file.
struct Identity {
    std::string uuid;
    std::string creator;  // version of the library that made it
    CreateSettings settings;
};

// Changes that a query has taken but not yet put into the pending state.
class PendingChange {
public:
    virtual ~PendingChange() = default;
    // All or, on failure, nothing; throws Failure(Cancelled) when progress says stop.
    virtual void apply(const Progress& progress) = 0;
};

// Something to keep while a transaction is pending.
class TransactionCache {
public:
    virtual ~TransactionCache() = default;
};

struct BlobRefHash {
    std::size_t operator()(const BlobRef& reference) const {
        return reference.checksum ^ (reference.blob * 0x9e3779b97f4a7c15u) ^ reference.offset;
    }
};
using PageCache = LruCache<BlobRef, index::Page, BlobRefHash>;
using ColumnCache = LruCache<BlobRef, schema::Column, BlobRefHash>;

class Session {
public:
    // Makes a new file with transaction 1, which holds the definitions and no points. extra:
    // attributes beside the primary one and the point id; metaData: items, texts by name.
    static void create(const std::string& fileName, const CreateSettings& settings,
                       const std::string& api,
                       const std::vector<schema::AttributeRecord>& extra = {},
                       const std::vector<std::pair<std::string, std::string>>& metaData = {});

    // api: the interface layer that asks; goes into the transactions' records.
    Session(const std::string& fileName, const OpenSettings& settings, std::string api);
    ~Session();

    const Identity& identity() const { return m_identity; }
    store::Container& container() { return m_container; }
    std::uint64_t cacheSize() const { return m_cacheSize; }
    ThreadPool& pool();
    ColumnCache& columns() { return m_columns; }
    void clearCache();

    // The pending state, else that of the current transaction, which another process may have
    // advanced. Changes that queries have taken are put in first. What is returned stays as it is
    // while it is held.
    std::shared_ptr<const State> state();
    // The root node of a state's index and the reader of the pages below.
    index::Node rootNode(const State& state);
    index::PageReader pageReader();
    // A page of the index, from the file, whatever was read before.
    index::Page readPage(const BlobRef& reference);

    // Runs a function that reads what a state refers to. Throws Failure(State) where the state was
    // rolled back, or data of it is missing because it was discarded: the file is well then.
    template <typename Function>
    auto reading(const State& state, Function&& function) -> decltype(function()) {
        throwIfRolledBack(state);
        try {
            return function();
        } catch (const Failure& failure) {
            throwIfDiscarded(state, failure);
            throw;
        }
    }

    // Transactions. A comment or settings text of more than 16 MiB, or a title or agent of more
    // than 1 MiB is refused (Failure(Argument)).
    std::uint32_t begin(const std::string& title, const std::string& agent,
                        const std::string& comments, const std::string& settings);
    // signer: signs the changelog entry (method 0: not at all). On failure the transaction is still
    // pending, and can be committed again; after a success progress is not asked any more.
    void commit(const Progress& progress = {}, const Signer& signer = {});
    void rollback();
    // Makes the state of an older transaction the current one; the later ones are kept.
    void restore(std::uint32_t id);
    bool pending() const { return m_pending != nullptr; }
    std::vector<std::uint32_t> transactions() { return m_container.transactions(); }
    // Whether the file was renamed, replaced or deleted since it was opened.
    bool hasMoved() { return m_container.hasMoved(); }
    std::uint32_t current();
    TransactionRecord details(std::uint32_t id);
    // Forgets kept transactions, but neither the first nor the current one; their space comes back
    // with vacuum.
    void discard(const std::vector<std::uint32_t>& ids);
    // All but the first and the current one.
    void finalize();
    // Bytes of blobs and roots that the file would lose with these transactions.
    std::uint64_t size(const std::vector<std::uint32_t>& ids);
    // Gives the space of what no kept transaction reaches back to the disk. Throws
    // Failure(Cancelled) when progress says stop.
    void vacuum(const Progress& progress = {});

    // The changelog: the entries from the first to the newest one.
    std::string changelog();
    // For the entry of the pending transaction.
    void appendMessage(const std::string& message);
    ChangeNotes& notes() { return m_notes; }
    // Puts an older changelog before this one's, as part of the pending transaction.
    void importChangelog(const std::string& text);

    // For changes: the pending state. Throws Failure(State) when no transaction is pending.
    State& change();
    // Puts the changes that queries have taken into the pending state.
    void settle(const Progress& progress = {});
    // The state that the pending transaction began with.
    const State& base() const { return *m_current; }
    // Changes that wait to be put into the pending state; at most one at a time.
    void setPendingChange(std::shared_ptr<PendingChange> change);
    const std::shared_ptr<PendingChange>& pendingChange() const { return m_pendingChange; }
    // What queries keep for the length of the pending transaction; it forgets the rest.
    std::shared_ptr<TransactionCache>& transactionCache() { return m_transactionCache; }

    // Level of detail: throws Failure(Argument) for a mode or size that is not possible. The points
    // themselves are made by query::commit.
    void setLevelOfDetail(std::uint32_t mode, std::uint32_t size);

    // Attribute definitions.
    void addAttribute(const schema::AttributeRecord& record);

    // Metadata items: texts by name, most of them JSON.
    std::string metaData(const std::string& name);  // Failure(NotFound)
    void setMetaData(const std::string& name, const std::string& value);
    void removeMetaData(const std::string& name);
    // Signs an item; method 0 removes its signature.
    void signMetaData(const std::string& name, const Signer& signer);
    // Whether the signature is valid; with method 0 and no key: whether there is one.
    bool verifyMetaData(const std::string& name, const Signer& signer);

private:
    std::shared_ptr<const State> stateOf(std::uint32_t id, const std::string& root);
    // Of what the file holds now, whatever is remembered of it.
    void loadCurrent();
    static void throwIfRolledBack(const State& state);
    void throwIfDiscarded(const State& state, const Failure& failure);
    void endTransaction();
    void requireNonePending() const;
    BlobRef addText(const std::string& text);
    // Of a text that is read as JSON: within the limits of that.
    BlobRef addJson(const std::string& json, const char* what);
    std::string readText(const BlobRef& reference, const char* what);

    store::Container m_container;
    Identity m_identity;
    std::string m_api;
    std::uint64_t m_cacheSize;
    std::uint64_t m_version = 0;  // of the container when m_current was loaded
    std::shared_ptr<const State> m_current;
    std::string m_currentRoot;  // that it was read from, or committed as
    std::shared_ptr<State> m_pending;
    std::shared_ptr<PendingChange> m_pendingChange;
    std::shared_ptr<TransactionCache> m_transactionCache;
    ChangeNotes m_notes;
    PageCache m_pages;
    ColumnCache m_columns;
    std::unique_ptr<ThreadPool> m_pool;
};

// "QRB Library VERSION-COMMIT", as the library reports itself.
std::string libraryVersion();

}  // namespace tarvo::engine::session
