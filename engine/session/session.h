// An open database: the state that queries read, the transaction that changes it, and what they
// share. What else a database has are parts of it: blobs, history, changelog, metadata. One thread
// at a time.
#pragma once

#include "engine/base/threadpool.h"
#include "engine/session/blobs.h"
#include "engine/session/changelog.h"
#include "engine/session/history.h"
#include "engine/session/metadata.h"
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
class Session;
}
namespace tarvo::engine::testing {
struct Forger;
}
namespace tarvo::engine::query {
void commit(session::Session&, const session::Progress&, const session::Signer&);
}

namespace tarvo::engine::session {

// What never changes in a file.
struct Identity {
    std::string uuid;
    std::string creator;  // version of the library that made it
    // Not the default ones, which take their time to be read.
    CreateSettings settings{schema::AttributeRecord()};
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

class Session {
public:
    // Makes a new file with transaction 1, which holds the definitions and no points. extra:
    // attributes beside the primary one and the point id; metaData: items, texts by name.
    static void create(const std::string& fileName, const CreateSettings& settings,
                       const std::string& api,
                       const std::vector<schema::AttributeRecord>& extra = {},
                       const std::vector<std::pair<std::string, std::string>>& metaData = {});

    // api: the interface layer that asks; goes into the transactions' records. Throws
    // Failure(NotFound) for a transaction of the settings that the file does not keep.
    Session(const std::string& fileName, const OpenSettings& settings, std::string api);
    ~Session();

    const Identity& identity() const { return m_identity; }
    const std::string& fileName() const { return m_container.fileName(); }
    std::uint64_t fileSize() { return m_container.size(); }  // bytes
    // Whether the file was renamed, replaced or deleted since it was opened.
    bool hasMoved() { return m_container.hasMoved(); }
    // What is wrong with the pages of the file: Container::structureFaults().
    std::vector<std::string> structureFaults() { return m_container.structureFaults(); }

    Blobs& blobs() { return m_blobs; }
    History& history() { return m_history; }
    Changelog& changelog() { return m_changelog; }
    MetaData& metaData() { return m_metaData; }

    std::uint64_t cacheSize() const { return m_cacheSize; }
    // How many threads work for it, and these, which begin with the first call.
    unsigned threads() const { return m_threads; }
    ThreadPool& pool();

    // The pending state, else that of the current transaction, which another process may have
    // advanced, or that of the transaction that was opened to be read. Changes that queries have
    // taken are put in first. What is returned stays as it is while it is held.
    std::shared_ptr<const State> state();

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
    void rollback();
    // Makes the state of an older transaction the current one; the later ones are kept.
    void restore(std::uint32_t id);
    bool pending() const { return m_pending != nullptr; }
    std::uint32_t current();
    // Before what changes the file: throws Failure(State) when the session only reads, or a
    // transaction is pending.
    void requireChangeable() const;
    void requireNonePending() const;
    const State* pendingState() const { return m_pending.get(); }  // null: none

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
    // themselves are made by the commit.
    void setLevelOfDetail(std::uint32_t mode, std::uint32_t size);

    // Attribute definitions.
    void addAttribute(const schema::AttributeRecord& record);

    // How long others make the container wait is asked of progress: Patience.
    Patience patienceWith(const Progress& progress) { return Patience(m_container, progress); }

private:
    // What a commit does at its end, when all changes and the level of detail are made.
    friend struct testing::Forger;  // publishes what no commit would
    friend void query::commit(Session&, const session::Progress&, const session::Signer&);
    // signer: signs the changelog entry (method 0: not at all). On failure the transaction is still
    // pending, and can be committed again; after a success progress is not asked any more.
    void publish(const Progress& progress, const Signer& signer);
    std::shared_ptr<const State> stateOf(std::uint32_t id, const std::string& root);
    // Of what the file holds now, whatever is remembered of it.
    void loadCurrent();
    void loadPinned();
    static void throwIfRolledBack(const State& state);
    void throwIfDiscarded(const State& state, const Failure& failure);
    void endTransaction();

    store::Container m_container;
    Identity m_identity;
    std::string m_api;
    std::uint64_t m_cacheSize;
    unsigned m_threads;
    std::uint32_t m_pinned;  // the transaction that is read whatever happens; 0: none
    bool m_readOnly;
    std::uint64_t m_version = 0;  // of the container when m_current was loaded
    std::shared_ptr<const State> m_current;
    std::string m_currentRoot;  // that it was read from, or committed as
    std::shared_ptr<State> m_pending;
    std::shared_ptr<PendingChange> m_pendingChange;
    std::shared_ptr<TransactionCache> m_transactionCache;
    Blobs m_blobs;
    History m_history;
    Changelog m_changelog;
    MetaData m_metaData;
    std::unique_ptr<ThreadPool> m_pool;
};

[[noreturn]] void throwCommitCancelled();

// "QRB Library VERSION-COMMIT", as the library reports itself.
std::string libraryVersion();

}  // namespace tarvo::engine::session
