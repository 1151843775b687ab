// The leaves that a filter leaves over, in key order: whole subtrees are taken or skipped by their
// statistics, the rest is read and filtered on the worker threads, some leaves ahead of the
// consumer. Results come in the same order whatever the number of threads.
#pragma once

#include "engine/filter/filter.h"
#include "engine/index/node.h"
#include "engine/session/session.h"

#include <atomic>
#include <deque>
#include <exception>
#include <memory>
#include <optional>
#include <unordered_set>
#include <vector>

namespace tarvo::engine::query {

// Which points a query is about: those in the leaves of one subtree (0: of everything), or those
// stored in the nodes listed.
struct Scope {
    std::uint32_t subtree = 0;
    std::optional<std::unordered_set<std::uint32_t>> nodes;
};

// What became of the nodes that a scan has passed. A subtree that is decided at once counts as one.
struct NodeTally {
    std::uint64_t skipped = 0;  // without a hit, by their statistics
    std::uint64_t whole = 0;    // every point a hit, by their statistics
    std::uint64_t read = 0;     // point by point

    NodeTally& operator+=(const NodeTally& other) {
        skipped += other.skipped;
        whole += other.whole;
        read += other.read;
        return *this;
    }
};

// The hits of one node.
struct NodeHits {
    std::shared_ptr<const index::Page> page;  // keeps the node alive
    const index::Node* node = nullptr;        // null: nodes of which only the count is needed
    bool all = false;                         // every point is a hit
    filter::Selection selection;              // else which ones
    std::uint64_t count = 0;                  // of hits
    std::uint64_t scanned = 0;                // points looked at or passed over
    NodeTally nodes;                          // this one, and those without hits behind it
    // The columns asked for, in that order; empty when there is no hit.
    std::vector<std::shared_ptr<const codec::Block>> columns;
};

class Scan {
public:
    // filter: an expression or a command of findnode.h. Throws Failure(Filter) for a filter that
    // can't be understood, Failure(NotFound) for a node that the index does not have.
    Scan(session::Session& session, Scope scope, std::string_view filter);
    ~Scan();

    const session::State& state() const { return *m_state; }

    // The columns that hits are to bring along; before the first next.
    void setColumns(std::vector<filter::ElementRef> columns) { m_columns = std::move(columns); }

    // Every node with hits is wanted, even where only the count would do; of the nodes listed only
    // leaves.
    void wantLeaves() { m_wantLeaves = true; }

    // The next node with hits; none at the end. Throws Failure(State) once it has failed.
    std::optional<NodeHits> next();
    // Has it fail from now on.
    void fail() { m_failed = true; }
    // Points in the scope, hits or not.
    std::uint64_t total() const { return m_total; }
    // Of these, how many the scan has passed.
    std::uint64_t passed() const { return m_passed; }
    const NodeTally& nodes() const { return m_nodes; }

private:
    // A node whose points are to be looked at, or are hits in any case.
    struct Candidate {
        std::shared_ptr<const index::Page> page;
        const index::Node* node = nullptr;
        bool all = false;
    };
    // What a worker brings of some neighbouring candidates.
    struct Examined {
        std::deque<NodeHits> hits;
        std::exception_ptr failure;  // behind them
    };

    void narrowScope(std::uint32_t node);
    void findScope();
    NodeHits nextHits();
    bool onlyCounts() const { return m_columns.empty() && !m_wantLeaves; }
    // Waits for the first of the work as long as the caller wants it.
    void awaitOldest();
    bool advance();  // starts work on the next candidates; false at the end
    // Has a worker examine them.
    void begin(std::vector<Candidate> candidates, bool withColumns);
    Candidate candidate(bool all);
    // Whether it may all be for one page: columns are read only of the leaves that come to it.
    bool isFirstPart() const;
    Examined examine(const std::vector<Candidate>& candidates, bool withColumns) const;
    void readColumns(NodeHits& hits, std::size_t first, std::size_t step) const;
    void readColumns(NodeHits& hits);
    NodeHits examine(const Candidate& candidate) const;
    filter::Decision decide(const index::Node& node, filter::Decided* decided = nullptr) const;
    std::size_t pointsAtOnce() const;
    std::size_t taskPoints() const;
    std::size_t window() const;

    session::Session& m_session;
    std::shared_ptr<const session::State> m_state;
    Scope m_scope;
    filter::BoundFilter m_filter;
    std::vector<filter::ElementRef> m_columns;
    std::shared_ptr<const index::Page> m_rootPage;  // of one node
    std::optional<index::TreeCursor> m_cursor;
    std::size_t m_allDepth = SIZE_MAX;  // below this depth every point is a hit
    std::uint64_t m_total = 0;
    std::uint64_t m_passed = 0;
    NodeTally m_nodes;
    bool m_wantLeaves = false;
    bool m_failed = false;
    std::size_t m_ahead = 1;                  // grows: tasks at once, and candidates of a task
    const index::Page* m_lastPage = nullptr;  // that work was started in, to tell it from the next
    bool m_isLargePage = false;               // it is: only one candidate at a time
    Examined m_examined;
    std::atomic<bool> m_abandoned = false;
    std::deque<Task<Examined>> m_work;  // last: ends before what it uses
};

// Hands the hits of a scan out in portions that may end within a node.
class HitReader {
public:
    // The scan must live as long as the reader.
    explicit HitReader(Scan& scan) : m_scan(scan) {}
    HitReader(const HitReader&) = delete;
    HitReader& operator=(const HitReader&) = delete;

    struct Portion {
        const NodeHits* hits;  // valid until the next call
        std::uint64_t begin;   // of the node's hits
        std::uint32_t count;
    };
    // At most limit (above 0) hits of one node; none at the end.
    std::optional<Portion> next(std::uint32_t limit);
    // For who could not use what was handed out: none of the hits that follow are to be taken for
    // all that are left. Every next fails from now on.
    void fail();
    bool ended() const { return m_ended; }
    // Per cent of the scan's points passed; 100 only at the end.
    std::uint32_t progress() const;
    const NodeTally& nodes() const { return m_scan.nodes(); }

private:
    Scan& m_scan;
    std::optional<NodeHits> m_hits;
    std::uint64_t m_at = 0;  // of the node's hits, how many were handed out
    bool m_ended = false;
};

}  // namespace tarvo::engine::query
