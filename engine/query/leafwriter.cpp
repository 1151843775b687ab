#include "engine/query/leafwriter.h"

#include "engine/query/columns.h"
#include "engine/query/leafpoints.h"

#include <algorithm>

namespace tarvo::engine::query {

namespace {

// As many make a task worth while.
constexpr std::size_t batchPoints = 8192;

}  // namespace

LeafWriter::LeafWriter(session::Session& session, session::State& state,
                       const index::RowLayout& layout, const index::KeySpace& space,
                       std::uint64_t renumberFrom, OnStored onStored)
    : m_session(session),
      m_state(state),
      m_layout(layout),
      m_space(space),
      m_table(std::make_shared<const schema::AttributeTable>(state.attributes)),
      m_nextId(renumberFrom),
      m_onStored(std::move(onStored)) {}

LeafWriter::~LeafWriter() = default;

std::shared_ptr<index::LeafContent> LeafWriter::writeLeaf(index::RunParts points,
                                                          std::size_t count) {
    const std::uint64_t newIds = m_nextId;
    if (newIds != UINT64_MAX)
        for (const index::RunPart& part : points)
            m_nextId += part.isStored ? 0 : part.points.size();
    auto content = std::make_shared<index::LeafContent>();
    m_batch.push_back({std::move(points), count, newIds, content});
    m_batchPoints += count;
    m_storedPoints += count;
    if (m_batchPoints >= batchPoints)
        encodeBatch();
    if (m_onStored)
        m_onStored(m_storedPoints);
    return content;
}

void LeafWriter::encodeBatch() {
    std::vector<std::shared_ptr<index::LeafContent>> contents;
    for (const Leaf& leaf : m_batch)
        contents.push_back(leaf.content);
    const std::uint8_t level = m_session.identity().settings.compressionLevel;
    const std::uint32_t revision = m_state.transaction.id;
    auto encode = [table = m_table, &layout = m_layout, &space = m_space, level, revision,
                   leaves = std::move(m_batch)]() mutable {
        std::vector<Encoded> results;
        results.reserve(leaves.size());
        for (Leaf& leaf : leaves) {
            const LeafPoints points(std::move(leaf.points), leaf.count, layout, space, leaf.newIds);
            results.push_back(encodeLeaf(points, *table, layout, level, revision));
        }
        return results;
    };
    m_batch.clear();
    m_batchPoints = 0;
    m_jobs.push_back({m_session.pool().run(std::move(encode)), std::move(contents)});
    while (m_jobs.size() > m_session.pool().threads() * 4)
        storeOldest();
}

LeafWriter::Encoded LeafWriter::encodeLeaf(const LeafPoints& points,
                                           const schema::AttributeTable& table,
                                           const index::RowLayout& layout, std::uint8_t level,
                                           std::uint32_t revision) {
    Encoded result{BlockWriter(level), {}};
    for (std::size_t a = 0; a < table.size(); ++a) {
        const schema::Attribute& attribute = table[a];
        if (!index::RowLayout::has(attribute))
            continue;
        index::AttributeData data{attribute.uid, revision, {}};
        for (std::uint32_t e = 0; e < attribute.record.length; ++e) {
            const std::size_t field = layout.fieldOf(a) + e;
            schema::Column column;
            if (const auto code = points.constant(field)) {
                // One point tells as much as all.
                column = schema::Column(layout.fields()[field].width, 1);
                column.set(0, *code);
            } else {
                column = points.column(field);
            }
            data.elements.push_back(result.blocks.add(attribute, column));
        }
        result.attributes.push_back(std::move(data));
    }
    std::sort(
        result.attributes.begin(), result.attributes.end(),
        [](const index::AttributeData& a, const index::AttributeData& b) { return a.uid < b.uid; });
    return result;
}

bool LeafWriter::storeOldest() {
    if (m_jobs.empty() && !m_batch.empty())
        encodeBatch();
    if (m_jobs.empty())
        return false;
    Job job = std::move(m_jobs.front());
    m_jobs.pop_front();
    std::vector<Encoded> encoded = job.encoded.get();
    for (std::size_t i = 0; i < encoded.size(); ++i) {
        encoded[i].blocks.store(m_session.blobs(), encoded[i].attributes);
        job.contents[i]->attributes = std::move(encoded[i].attributes);
    }
    return true;
}

void LeafWriter::complete(index::LeafContent& content) {
    while (content.attributes.empty() && storeOldest()) {
    }
}

std::shared_ptr<index::SortedRun> LeafWriter::readLeaf(const index::Node& leaf) {
    index::PointColumns points(m_layout);
    for (std::size_t a = 0; a < m_table->size(); ++a) {
        const schema::Attribute& attribute = (*m_table)[a];
        if (!index::RowLayout::has(attribute))
            continue;
        const index::AttributeData* const data = leaf.find(attribute.uid);
        for (std::uint32_t e = 0; e < attribute.record.length; ++e) {
            index::PackedColumn& column = points.columns[m_layout.fieldOf(a) + e];
            // Not through the cache: the leaf goes, and the memory is taken by the runs.
            if (data && e < data->elements.size() && data->elements[e].block)
                column.append(readBlock(m_session, leaf, attribute, e).column());
            else
                column.append(*readColumn(m_session, leaf, attribute, e));
        }
    }
    points.count = leaf.ownCount;
    auto run = std::make_shared<index::SortedRun>(std::move(points), m_space, m_layout.fieldOf(0));
    if (run->firstKey() < leaf.first || run->lastKey() > leaf.last)
        throw Failure(ErrorCode::Damaged, "The file is damaged: node " + std::to_string(leaf.id) +
                                              " holds points that do not belong there.");
    return run;
}

index::Page LeafWriter::readPage(const BlobRef& reference) {
    return m_session.blobs().readPage(reference);
}

BlobRef LeafWriter::writePage(const index::Page& page) {
    return m_session.blobs().add(index::encodePage(page));
}

std::uint32_t LeafWriter::newNodeId() {
    if (m_state.nextNodeId == 0 || m_state.nextNodeId == UINT32_MAX)
        throw Failure(ErrorCode::State, "The index has no more node numbers.");
    return m_state.nextNodeId++;
}

}  // namespace tarvo::engine::query
