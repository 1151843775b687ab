#include "engine/query/leafwriter.h"

#include "engine/query/columns.h"

#include <algorithm>
#include <cstring>
#include <numeric>

namespace tarvo::engine::query {

namespace {

std::uint64_t codeAt(const std::uint8_t* row, const index::RowLayout::Field& field) {
    std::uint64_t code = 0;
    std::memcpy(&code, row + field.offset, field.width);
    return code;
}

template <typename T>
void gather(const std::vector<std::uint8_t>& rows, std::size_t stride, std::size_t offset,
            const std::vector<std::uint32_t>& order, std::span<T> codes) {
    for (std::size_t i = 0; i < order.size(); ++i)
        std::memcpy(&codes[i], rows.data() + order[i] * stride + offset, sizeof(T));
}

// The points of a leaf stand in the order of their ids, that is of acquisition.
std::vector<std::uint32_t> orderById(const std::vector<std::uint8_t>& rows,
                                     const index::RowLayout& layout) {
    const std::size_t stride = layout.stride();
    std::vector<std::uint64_t> ids(rows.size() / stride);
    for (std::size_t i = 0; i < ids.size(); ++i)
        ids[i] = layout.id(rows.data() + i * stride);
    std::vector<std::uint32_t> order(ids.size());
    std::iota(order.begin(), order.end(), 0u);
    std::sort(order.begin(), order.end(), [&ids](std::uint32_t a, std::uint32_t b) {
        return ids[a] != ids[b] ? ids[a] < ids[b] : a < b;
    });
    return order;
}

}  // namespace

LeafWriter::LeafWriter(session::Session& session, session::State& state,
                       const index::RowLayout& layout, const index::KeySpace& space,
                       std::uint64_t renumberFrom, OnStored onStored)
    : m_session(session),
      m_state(state),
      m_layout(layout),
      m_space(space),
      m_table(std::make_shared<const schema::AttributeTable>(state.attributes)),
      m_renumberFrom(renumberFrom),
      m_nextId(renumberFrom),
      m_onStored(std::move(onStored)) {}

LeafWriter::~LeafWriter() = default;

// Each new row is written once, in key order: counting gives every one an id of its own among those
// that the rows had before.
void LeafWriter::renumber(std::vector<std::uint8_t>& rows) {
    const index::RowLayout::Field& field = m_layout.idField();
    for (std::size_t at = 0; at < rows.size(); at += m_layout.stride())
        if (m_layout.id(rows.data() + at) >= m_renumberFrom) {
            std::memcpy(rows.data() + at + field.offset, &m_nextId, field.width);
            ++m_nextId;
        }
}

std::shared_ptr<index::LeafContent> LeafWriter::writeLeaf(const std::uint8_t* rows,
                                                          std::size_t count) {
    auto content = std::make_shared<index::LeafContent>();
    std::vector<std::uint8_t> copy(rows, rows + count * m_layout.stride());
    if (m_renumberFrom != UINT64_MAX)
        renumber(copy);
    const std::uint8_t level = m_session.identity().settings.compressionLevel;
    const std::uint32_t revision = m_state.transaction.id;
    auto encode = [table = m_table, &layout = m_layout, level, revision, copy = std::move(copy)] {
        const std::vector<std::uint32_t> order = orderById(copy, layout);
        Encoded result{BlockWriter(level), {}};
        for (std::size_t a = 0; a < table->size(); ++a) {
            const schema::Attribute& attribute = (*table)[a];
            if (!index::RowLayout::has(attribute))
                continue;
            index::AttributeData data{attribute.uid, revision, {}};
            for (std::uint32_t e = 0; e < attribute.record.length; ++e) {
                const index::RowLayout::Field& field = layout.fields()[layout.fieldOf(a) + e];
                schema::Column column(field.width, order.size());
                column.visit(
                    [&](auto codes) { gather(copy, layout.stride(), field.offset, order, codes); });
                data.elements.push_back(result.blocks.add(attribute, column));
            }
            result.attributes.push_back(std::move(data));
        }
        return result;
    };
    m_jobs.push_back({m_session.pool().run(std::move(encode)), content});
    m_storedRows += count;
    while (m_jobs.size() > m_session.pool().threads() * 4)
        storeOldest();
    if (m_onStored)
        m_onStored(m_storedRows);
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

std::vector<std::uint8_t> LeafWriter::readLeaf(const index::Node& leaf) {
    const std::size_t stride = m_layout.stride();
    std::vector<std::uint32_t> all(leaf.ownCount);
    std::iota(all.begin(), all.end(), 0u);
    std::vector<std::uint8_t> rows = readRows(m_session, leaf, *m_table, m_layout, all);
    const index::RowLayout::Field* primary = &m_layout.fields()[m_layout.fieldOf(0)];
    for (std::size_t i = 0; i < leaf.ownCount; ++i) {
        std::uint8_t* row = rows.data() + i * stride;
        std::uint64_t codes[index::maximumDimensions];
        for (unsigned d = 0; d < m_space.dimensions(); ++d)
            codes[d] = codeAt(row, primary[d]);
        const index::Key key = m_space.key(codes);
        if (key < leaf.first || key > leaf.last)
            throw Failure(ErrorCode::Damaged, "The file is damaged: node " +
                                                  std::to_string(leaf.id) +
                                                  " holds points that do not belong there.");
        std::memcpy(row, &key, sizeof key);
    }
    return index::sortRows(rows, stride);
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
