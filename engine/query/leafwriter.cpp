#include "engine/query/leafwriter.h"

#include "engine/query/columns.h"
#include "engine/query/leafpoints.h"

#include <algorithm>

namespace tarvo::engine::query {

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
    auto content = std::make_shared<index::LeafContent>();
    const std::uint64_t newIds = m_nextId;
    if (newIds != UINT64_MAX)
        for (const index::RunPart& part : points)
            m_nextId += part.isStored ? 0 : part.points.size();
    const std::uint8_t level = m_session.identity().settings.compressionLevel;
    const std::uint32_t revision = m_state.transaction.id;
    auto encode = [table = m_table, &layout = m_layout, &space = m_space, newIds, level, revision,
                   count, points = std::move(points)]() mutable {
        const LeafPoints leaf(std::move(points), count, layout, space, newIds);
        Encoded result{BlockWriter(level), {}};
        for (std::size_t a = 0; a < table->size(); ++a) {
            const schema::Attribute& attribute = (*table)[a];
            if (!index::RowLayout::has(attribute))
                continue;
            index::AttributeData data{attribute.uid, revision, {}};
            for (std::uint32_t e = 0; e < attribute.record.length; ++e) {
                const std::size_t field = layout.fieldOf(a) + e;
                schema::Column column;
                if (const auto code = leaf.constant(field)) {
                    // One point tells as much as all.
                    column = schema::Column(layout.fields()[field].width, 1);
                    column.set(0, *code);
                } else {
                    column = leaf.column(field);
                }
                data.elements.push_back(result.blocks.add(attribute, column));
            }
            result.attributes.push_back(std::move(data));
        }
        return result;
    };
    m_jobs.push_back({m_session.pool().run(std::move(encode)), content});
    m_storedPoints += count;
    while (m_jobs.size() > m_session.pool().threads() * 4)
        storeOldest();
    if (m_onStored)
        m_onStored(m_storedPoints);
    return content;
}

void LeafWriter::storeOldest() {
    Job job = std::move(m_jobs.front());
    m_jobs.pop_front();
    Encoded encoded = job.encoded.get();
    encoded.blocks.store(m_session.blobs(), encoded.attributes);
    std::sort(
        encoded.attributes.begin(), encoded.attributes.end(),
        [](const index::AttributeData& a, const index::AttributeData& b) { return a.uid < b.uid; });
    job.content->attributes = std::move(encoded.attributes);
}

void LeafWriter::complete(index::LeafContent& content) {
    while (content.attributes.empty() && !m_jobs.empty())
        storeOldest();
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
