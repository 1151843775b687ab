// An open database: its states and transactions, attribute definitions, metadata, and what
// queries share (caches, worker threads). One thread at a time.
#pragma once

#include "engine/base/lrucache.h"
#include "engine/base/threadpool.h"
#include "engine/schema/column.h"
#include "engine/session/settings.h"
#include "engine/session/state.h"
#include "engine/store/container.h"

#include <functional>
#include <memory>
#include <string>
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
    virtual void apply() = 0;
};

// Receives per cent, returns whether to go on.
using Progress = std::function<bool(int)>;

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
    // attributes beside the primary one and the point id.
    static void create(const std::string& fileName, const CreateSettings& settings,
                       const std::string& api,
                       const std::vector<schema::AttributeRecord>& extra = {});

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

    // Transactions.
    std::uint32_t begin(const std::string& title, const std::string& agent,
                        const std::string& comments, const std::string& settings);
    void commit(const Progress& progress = {});
    void rollback();
    // Makes the state of an older transaction the current one; the later ones are kept.
    void restore(std::uint32_t id);
    bool pending() const { return m_pending != nullptr; }
    std::vector<std::uint32_t> transactions() { return m_container.transactions(); }
    std::uint32_t current();
    TransactionRecord details(std::uint32_t id);

    // For changes: the pending state. Throws Failure(State) when no transaction is pending.
    State& change();
    // Changes that wait to be put into the pending state; at most one at a time.
    void setPendingChange(std::shared_ptr<PendingChange> change);
    const std::shared_ptr<PendingChange>& pendingChange() const { return m_pendingChange; }

    // Attribute definitions.
    void addAttribute(const schema::AttributeRecord& record);
    void removeAttribute(const std::string& name);

    // Metadata items: JSON texts by name.
    std::string metaData(const std::string& name);  // Failure(NotFound)
    void setMetaData(const std::string& name, const std::string& value);
    void removeMetaData(const std::string& name);

private:
    void load(std::uint32_t id);
    void settle();
    BlobRef addText(const std::string& text);
    std::string readText(const BlobRef& reference, const char* what);

    store::Container m_container;
    Identity m_identity;
    std::string m_api;
    std::uint64_t m_cacheSize;
    std::uint64_t m_version = 0;  // of the container when m_current was loaded
    std::shared_ptr<const State> m_current;
    std::shared_ptr<State> m_pending;
    std::shared_ptr<PendingChange> m_pendingChange;
    PageCache m_pages;
    ColumnCache m_columns;
    std::unique_ptr<ThreadPool> m_pool;
};

// "QRB Library VERSION-COMMIT", as the library reports itself.
std::string libraryVersion();

}  // namespace tarvo::engine::session
