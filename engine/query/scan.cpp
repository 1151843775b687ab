#include "engine/query/scan.h"

#include "engine/query/columns.h"
#include "engine/query/findnode.h"

#include <algorithm>

namespace tarvo::engine::query {

namespace {

Task<NodeHits> ready(NodeHits hits) {
    std::promise<NodeHits> promise;
    promise.set_value(std::move(hits));
    return Task<NodeHits>(promise.get_future());
}

}  // namespace

Scan::Scan(session::Session& session, Scope scope, std::string_view filter)
    : m_session(session),
      m_state(session.state()),
      m_scope(std::move(scope)),
      m_filter(filter::Expression::parse(findCommand(filter) ? "" : filter), m_state->attributes) {
    session.reading(*m_state, [&] {
        if (const std::optional<FindCommand> command = findCommand(filter))
            narrowScope(findNode(session, *m_state, *command));
        m_rootPage = std::make_shared<const index::Page>(1, session.blobs().rootNode(*m_state));
        m_cursor.emplace(m_rootPage->front(), session.blobs().pageReader());
        if (m_scope.nodes || m_scope.subtree != 0)
            findScope();
        else
            m_total = m_state->pointCount;
    });
}

Scan::~Scan() = default;

// Only the points of one node are left, those below it included where the scope is the whole index.
void Scan::narrowScope(std::uint32_t node) {
    if (m_scope.nodes || m_scope.subtree != 0) {
        const bool listed =
            m_scope.nodes ? m_scope.nodes->count(node) > 0 : m_scope.subtree == node;
        m_scope = {0, std::unordered_set<std::uint32_t>()};
        if (listed)
            m_scope.nodes->insert(node);
    } else {
        m_scope.subtree = node;
    }
}

// Finds the nodes of the scope, so that a wrong number is an error before anything is read.
void Scan::findScope() {
    std::unordered_set<std::uint32_t> missing;
    if (m_scope.nodes)
        missing = *m_scope.nodes;
    else
        missing.insert(m_scope.subtree);
    const std::shared_ptr<const index::Page> whole = m_rootPage;
    for (index::TreeCursor cursor = *m_cursor; cursor.node() && !missing.empty();) {
        if (missing.erase(cursor.node()->id)) {
            m_total += m_scope.nodes ? cursor.node()->ownCount : cursor.node()->totalCount;
            if (!m_scope.nodes)
                m_rootPage = std::make_shared<const index::Page>(1, *cursor.node());
        }
        cursor.enter();
    }
    if (!missing.empty())
        throw Failure(ErrorCode::NotFound,
                      "The index has no node " + std::to_string(*missing.begin()) + ".");
    m_cursor.emplace(m_rootPage->front(), m_session.blobs().pageReader());
}

filter::Decision Scan::decide(const index::Node& node) const {
    if (m_filter.empty())
        return filter::Decision::All;
    std::vector<schema::ElementStatistics> statistics;
    statistics.reserve(m_filter.elements().size());
    for (const filter::ElementRef& element : m_filter.elements())
        statistics.push_back(
            index::statisticsOf(node, m_state->attributes[element.attribute], element.element));
    return m_filter.decide(statistics);
}

NodeHits Scan::examine(std::shared_ptr<const index::Page> page, const index::Node* node,
                       bool all) const {
    NodeHits hits;
    hits.page = std::move(page);
    hits.node = node;
    hits.scanned = node->ownCount;
    hits.all = all;
    const auto column = [&](const filter::ElementRef& element) {
        return readColumn(m_session, *node, m_state->attributes[element.attribute],
                          element.element);
    };
    if (all) {
        hits.count = node->ownCount;
    } else {
        std::vector<std::shared_ptr<const schema::Column>> held(m_filter.elements().size());
        m_filter.select(
            node->ownCount,
            [&](std::size_t slot) -> const schema::Column& {
                held[slot] = column(m_filter.elements()[slot]);
                return *held[slot];
            },
            hits.selection);
        hits.count = hits.selection.size();
    }
    if (hits.count > 0)
        for (const filter::ElementRef& element : m_columns)
            hits.columns.push_back(column(element));
    return hits;
}

void Scan::start(bool all) {
    const index::Node* node = m_cursor->node();
    const std::shared_ptr<const index::Page> page =
        m_cursor->page() ? m_cursor->page() : m_rootPage;
    if (page.get() != m_lastPage) {
        m_lastPage = page.get();
        // Leaves that are worked on keep their pages.
        m_isLargePage = index::heldBytes(*page) > m_session.cacheSize() / 4 / window();
    }
    m_work.push_back(
        m_session.pool().run([this, page, node, all] { return examine(page, node, all); }));
}

// Moves the cursor to the next candidate, takes what it can decide on the way, and past it.
bool Scan::advance() {
    while (const index::Node* node = m_cursor->node()) {
        if (m_cursor->depth() <= m_allDepth)
            m_allDepth = SIZE_MAX;
        const bool leaf = node->isLeaf();
        bool all = m_allDepth != SIZE_MAX;
        if (!all) {
            const filter::Decision decision = decide(*node);
            if (decision == filter::Decision::None) {
                if (!m_scope.nodes)
                    m_passed += node->totalCount;
                m_cursor->skip();
                continue;
            }
            all = decision == filter::Decision::All;
            if (all && !leaf)
                m_allDepth = m_cursor->depth();
        }
        const bool wanted =
            (m_scope.nodes ? m_scope.nodes->count(node->id) > 0 : leaf) && (leaf || !m_wantLeaves);
        if (all && m_columns.empty() && !m_wantLeaves && (wanted || !m_scope.nodes)) {
            // Only the count is needed: nothing is read, and whole subtrees are one step.
            NodeHits hits;
            hits.all = true;
            hits.count = hits.scanned = m_scope.nodes ? node->ownCount : node->totalCount;
            m_work.push_back(ready(std::move(hits)));
            if (m_scope.nodes)
                m_cursor->enter();
            else
                m_cursor->skip();
            return true;
        }
        if (wanted && node->ownCount > 0) {
            start(all);
            m_cursor->enter();
            return true;
        }
        m_cursor->enter();
    }
    return false;
}

std::optional<NodeHits> Scan::next() {
    if (m_failed)
        throw Failure(ErrorCode::State, "The query failed, and can't go on.", "Make a new one.");
    m_failed = true;  // the hits of a node that could not be read must not be passed over
    std::optional<NodeHits> hits = m_session.reading(*m_state, [this] { return nextHits(); });
    m_failed = false;
    return hits;
}

std::optional<NodeHits> Scan::nextHits() {
    for (;;) {
        while (m_work.size() < (m_isLargePage ? 1 : m_ahead) && advance()) {
        }
        if (m_work.empty())
            return std::nullopt;
        Task<NodeHits> oldest = std::move(m_work.front());
        m_work.pop_front();
        NodeHits hits = oldest.get();
        m_passed += hits.scanned;
        // The first page wants one leaf soon; who goes on wants all cores.
        m_ahead = std::min(m_ahead * 2, window());
        if (hits.count > 0)
            return hits;
    }
}

// How many leaves are worked on at once: enough for the cores, within a quarter of the cache size.
std::size_t Scan::window() const {
    const std::size_t columns = m_columns.size() + m_filter.elements().size() + 1;
    const std::size_t leafBytes =
        columns * 8 * session::leafCapacity(m_session.identity().settings);
    const std::size_t fitting = m_session.cacheSize() / 4 / leafBytes;
    return std::clamp<std::size_t>(fitting, 1, m_session.pool().threads() * 8);
}

std::optional<HitReader::Portion> HitReader::next(std::uint32_t limit) {
    if (m_hits && m_at == m_hits->count)
        m_hits.reset();
    if (!m_hits && !m_ended) {
        m_hits = m_scan.next();
        m_at = 0;
        m_ended = !m_hits;
    }
    if (m_ended)
        return std::nullopt;
    const auto count =
        static_cast<std::uint32_t>(std::min<std::uint64_t>(limit, m_hits->count - m_at));
    m_at += count;
    return Portion{&*m_hits, m_at - count, count};
}

std::uint32_t HitReader::progress() const {
    if (m_ended)
        return 100;
    if (m_scan.total() == 0)
        return 0;
    return static_cast<std::uint32_t>(
        std::min<std::uint64_t>(99, m_scan.passed() * 100 / m_scan.total()));
}

}  // namespace tarvo::engine::query
