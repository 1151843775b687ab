#include "engine/query/pointwriter.h"

#include "engine/query/leafwriter.h"

#include <algorithm>
#include <filesystem>

namespace tarvo::engine::query {

namespace {

// Runs that are sorted while the next one is collected.
constexpr std::size_t mostSorting = 2;

index::BuilderSettings builderSettings(const session::Session& session,
                                       const session::State& state) {
    const session::CreateSettings& settings = session.identity().settings;
    index::BuilderSettings result;
    result.revision = state.transaction.id;
    result.capacity = session::leafCapacity(settings);
    if (settings.chunkMode == static_cast<std::uint32_t>(session::ChunkMode::EdgeLength))
        result.leafLevel = session::cellsOf(settings, state.primary()).leafLevel;
    return result;
}

// Of a full range: a code that no point has.
std::uint64_t nextIdCode(const session::State& state) {
    const schema::Grid& grid = state.pointId().grid;
    const auto next = static_cast<schema::Grid::Wide>(state.nextPointId);
    return next > grid.integerValue(grid.maximumCode()) ? UINT64_MAX : grid.code(next);
}

}  // namespace

std::shared_ptr<PointWriter> PointWriter::of(session::Session& session, Ids ids) {
    auto writer = std::dynamic_pointer_cast<PointWriter>(session.pendingChange());
    if (!writer || !writer->fits(session.change()) || writer->m_ids != ids) {
        session.settle();
        writer = std::make_shared<PointWriter>(session, ids);
        writer->m_multiPass = session.identity().settings.pointInsertMode == "multi-pass";
        session.setPendingChange(writer);
    }
    return writer;
}

PointWriter::PointWriter(session::Session& session, Ids ids)
    : m_session(session),
      m_table(session.change().attributes),
      m_layout(m_table),
      m_space(m_table[0]),
      m_runSize(std::clamp<std::size_t>(session.cacheSize() / 8, 2u << 20, 64u << 20) /
                m_layout.stride()),
      m_ids(ids),
      m_firstId(nextIdCode(session.change())),
      m_points(m_layout),
      m_file(std::make_unique<index::RunFile>(folder())) {}

PointWriter::~PointWriter() = default;

bool PointWriter::fits(const session::State& state) const {
    return std::equal(
        state.attributes.all().begin(), state.attributes.all().end(), m_table.all().begin(),
        m_table.all().end(),
        [](const schema::Attribute& a, const schema::Attribute& b) { return a.uid == b.uid; });
}

index::PointColumns& PointWriter::points() {
    checkIntact();
    // Before anything is taken: a call that fails has changed nothing.
    if (m_multiPass && m_points.count >= m_runSize)
        apply({});
    writeRuns();
    return m_points;
}

void PointWriter::finish() {
    m_count = m_pointsInRuns + m_points.count;
    if (m_points.count < m_runSize || m_multiPass)
        return;
    m_failed = true;
    startRun();
    m_failed = false;
}

void PointWriter::checkIntact() const {
    if (m_failed)
        throw Failure(ErrorCode::State,
                      "Points were lost when memory ran out; the transaction can only be rolled "
                      "back.");
}

void PointWriter::startRun() {
    const std::size_t count = m_points.count;
    const std::size_t bytes = m_points.bytes() + index::SortedRun::bytesBeside(count);
    // Beside those that stay, runs are collected, sorted and on their way to the file.
    const bool toFile = m_held + bytes * (2 + mostSorting) > m_session.cacheSize();
    auto sort = [points = std::move(m_points), &space = m_space, primary = primaryField(), toFile,
                 &file = *m_file]() mutable {
        Run run;
        run.toFile = toFile;
        run.points = std::make_shared<index::SortedRun>(std::move(points), space, primary);
        if (toFile)
            write(run, file, false);
        return run;
    };
    m_points = index::PointColumns(m_layout);
    // Their memory is wanted for the runs.
    if (m_held > m_session.cacheSize() / 4)
        m_session.blobs().forget();
    m_pointsInRuns += count;
    m_held += toFile ? 0 : bytes;
    m_sorting.push_back(m_session.pool().run(std::move(sort)));
    while (m_sorting.size() > mostSorting)
        keepOldestRun();
}

// Waits for the run that was started first.
void PointWriter::keepOldestRun() {
    auto run = std::move(m_sorting.front());
    m_sorting.pop_front();
    m_runs.push_back(run.get());
}

// Moves a run to the file.
void PointWriter::write(Run& run, index::RunFile& file, bool must) {
    try {
        run.place = file.add(*run.points);
        run.points.reset();
    } catch (const Failure&) {
        // No room: what is next to be added asks again, and tells.
        if (must)
            throw;
    }
}

// Those that found no room before.
void PointWriter::writeRuns() {
    for (Run& run : m_runs)
        if (run.toFile && run.points)
            write(run, *m_file, true);
}

std::string PointWriter::folder() const {
    const std::filesystem::path file = m_session.fileName();
    return file.has_parent_path() ? file.parent_path().string() : ".";
}

void PointWriter::apply(const session::Progress& progress) {
    checkIntact();
    if (isEmpty())
        return;
    session::State& pending = m_session.change();
    session::State changed = pending;
    applyTo(changed, progress);
    pending = std::move(changed);
    m_points = index::PointColumns(m_layout);
    m_runs.clear();
    m_file = std::make_unique<index::RunFile>(folder());
    m_count = m_pointsInRuns = m_held = 0;
    m_firstId = nextIdCode(pending);
}

void PointWriter::applyTo(session::State& state, const session::Progress& progress) {
    m_failed = true;
    if (m_points.count > 0)
        startRun();
    while (!m_sorting.empty())
        keepOldestRun();
    m_failed = false;
    std::vector<std::unique_ptr<index::RunReader>> runs;
    for (const Run& run : m_runs)
        runs.push_back(run.points ? index::readRun(run.points)
                                  : m_file->read(run.place, m_layout, m_space, primaryField()));

    const session::Blobs::Scope scope(m_session.blobs());
    index::Node root = m_session.blobs().rootNode(state);
    {
        const bool renumbers =
            m_ids == Ids::Automatic && m_session.identity().settings.optimizePointId;
        const std::uint64_t points = std::max<std::uint64_t>(1, m_count);
        index::PointMerger merger(std::move(runs));
        LeafWriter backend(
            m_session, state, m_layout, m_space, renumbers ? m_firstId : UINT64_MAX,
            [&](std::uint64_t stored) {
                // Points of leaves that are rewritten count too: the number is about right.
                const auto percent = std::min<std::uint64_t>(99, stored * 100 / points);
                if (progress && !progress(static_cast<int>(percent)))
                    throw Failure(ErrorCode::Cancelled, "Inserting points was cancelled.",
                                  "The transaction is still pending.");
            });
        index::TreeBuilder builder(m_space, m_table, builderSettings(m_session, state), backend);
        builder.insert(root, merger);
    }
    state.pointCount = root.totalCount;
    ++state.shape;
    state.rootPage = m_session.blobs().add(index::encodePage({root}));
}

}  // namespace tarvo::engine::query
