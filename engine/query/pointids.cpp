#include "engine/query/pointids.h"

#include "engine/query/columns.h"
#include "engine/query/pointmatch.h"

#include <algorithm>
#include <deque>

namespace tarvo::engine::query {

PointIds::PointIds(session::Session& session)
    : m_session(session), m_base(session.state()), m_rootPage(session.blobs().rootPage(*m_base)) {}

PointIds* PointIds::ifKnown(session::Session& session) {
    return static_cast<PointIds*>(session.transactionCache().get());
}

PointIds& PointIds::of(session::Session& session) {
    (void)session.change();
    if (PointIds* known = ifKnown(session))
        return *known;
    auto made = std::make_shared<PointIds>(session);
    session.transactionCache() = made;
    return *made;
}

void PointIds::look(std::vector<std::uint64_t> ids) {
    std::erase_if(
        ids, [this](std::uint64_t id) { return m_there.contains(id) || m_removed.contains(id); });
    std::sort(ids.begin(), ids.end());
    ids.erase(std::unique(ids.begin(), ids.end()), ids.end());
    if (!ids.empty() && m_base->pointCount > 0)
        readLeaves(ids);
}

void PointIds::look(const std::vector<std::optional<std::uint64_t>>& ids) {
    std::vector<std::uint64_t> possible;
    for (const std::optional<std::uint64_t>& id : ids)
        if (id)
            possible.push_back(*id);
    look(std::move(possible));
}

void PointIds::readLeaves(const std::vector<std::uint64_t>& wanted) {
    struct Leaf {
        std::uint32_t id;
        Task<std::vector<std::uint64_t>> ids;
    };
    const session::Blobs::Scope scope(m_session.blobs());
    const schema::Attribute& pointId = m_base->pointId();
    const std::size_t window = m_session.pool().threads() * std::size_t(3);
    std::deque<Leaf> reading;
    const auto take = [&] {
        Leaf leaf = std::move(reading.front());
        reading.pop_front();
        for (const std::uint64_t id : leaf.ids.get())
            if (!m_removed.contains(id))
                m_there.insert(id);
        (m_readOnce.insert(leaf.id).second ? m_readOnce : m_readWhole).insert(leaf.id);
    };
    index::TreeCursor cursor(m_rootPage->front(), m_session.blobs().pageReader());
    while (const index::Node* node = cursor.node()) {
        if (!mayHold(*node, pointId, wanted) || m_readWhole.contains(node->id)) {
            cursor.skip();
            continue;
        }
        if (node->isLeaf()) {
            // Who comes again will come for the others, too.
            const bool whole = m_readOnce.contains(node->id);
            auto read = [&, node, whole, page = cursor.page()] {
                const auto block = blockOf(m_session, *node, pointId, 0);
                std::vector<std::uint64_t> ids;
                if (whole)
                    block->column().visit(
                        [&](auto codes) { ids.assign(codes.begin(), codes.end()); });
                else
                    for (const PointMatch& match : matchIds(*block, wanted))
                        ids.push_back(wanted[match.id]);
                return ids;
            };
            reading.push_back({node->id, m_session.pool().run(std::move(read))});
            if (reading.size() > window)
                take();
        }
        cursor.enter();
    }
    while (!reading.empty())
        take();
}

bool PointIds::remove(std::uint64_t id) {
    if (!m_there.contains(id))
        return false;
    m_removed.insert(id);
    return m_there.erase(id);
}

}  // namespace tarvo::engine::query
