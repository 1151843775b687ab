#include "engine/query/remove.h"

#include "engine/query/columns.h"
#include "engine/query/leafedit.h"
#include "engine/query/pointids.h"
#include "engine/query/pointmatch.h"

#include <algorithm>

namespace tarvo::engine::query {

namespace {

// Without points the next ones may give other values.
void forgetConstants(session::State& state) {
    for (schema::Attribute& attribute : state.attributes.all())
        if (!attribute.constant.empty()) {
            attribute.constant.clear();
            state.attributesBlob = {};
        }
}

}  // namespace

// Ids that wait for their points to be taken out of the tree.
class RemoveQuery::Change final : public session::PendingChange {
public:
    explicit Change(session::Session& session) : m_session(session) {}

    std::vector<std::uint64_t> ids;  // codes, each of a point

    void apply(const session::Progress& progress) override {
        if (ids.empty())
            return;
        std::sort(ids.begin(), ids.end());
        session::State& pending = m_session.change();
        session::State changed = pending;
        TreeEdit edit;
        edit.touches = [&](const index::Node& node) {
            return mayHold(node, pending.pointId(), ids);
        };
        edit.leaf = [&](const index::Node& leaf) {
            EditedLeaf edited(m_session.identity().settings.compressionLevel);
            std::vector<std::uint32_t> points;
            for (const PointMatch& match :
                 matchIds(*blockOf(m_session, leaf, pending.pointId(), 0), ids))
                points.push_back(match.point);
            if (!points.empty())
                removePoints(m_session, pending, leaf, points, edited);
            return edited;
        };
        editTree(m_session, changed, edit, progress);
        if (changed.pointCount == 0)
            forgetConstants(changed);
        pending = std::move(changed);
        ids.clear();
    }

private:
    session::Session& m_session;
};

void RemoveQuery::bind(std::uint32_t type, const void* buffer, std::int32_t stride) {
    m_guard.check();
    m_id = makeBinding(m_session.change().attributes, schema::pointIdName, type,
                       const_cast<void*>(buffer), stride);
}

std::uint32_t RemoveQuery::next(std::uint32_t count) {
    m_guard.check();
    if (!m_id)
        throw Failure(ErrorCode::State, "The ids of the points to remove are not bound.");
    PointIds& known = PointIds::of(m_session);
    const auto ids = readIds(m_session.change().pointId(), *m_id, count);
    known.look(ids);
    if (!m_change)
        m_change = std::make_shared<Change>(m_session);
    // Before anything is taken: a call that fails has changed nothing.
    const std::size_t most = std::max<std::uint64_t>(m_session.cacheSize() / 64, 100'000);
    if (m_change->ids.size() > most)
        m_session.settle();
    // Many would be moved again and again, and be there twice while they are.
    if (m_change->ids.size() > most / 8)
        m_change->ids.reserve(most + count);
    if (m_session.pendingChange() != m_change)
        m_session.setPendingChange(m_change);
    std::uint32_t removed = 0;
    for (const std::optional<std::uint64_t>& id : ids)
        if (id && known.remove(*id)) {
            m_change->ids.push_back(*id);
            ++removed;
        }
    m_session.changelog().notes().removed += removed;
    return removed;
}

}  // namespace tarvo::engine::query
