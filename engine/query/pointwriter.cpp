#include "engine/query/pointwriter.h"

#include "engine/query/leafwriter.h"

#include <algorithm>
#include <cstring>
#include <filesystem>

namespace tarvo::engine::query {

namespace {

index::BuilderSettings builderSettings(const session::Session& session, const session::State& state,
                                       const index::KeySpace& space) {
    const session::CreateSettings& settings = session.identity().settings;
    index::BuilderSettings result;
    result.revision = state.transaction.id;
    result.capacity = session::leafCapacity(settings);
    if (settings.chunkMode == static_cast<std::uint32_t>(session::ChunkMode::EdgeLength)) {
        const int level = static_cast<int>(space.bits()) - static_cast<int>(settings.chunkSize);
        result.leafLevel =
            static_cast<unsigned>(std::clamp(level, 1, static_cast<int>(space.depth())));
    }
    return result;
}

}  // namespace

std::shared_ptr<PointWriter> PointWriter::of(session::Session& session) {
    auto writer = std::dynamic_pointer_cast<PointWriter>(session.pendingChange());
    if (!writer || !writer->fits(session.change())) {
        writer = std::make_shared<PointWriter>(session);
        session.setPendingChange(writer);
    }
    return writer;
}

PointWriter::PointWriter(session::Session& session)
    : m_session(session),
      m_table(session.change().attributes),
      m_layout(m_table),
      m_space(m_table[0]),
      m_runSize(std::clamp<std::size_t>(session.cacheSize() / 8, 2u << 20, 64u << 20)) {}

PointWriter::~PointWriter() {
    for (auto& run : m_sorting)
        run.wait();
}

bool PointWriter::fits(const session::State& state) const {
    return std::equal(
        state.attributes.all().begin(), state.attributes.all().end(), m_table.all().begin(),
        m_table.all().end(),
        [](const schema::Attribute& a, const schema::Attribute& b) { return a.uid == b.uid; });
}

std::uint8_t* PointWriter::addRows(std::size_t count) {
    checkIntact();
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
    if (m_rows.size() >= m_runSize) {
        m_failed = true;
        startRun();
        m_failed = false;
    }
}

void PointWriter::checkIntact() const {
    if (m_failed)
        throw Failure(ErrorCode::State,
                      "Points were lost when an insert failed; the transaction "
                      "can only be rolled back.");
}

void PointWriter::startRun() {
    const std::filesystem::path file = m_session.container().fileName();
    const std::string folder = file.has_parent_path() ? file.parent_path().string() : ".";
    auto sort = [rows = std::move(m_rows), stride = m_layout.stride(), folder] {
        return std::make_unique<index::RowFile>(folder, index::sortRows(rows, stride));
    };
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

void PointWriter::apply() {
    checkIntact();
    if (m_rows.empty() && m_sorting.empty() && m_runs.empty())
        return;
    m_failed = true;
    mergeIntoTree();
    m_failed = false;
}

void PointWriter::mergeIntoTree() {
    while (!m_sorting.empty())
        keepOldestRun();
    const std::size_t stride = m_layout.stride();
    const std::size_t buffer = std::clamp<std::size_t>(
        m_session.cacheSize() / 8 / (m_runs.size() + 1), 64u << 10, 8u << 20);
    std::vector<std::unique_ptr<index::RowReader>> sources;
    for (const auto& run : m_runs)
        sources.push_back(run->read(stride, buffer));
    sources.push_back(index::readRows(index::sortRows(m_rows, stride), stride));
    m_rows = {};

    session::State& state = m_session.change();
    const store::Container::ReadScope scope(m_session.container());
    index::Node root = m_session.rootNode(state);
    {
        index::RowMerger merger(std::move(sources), stride);
        LeafWriter backend(m_session, state, m_layout, m_space);
        index::TreeBuilder builder(m_space, m_table, builderSettings(m_session, state, m_space),
                                   backend);
        builder.insert(root, merger);
    }
    m_runs.clear();
    state.pointCount = root.totalCount;
    state.rootPage = m_session.container().add(index::encodePage({root}));
}

}  // namespace tarvo::engine::query
