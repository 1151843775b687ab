// Which ids (codes) the points of the pending state have, kept for the length of a transaction that
// has to know it: looked up in the leaves whose range of ids can hold them, then brought up to date
// by the queries.
#pragma once

#include "engine/base/idset.h"
#include "engine/session/session.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <unordered_set>
#include <vector>

namespace tarvo::engine::query {

class PointIds final : public session::TransactionCache {
public:
    explicit PointIds(session::Session& session);

    // Those of the session's pending transaction; the changes taken so far are put into the tree
    // the first time.
    static PointIds& of(session::Session& session);
    // Null unless somebody asked before.
    static PointIds* ifKnown(session::Session& session);

    // Reads what it takes to know which of these ids there are: the other functions know only ids
    // that were looked up. Leaves that are asked for again and again are read twice at most.
    void look(std::vector<std::uint64_t> ids);
    void look(const std::vector<std::optional<std::uint64_t>>& ids);
    bool contains(std::uint64_t id) const noexcept { return m_there.contains(id); }
    // Of a new point; false where there is one with the id.
    bool insert(std::uint64_t id) { return m_there.insert(id); }
    // Takes back what insert() added.
    void giveBack(std::uint64_t id) noexcept { m_there.erase(id); }
    // Of a point that goes; false where there is none.
    bool remove(std::uint64_t id);

private:
    void readLeaves(const std::vector<std::uint64_t>& wanted);

    session::Session& m_session;
    std::shared_ptr<const session::State> m_base;   // that leaves are read of
    std::shared_ptr<const index::Page> m_rootPage;  // of one node
    IdSet m_there;
    IdSet m_removed;  // the leaves of the base still have them, or had
    // By their numbers in the index.
    std::unordered_set<std::uint32_t> m_readOnce;   // for the ids that were asked for
    std::unordered_set<std::uint32_t> m_readWhole;  // all that they hold is known
};

}  // namespace tarvo::engine::query
