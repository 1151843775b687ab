#include "engine/session/history.h"

#include "engine/session/reach.h"
#include "engine/session/session.h"

#include <algorithm>
#include <set>

namespace tarvo::engine::session {

TransactionRecord History::details(std::uint32_t id) {
    if (const State* const pending = m_session.pendingState();
        pending && id == pending->transaction.id)
        return pending->transaction;
    return stateFromRoot(root(id)).transaction;
}

void History::discard(const std::vector<std::uint32_t>& ids) {
    m_session.requireChangeable();
    m_container.alone([&] { m_container.discard(ids); });
}

void History::finalize() {
    m_session.requireChangeable();
    m_container.alone([this] {
        std::vector<std::uint32_t> ids = transactions();
        const std::uint32_t first = ids.front();
        const std::uint32_t now = m_container.current();
        std::erase_if(ids, [&](std::uint32_t id) { return id == first || id == now; });
        m_container.discard(ids);
    });
}

std::uint64_t History::size(const std::vector<std::uint32_t>& given) {
    const std::set<std::uint32_t> ids(given.begin(), given.end());
    Reach others(m_container);
    for (const std::uint32_t id : transactions())
        if (!ids.contains(id))
            others.add(stateFromRoot(m_container.root(id)));
    Reach own(m_container, &others);
    std::uint64_t bytes = 0;
    for (const std::uint32_t id : ids) {
        const std::string root = m_container.root(id);
        own.add(stateFromRoot(root));
        bytes += root.size();
    }
    // From the references alone: checksums cover them, but not the lengths that the container has.
    for (const auto& [blob, extents] : own.extents()) {
        const auto found = others.extents().find(blob);
        bytes +=
            found == others.extents().end() ? extents.bytes() : extents.bytesBeside(found->second);
    }
    return bytes;
}

std::uint64_t History::unusedSize() {
    Reach reach(m_container);
    for (const std::uint32_t id : transactions())
        reach.add(stateFromRoot(m_container.root(id)));
    return m_container.unusedSize(reach.extents());
}

void History::vacuum(const Progress& progress) {
    m_session.requireChangeable();
    Patience patience(m_container, progress);
    const Progress asked = patience.progress();
    const auto report = [&](int percent) { return !asked || asked(percent); };
    m_container.alone([&] {
        Reach reach(m_container);
        const std::vector<std::uint32_t> ids = transactions();
        for (std::size_t i = 0; i < ids.size(); ++i) {
            if (!report(static_cast<int>(i * 20 / ids.size())))
                throw Failure(ErrorCode::Cancelled, "The clean-up was cancelled.");
            reach.add(stateFromRoot(m_container.root(ids[i])));
        }
        m_container.giveBack(reach.extents(),
                             [&](int percent) { return report(20 + percent * 80 / 100); });
    });
    if (progress)
        progress(100);
}

}  // namespace tarvo::engine::session
