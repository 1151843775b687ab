// New points on their way into the pending state: rows are collected and sorted into runs within
// the session's cache size, and merged into the tree when somebody wants to see them.
#pragma once

#include "engine/index/builder.h"
#include "engine/index/rows.h"
#include "engine/session/session.h"

#include <deque>
#include <memory>
#include <string>
#include <vector>

namespace tarvo::engine::query {

class PointWriter final : public session::PendingChange {
public:
    // Whether the ids of the rows may be given anew in the order of the index, as the file's
    // settings want it.
    enum class Ids { Automatic, Given };

    // The writer of the session's pending transaction, made when there is none yet.
    static std::shared_ptr<PointWriter> of(session::Session& session, Ids ids);

    PointWriter(session::Session& session, Ids ids);
    ~PointWriter() override;

    const index::RowLayout& layout() const { return m_layout; }
    // Whether the attributes of the pending state are those that the layout was made for.
    bool fits(const session::State& state) const;
    bool isEmpty() const { return m_rows.empty() && m_sorting.empty() && m_runs.empty(); }

    // Room for count rows, zeroed; filled by the caller before any other call.
    std::uint8_t* addRows(std::size_t count);
    // Takes the last count rows back.
    void dropRows(std::size_t count);
    // The rows last added are complete: their keys are set and, when many have come together, they
    // go on to a run.
    void finishRows(std::uint8_t* rows, std::size_t count);

    void apply(const session::Progress& progress) override;
    // The same, into a state that is not (yet) the pending one.
    void applyTo(session::State& state, const session::Progress& progress);

private:
    // Sorted rows in a temporary file, or in memory while there is no room for one.
    struct Run {
        std::unique_ptr<index::RowFile> file;
        std::vector<std::uint8_t> rows;
    };

    void startRun();
    void keepOldestRun();
    void writeRuns();
    std::string folder() const;
    void checkIntact() const;
    std::uint64_t rowCount() const;

    session::Session& m_session;
    schema::AttributeTable m_table;
    index::RowLayout m_layout;
    index::KeySpace m_space;
    std::size_t m_runSize;
    Ids m_ids;
    bool m_multiPass = false;        // rows go into the tree in place of runs
    std::uint64_t m_firstId;         // code of the first id that the rows can have
    std::uint64_t m_rowsInRuns = 0;  // and in those still being sorted
    bool m_failed = false;           // rows were lost: the transaction must not be committed
    std::vector<std::uint8_t> m_rows;
    std::deque<Task<Run>> m_sorting;
    std::vector<Run> m_runs;
};

}  // namespace tarvo::engine::query
