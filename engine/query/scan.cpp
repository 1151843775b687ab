#include "engine/query/scan.h"

#include "engine/base/interruption.h"
#include "engine/query/columns.h"
#include "engine/query/findnode.h"

#include <algorithm>
#include <chrono>

namespace tarvo::engine::query {

namespace {

// A task is to be worth handing it over, whether leaves are large or small.
constexpr std::size_t pointsPerTask = 65536;
constexpr std::size_t pointsPerCount = 262144;
constexpr std::size_t mostPerTask = 64;
// As many tasks are begun one leaf at a time, for who wants a page; who goes on wants all cores.
constexpr std::size_t smallSteps = 16;
constexpr std::size_t tasksPerThread = 4;

}  // namespace

Scan::Scan(session::Session& session, Scope scope, std::string_view filter)
    : m_session(session),
      m_state(session.state()),
      m_scope(std::move(scope)),
      m_filter(filter::Expression::parse(findCommand(filter) ? "" : filter), m_state->attributes) {
    session.reading(*m_state, [&] {
        if (const std::optional<FindCommand> command = findCommand(filter))
            narrowScope(findNode(session, *m_state, *command));
        m_rootPage = session.blobs().rootPage(*m_state);
        m_cursor.emplace(m_rootPage->front(), session.blobs().pageReader());
        if (m_scope.nodes || m_scope.subtree != 0)
            findScope();
        else
            m_total = m_state->pointCount;
    });
}

Scan::~Scan() {
    m_abandoned = true;
}

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

filter::Decision Scan::decide(const index::Node& node, filter::Decided* decided) const {
    if (m_filter.empty())
        return filter::Decision::All;
    std::vector<schema::ElementStatistics> statistics;
    statistics.reserve(m_filter.elements().size());
    for (const filter::ElementRef& element : m_filter.elements())
        statistics.push_back(
            index::statisticsOf(node, m_state->attributes[element.attribute], element.element));
    return m_filter.decide(statistics, decided);
}

NodeHits Scan::examine(const Candidate& candidate) const {
    const index::Node& node = *candidate.node;
    NodeHits hits;
    hits.page = candidate.page;
    hits.node = &node;
    hits.scanned = node.ownCount;
    filter::Decided decided;
    const filter::Decision decision =
        candidate.all ? filter::Decision::All : decide(node, &decided);
    hits.all = decision == filter::Decision::All;
    if (hits.all) {
        hits.count = node.ownCount;
        hits.nodes.whole = 1;
    } else if (decision == filter::Decision::None) {
        hits.nodes.skipped = 1;
    } else {
        hits.nodes.read = 1;
        std::vector<std::shared_ptr<const codec::Block>> held(m_filter.elements().size());
        const auto source = [&](std::size_t slot) -> const codec::Block& {
            const filter::ElementRef& element = m_filter.elements()[slot];
            held[slot] =
                blockOf(m_session, node, m_state->attributes[element.attribute], element.element);
            return *held[slot];
        };
        if (onlyCounts()) {
            hits.count = m_filter.count(node.ownCount, source, decided);
        } else {
            m_filter.select(node.ownCount, source, hits.selection, decided);
            hits.count = hits.selection.size();
        }
    }
    return hits;
}

void Scan::readColumns(NodeHits& hits, std::size_t first, std::size_t step) const {
    for (std::size_t i = first; i < m_columns.size(); i += step)
        hits.columns[i] =
            blockOf(m_session, *hits.node, m_state->attributes[m_columns[i].attribute],
                    m_columns[i].element);
}

// The columns of one leaf on all cores.
void Scan::readColumns(NodeHits& hits) {
    const std::size_t parts = std::min<std::size_t>(m_session.threads(), m_columns.size());
    std::vector<Task<bool>> others;
    for (std::size_t part = 1; part < parts; ++part)
        others.push_back(m_session.pool().run(
            [this, &hits, part, parts] { return readColumns(hits, part, parts), true; }));
    readColumns(hits, 0, parts);
    for (Task<bool>& other : others)
        (void)other.get();
}

// Hits that nobody wants to see are one sum, and nodes without any go with what comes before them.
Scan::Examined Scan::examine(const std::vector<Candidate>& candidates, bool withColumns) const {
    Examined examined;
    try {
        for (const Candidate& candidate : candidates) {
            if (m_abandoned)
                break;
            NodeHits hits = examine(candidate);
            if (onlyCounts())
                hits.node = nullptr;
            if (hits.count > 0) {
                hits.columns.resize(m_columns.size());
                if (withColumns)
                    readColumns(hits, 0, 1);
            }
            if (!examined.hits.empty() && (onlyCounts() || hits.count == 0)) {
                examined.hits.back().count += hits.count;
                examined.hits.back().scanned += hits.scanned;
                examined.hits.back().nodes += hits.nodes;
            } else {
                examined.hits.push_back(std::move(hits));
            }
        }
    } catch (...) {
        examined.failure = std::current_exception();
    }
    return examined;
}

Scan::Candidate Scan::candidate(bool all) {
    Candidate candidate{m_cursor->page() ? m_cursor->page() : m_rootPage, m_cursor->node(), all};
    if (candidate.page.get() != m_lastPage) {
        m_lastPage = candidate.page.get();
        // Leaves that are worked on keep their pages.
        m_isLargePage = index::heldBytes(*candidate.page) > m_session.cacheSize() / 4 / window();
    }
    return candidate;
}

bool Scan::isFirstPart() const {
    return m_ahead <= smallSteps;
}

// Moves the cursor past the next candidates, and takes what it can decide on the way.
bool Scan::advance() {
    std::vector<Candidate> candidates;
    const bool isFirst = m_ahead == 1;
    const std::size_t most = isFirst && onlyCounts() ? 2
                             : isFirstPart()         ? 1
                                                     : std::min(m_ahead / smallSteps, mostPerTask);
    std::uint64_t points = 0;
    NodeHits whole;  // of nodes that match as a whole, where only the count is needed
    while (const index::Node* node = m_cursor->node()) {
        if (m_cursor->depth() <= m_allDepth)
            m_allDepth = SIZE_MAX;
        const bool leaf = node->isLeaf();
        bool all = m_allDepth != SIZE_MAX;
        // Workers decide on the leaves.
        if (!all && !leaf) {
            const filter::Decision decision = decide(*node);
            if (decision == filter::Decision::None) {
                if (!m_scope.nodes) {
                    m_passed += node->totalCount;
                    ++m_nodes.skipped;
                }
                m_cursor->skip();
                continue;
            }
            all = decision == filter::Decision::All;
            if (all)
                m_allDepth = m_cursor->depth();
        }
        const bool wanted =
            (m_scope.nodes ? m_scope.nodes->count(node->id) > 0 : leaf) && (leaf || !m_wantLeaves);
        if (all && onlyCounts() && (wanted || !m_scope.nodes)) {
            // Nothing is read, and whole subtrees are one step.
            const std::uint64_t count = m_scope.nodes ? node->ownCount : node->totalCount;
            whole.count += count;
            whole.scanned += count;
            if (count > 0)
                ++whole.nodes.whole;
            if (m_scope.nodes)
                m_cursor->enter();
            else
                m_cursor->skip();
            continue;
        }
        if (wanted && node->ownCount > 0) {
            candidates.push_back(candidate(all));
            points += node->ownCount;
        }
        m_cursor->enter();
        if (candidates.size() >= most || (points >= taskPoints() && !isFirst) ||
            (m_isLargePage && !candidates.empty()))
            break;
    }
    if (whole.count > 0) {
        whole.all = true;
        m_examined.hits.push_back(std::move(whole));
    }
    if (candidates.empty())
        return false;
    if (isFirst) {
        // Handing the first leaf over would take longer than many a query. Who counts wants all.
        m_ahead = onlyCounts() ? smallSteps : 2;
        if (candidates.size() > 1)
            begin({candidates.back()}, false);
        Examined first = examine({candidates.front()}, false);
        for (NodeHits& hits : first.hits)
            m_examined.hits.push_back(std::move(hits));
        m_examined.failure = first.failure;
        return true;
    }
    begin(std::move(candidates), !isFirstPart());
    return true;
}

void Scan::begin(std::vector<Candidate> candidates, bool withColumns) {
    m_work.push_back(m_session.pool().run(
        [this, own = std::move(candidates), withColumns] { return examine(own, withColumns); }));
}

std::optional<NodeHits> Scan::next() {
    if (m_failed)
        throw Failure(ErrorCode::State, "The query failed, and can't go on.", "Make a new one.");
    m_failed = true;  // the hits of a node that could not be read must not be passed over
    NodeHits hits = m_session.reading(*m_state, [this] { return nextHits(); });
    m_failed = false;
    if (hits.count == 0)
        return std::nullopt;
    return hits;
}

// Without hits at the end.
NodeHits Scan::nextHits() {
    for (;;) {
        while (!m_examined.hits.empty()) {
            NodeHits hits = std::move(m_examined.hits.front());
            m_examined.hits.pop_front();
            m_passed += hits.scanned;
            m_nodes += hits.nodes;
            if (hits.count > 0) {
                if (!hits.columns.empty() && !hits.columns.front())
                    readColumns(hits);
                return hits;
            }
        }
        if (m_examined.failure)
            std::rethrow_exception(m_examined.failure);
        const auto isExamined = [this] { return !m_examined.hits.empty() || m_examined.failure; };
        while (!isExamined() && m_work.size() < (m_isLargePage ? 1 : std::min(m_ahead, window())) &&
               advance()) {
        }
        if (isExamined())
            continue;
        if (m_work.empty())
            return {};
        awaitOldest();
        m_examined = m_work.front().get();
        m_work.pop_front();
        m_ahead = std::min(m_ahead * 2, mostPerTask * smallSteps);
    }
}

void Scan::awaitOldest() {
    try {
        do
            Interruption::check();
        while (!m_work.front().isReadyWithin(std::chrono::milliseconds(10)));
    } catch (...) {
        m_abandoned = true;  // or they would be waited for
        throw;
    }
}

// Points that may be worked on at once: their columns take a quarter of the cache size.
std::size_t Scan::pointsAtOnce() const {
    const std::size_t columns = m_columns.size() + m_filter.elements().size() + 1;
    return m_session.cacheSize() / 4 / 8 / columns;
}

std::size_t Scan::taskPoints() const {
    const std::size_t tasks = m_session.threads() * tasksPerThread;
    return std::clamp<std::size_t>(pointsAtOnce() / tasks, 1,
                                   onlyCounts() ? pointsPerCount : pointsPerTask);
}

// How many tasks are worked on at once: enough for the cores.
std::size_t Scan::window() const {
    const std::size_t largest =
        std::max<std::size_t>(taskPoints(), session::leafCapacity(m_session.identity().settings));
    return std::clamp<std::size_t>(pointsAtOnce() / largest, 1,
                                   m_session.threads() * tasksPerThread);
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

void HitReader::fail() {
    m_hits.reset();
    m_scan.fail();
}

std::uint32_t HitReader::progress() const {
    if (m_ended)
        return 100;
    if (m_scan.total() == 0)
        return 0;
    double passed = static_cast<double>(m_scan.passed());
    if (m_hits)  // the part of them that is still to be handed out is not passed yet
        passed -= static_cast<double>(m_hits->scanned) * static_cast<double>(m_hits->count - m_at) /
                  static_cast<double>(m_hits->count);
    return static_cast<std::uint32_t>(
        std::clamp(passed * 100 / static_cast<double>(m_scan.total()), 0.0, 99.0));
}

}  // namespace tarvo::engine::query
