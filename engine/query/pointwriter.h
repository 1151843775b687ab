// New points on their way into the pending state: rows are collected and sorted into runs within
// the session's cache size, and merged into the tree when somebody wants to see them.
#pragma once

#include "engine/index/builder.h"
#include "engine/index/rows.h"
#include "engine/session/session.h"

#include <deque>
#include <future>
#include <memory>
#include <vector>

namespace tarvo::engine::query {

class PointWriter final : public session::PendingChange {
public:
    // The writer of the session's pending transaction, made when there is none yet.
    static std::shared_ptr<PointWriter> of(session::Session& session);

    explicit PointWriter(session::Session& session);
    ~PointWriter() override;

    const index::RowLayout& layout() const { return m_layout; }
    // Whether the attributes of the pending state are those that the layout was made for.
    bool fits(const session::State& state) const;

    // Room for count rows, zeroed; filled by the caller before any other call.
    std::uint8_t* addRows(std::size_t count);
    // Takes the last count rows back.
    void dropRows(std::size_t count);
    // The rows last added are complete: their keys are set and, when many have come together, they
    // go on to a run.
    void finishRows(std::uint8_t* rows, std::size_t count);

    void apply() override;

private:
    void startRun();
    void keepOldestRun();
    void mergeIntoTree();
    void checkIntact() const;

    session::Session& m_session;
    schema::AttributeTable m_table;
    index::RowLayout m_layout;
    index::KeySpace m_space;
    std::size_t m_runSize;
    bool m_failed = false;  // rows were lost: the transaction must not be committed
    std::vector<std::uint8_t> m_rows;
    std::deque<std::future<std::unique_ptr<index::RowFile>>> m_sorting;
    std::vector<std::unique_ptr<index::RowFile>> m_runs;
};

}  // namespace tarvo::engine::query
