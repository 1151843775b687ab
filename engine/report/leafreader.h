// Columns of the points in the leaves of the state that a report is about, leaf by leaf in key
// order: every leaf, or of a very large file every n-th. Leaves are read and decoded on the worker
// threads a few ahead, within a quarter of the cache size.
#pragma once

#include "engine/report/facts.h"

#include <cstdint>
#include <deque>
#include <memory>
#include <optional>
#include <vector>

namespace tarvo::engine::report {

// Attribute (index in the state's table) and element.
struct ColumnRef {
    std::size_t attribute = 0;
    std::uint32_t element = 0;
};

class LeafReader {
public:
    // session and facts must live as long as the reader. step: every step-th leaf, from 1.
    LeafReader(session::Session& session, const Facts& facts, std::vector<ColumnRef> columns,
               std::uint64_t step);
    LeafReader(const LeafReader&) = delete;
    LeafReader& operator=(const LeafReader&) = delete;

    // The columns asked for of one leaf, in that order, all of one length above 0.
    using Columns = std::vector<std::shared_ptr<const schema::Column>>;
    // Those of the next leaf; none at the end. Throws Failure(Damaged).
    std::optional<Columns> next();

private:
    bool startNext();

    session::Session& m_session;
    const Facts& m_facts;
    std::vector<ColumnRef> m_columns;
    std::uint64_t m_step;
    index::TreeCursor m_cursor;
    std::uint64_t m_leaves = 0;  // passed
    std::size_t m_window;        // leaves worked on at once
    std::deque<Task<Columns>> m_work;
};

}  // namespace tarvo::engine::report
