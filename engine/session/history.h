// The transactions that a database keeps, as records and as bytes of the file.
#pragma once

#include "engine/session/progress.h"
#include "engine/session/state.h"

#include <vector>

namespace tarvo::engine::session {

class Session;

// Part of a session. What changes the file throws Failure(State) while a transaction is pending,
// and in a session that only reads.
class History {
public:
    History(Session& session, store::Container& container)
        : m_session(session), m_container(container) {}

    std::vector<std::uint32_t> transactions() { return m_container.transactions(); }  // ascending
    std::uint32_t current() { return m_container.current(); }                         // of the file
    bool keeps(std::uint32_t id) { return m_container.keeps(id); }
    // Of a kept transaction or the pending one. Failure(NotFound).
    TransactionRecord details(std::uint32_t id);
    // The root text of a kept transaction, and the largest blob that it may refer to.
    std::string root(std::uint32_t id) { return m_container.root(id); }
    std::uint64_t lastBlob(std::uint32_t id) { return m_container.lastBlob(id); }

    // Forgets kept transactions, but neither the first nor the current one; their space comes back
    // with vacuum.
    void discard(const std::vector<std::uint32_t>& ids);
    // All but the first and the current one.
    void finalize();
    // Those in the file, whoever wants them.
    std::uint64_t blobCount() { return m_container.blobCount(); }
    // Bytes of blobs and roots that the file would lose with these transactions.
    std::uint64_t size(const std::vector<std::uint32_t>& ids);
    // Gives the space of what no kept transaction reaches back to the disk. Throws
    // Failure(Cancelled) when progress says stop.
    void vacuum(const Progress& progress = {});
    // About how many bytes of the file that would give back now.
    std::uint64_t unusedSize();

private:
    Session& m_session;
    store::Container& m_container;
};

}  // namespace tarvo::engine::session
