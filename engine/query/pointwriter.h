// New points on their way into the pending state: they are collected as columns and sorted into
// runs, in memory within the session's cache size and then in a file, and merged into the tree
// when somebody wants to see them.
#pragma once

#include "engine/index/builder.h"
#include "engine/index/rows.h"
#include "engine/index/runfile.h"
#include "engine/session/session.h"

#include <deque>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace tarvo::engine::query {

class PointWriter final : public session::PendingChange {
public:
    // Whether the ids of the points may be given anew in the order of the index, as the file's
    // settings want it.
    enum class Ids { Automatic, Given };

    // The writer of the session's pending transaction, made when there is none yet.
    static std::shared_ptr<PointWriter> of(session::Session& session, Ids ids);

    PointWriter(session::Session& session, Ids ids);
    ~PointWriter() override;

    const index::RowLayout& layout() const { return m_layout; }
    // Whether the attributes of the pending state are those that the layout was made for.
    bool fits(const session::State& state) const;
    bool isEmpty() const { return m_count == 0; }

    // Where points are added: the columns that the caller appends the same number of codes to, or
    // truncates again when that fails. Makes room before; finish comes after, before any other
    // call.
    index::PointColumns& points();
    // The points are complete; when many have come together, they go on to a run.
    void finish();

    void apply(const session::Progress& progress) override;
    // The same, into a state that is not (yet) the pending one.
    void applyTo(session::State& state, const session::Progress& progress);

private:
    // Points in the order of their keys: in memory or, those that are to be, in the file, unless
    // there is no room for them.
    struct Run {
        std::shared_ptr<index::SortedRun> points;
        bool toFile = false;
        index::RunFile::Place place;  // without points
    };

    void startRun();
    void keepOldestRun();
    static void write(Run& run, index::RunFile& file, bool must);
    void writeRuns();
    std::string folder() const;
    void checkIntact() const;
    std::size_t primaryField() const { return m_layout.fieldOf(0); }

    session::Session& m_session;
    schema::AttributeTable m_table;
    index::RowLayout m_layout;
    index::KeySpace m_space;
    std::size_t m_runSize;  // points
    Ids m_ids;
    bool m_multiPass = false;          // points go into the tree in place of runs
    std::uint64_t m_firstId;           // code of the first id that the points can have
    bool m_failed = false;             // points were lost: the transaction must not be committed
    std::uint64_t m_count = 0;         // of all points
    std::uint64_t m_pointsInRuns = 0;  // and in those still being sorted
    std::uint64_t m_held = 0;          // bytes of the runs that stay in memory
    index::PointColumns m_points;      // the next run
    std::unique_ptr<index::RunFile> m_file;
    std::deque<Task<Run>> m_sorting;
    std::vector<Run> m_runs;
};

}  // namespace tarvo::engine::query
