#include "engine/report/leafreader.h"

#include "engine/base/interruption.h"
#include "engine/query/columns.h"

#include <algorithm>

namespace tarvo::engine::report {

LeafReader::LeafReader(session::Session& session, const Facts& facts,
                       std::vector<ColumnRef> columns, std::uint64_t step)
    : m_session(session),
      m_facts(facts),
      m_columns(std::move(columns)),
      m_step(step),
      m_cursor(facts.root, session.blobs().pageReader()) {
    const std::size_t leafBytes =
        m_columns.size() * 8 * session::leafCapacity(session.identity().settings);
    m_window =
        std::clamp<std::size_t>(session.cacheSize() / 4 / std::max<std::size_t>(1, leafBytes), 1,
                                session.pool().threads() * 4);
}

// Hands the next leaf to the workers; false at the end.
bool LeafReader::startNext() {
    for (; m_cursor.node(); m_cursor.enter()) {
        const index::Node* node = m_cursor.node();
        if (!node->isLeaf() || node->ownCount == 0 || m_leaves++ % m_step != 0)
            continue;
        // The page keeps the node alive; the root stands in none, it lives with the facts.
        m_work.push_back(m_session.pool().run([this, node, page = m_cursor.page()] {
            Columns columns;
            columns.reserve(m_columns.size());
            for (const ColumnRef& column : m_columns)
                columns.push_back(query::readColumn(
                    m_session, *node, m_facts.state->attributes[column.attribute], column.element));
            return columns;
        }));
        m_cursor.enter();
        return true;
    }
    return false;
}

std::optional<LeafReader::Columns> LeafReader::next() {
    const session::Blobs::Scope scope(m_session.blobs());
    return m_session.reading(*m_facts.state, [this]() -> std::optional<Columns> {
        while (m_work.size() < m_window && startNext()) {
        }
        if (m_work.empty())
            return std::nullopt;
        Interruption::check();
        Task<Columns> oldest = std::move(m_work.front());
        m_work.pop_front();
        return oldest.get();
    });
}

}  // namespace tarvo::engine::report
