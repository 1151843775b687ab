#include "engine/query/pointwriter.h"

#include "engine/query/leafwriter.h"

#include <algorithm>
#include <cstring>
#include <filesystem>

namespace tarvo::engine::query {

namespace {

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

// Of a full range: a code that no row has.
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
      m_runSize(std::clamp<std::size_t>(session.cacheSize() / 8, 2u << 20, 64u << 20)),
      m_ids(ids),
      m_firstId(nextIdCode(session.change())) {}

PointWriter::~PointWriter() = default;

bool PointWriter::fits(const session::State& state) const {
    return std::equal(
        state.attributes.all().begin(), state.attributes.all().end(), m_table.all().begin(),
        m_table.all().end(),
        [](const schema::Attribute& a, const schema::Attribute& b) { return a.uid == b.uid; });
}

std::uint8_t* PointWriter::addRows(std::size_t count) {
    checkIntact();
    // Before anything is taken: a call that fails has changed nothing.
    if (m_multiPass && m_rows.size() >= m_runSize)
        apply({});
    writeRuns();
    const std::size_t at = m_rows.size();
    m_rows.resize(at + count * m_layout.stride());
    return m_rows.data() + at;
}

void PointWriter::dropRows(std::size_t count) {
    m_rows.resize(m_rows.size() - count * m_layout.stride());
}

void PointWriter::finishRows(std::uint8_t* rows, std::size_t count) {
    const index::RowLayout::Field* primary = &m_layout.fields()[m_layout.fieldOf(0)];
    for (std::size_t i = 0; i < count; ++i, rows += m_layout.stride()) {
        std::uint64_t codes[index::maximumDimensions] = {};
        for (unsigned d = 0; d < m_space.dimensions(); ++d)
            std::memcpy(&codes[d], rows + primary[d].offset, primary[d].width);
        const index::Key key = m_space.key(codes);
        std::memcpy(rows, &key, sizeof key);
    }
    if (m_rows.size() < m_runSize || m_multiPass)
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
    const std::size_t rowsOfRun = m_rows.size() / m_layout.stride();
    auto sort = [rows = std::move(m_rows), stride = m_layout.stride(), place = folder()] {
        Run run{nullptr, index::sortRows(rows, stride)};
        try {
            run.file = std::make_unique<index::RowFile>(place, run.rows);
            run.rows = {};
        } catch (const Failure&) {
            // No room: what is next to be added asks again, and tells.
        }
        return run;
    };
    m_rowsInRuns += rowsOfRun;
    m_rows = {};
    m_rows.reserve(m_runSize + m_runSize / 4);
    m_sorting.push_back(m_session.pool().run(std::move(sort)));
    while (m_sorting.size() > 2)
        keepOldestRun();
}

// Waits for the run that was started first.
void PointWriter::keepOldestRun() {
    auto run = std::move(m_sorting.front());
    m_sorting.pop_front();
    m_runs.push_back(run.get());
}

// Those that found no room before.
void PointWriter::writeRuns() {
    for (Run& run : m_runs) {
        if (run.file)
            continue;
        run.file = std::make_unique<index::RowFile>(folder(), run.rows);
        run.rows = {};
    }
}

std::string PointWriter::folder() const {
    const std::filesystem::path file = m_session.fileName();
    return file.has_parent_path() ? file.parent_path().string() : ".";
}

std::uint64_t PointWriter::rowCount() const {
    return m_rowsInRuns + m_rows.size() / m_layout.stride();
}

void PointWriter::apply(const session::Progress& progress) {
    checkIntact();
    if (isEmpty())
        return;
    session::State& pending = m_session.change();
    session::State changed = pending;
    applyTo(changed, progress);
    pending = std::move(changed);
    m_rows = {};
    m_runs.clear();
    m_rowsInRuns = 0;
    m_firstId = nextIdCode(pending);
}

void PointWriter::applyTo(session::State& state, const session::Progress& progress) {
    m_failed = true;
    while (!m_sorting.empty())
        keepOldestRun();
    m_failed = false;
    const std::size_t stride = m_layout.stride();
    const std::size_t buffer = std::clamp<std::size_t>(
        m_session.cacheSize() / 8 / (m_runs.size() + 1), 64u << 10, 8u << 20);
    std::vector<std::unique_ptr<index::RowReader>> sources;
    for (const Run& run : m_runs)
        sources.push_back(run.file ? run.file->read(stride, buffer)
                                   : index::readRows(run.rows, stride));
    sources.push_back(index::readRows(index::sortRows(m_rows, stride), stride));

    const session::Blobs::Scope scope(m_session.blobs());
    index::Node root = m_session.blobs().rootNode(state);
    {
        const bool renumbers =
            m_ids == Ids::Automatic && m_session.identity().settings.optimizePointId;
        const std::uint64_t rows = std::max<std::uint64_t>(1, rowCount());
        index::RowMerger merger(std::move(sources), stride);
        LeafWriter backend(
            m_session, state, m_layout, m_space, renumbers ? m_firstId : UINT64_MAX,
            [&](std::uint64_t stored) {
                // Rows of leaves that are rewritten count too: the number is about right.
                const auto percent = std::min<std::uint64_t>(99, stored * 100 / rows);
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
