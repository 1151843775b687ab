#include "engine/query/leafwriter.h"

#include "engine/codec/codec.h"
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
                       const index::RowLayout& layout, const index::KeySpace& space)
    : m_session(session),
      m_state(state),
      m_layout(layout),
      m_space(space),
      m_table(std::make_shared<const schema::AttributeTable>(state.attributes)) {}

LeafWriter::~LeafWriter() {
    for (Job& job : m_jobs)
        job.encoded.wait();
}

std::shared_ptr<index::LeafContent> LeafWriter::writeLeaf(const std::uint8_t* rows,
                                                          std::size_t count) {
    auto content = std::make_shared<index::LeafContent>();
    const std::uint8_t level = m_session.identity().settings.compressionLevel;
    const std::uint32_t revision = m_state.transaction.id;
    auto encode = [table = m_table, &layout = m_layout, level, revision,
                   copy = std::vector<std::uint8_t>(rows, rows + count * m_layout.stride())] {
        thread_local codec::Encoder encoder;
        const std::vector<std::uint32_t> order = orderById(copy, layout);
        Encoded result;
        for (std::size_t a = 0; a < table->size(); ++a) {
            const schema::Attribute& attribute = (*table)[a];
            index::AttributeData data;
            data.uid = attribute.uid;
            data.revision = revision;
            for (std::uint32_t e = 0; e < attribute.record.length; ++e) {
                const index::RowLayout::Field& field = layout.fields()[layout.fieldOf(a) + e];
                schema::Column column(field.width, order.size());
                column.visit(
                    [&](auto codes) { gather(copy, layout.stride(), field.offset, order, codes); });
                index::ElementData element;
                element.statistics = schema::statistics(column, attribute.grid);
                const schema::ElementStatistics& s = element.statistics;
                const bool constant = !s.hasValid || (!s.hasInvalid && s.minimum == s.maximum);
                if (!constant) {
                    const std::size_t begin = result.blob.size();
                    encoder.encode(column, {level, attribute.record.compressionOptions},
                                   result.blob);
                    const ByteSpan block = ByteSpan(result.blob).subspan(begin);
                    element.block = {0, begin, static_cast<std::uint32_t>(block.size()),
                                     checksum(block)};
                }
                data.elements.push_back(element);
            }
            result.attributes.push_back(std::move(data));
        }
        return result;
    };
    m_jobs.push_back({m_session.pool().run(std::move(encode)), content});
    while (m_jobs.size() > m_session.pool().threads() * 4)
        storeOldest();
    return content;
}

void LeafWriter::storeOldest() {
    Job job = std::move(m_jobs.front());
    m_jobs.pop_front();
    Encoded encoded = job.encoded.get();
    if (!encoded.blob.empty()) {
        const std::uint64_t blob = m_session.container().add(encoded.blob).blob;
        for (index::AttributeData& attribute : encoded.attributes)
            for (index::ElementData& element : attribute.elements)
                if (element.block.length > 0)
                    element.block.blob = blob;
    }
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
    std::vector<std::uint8_t> rows(leaf.ownCount * stride);
    for (std::size_t a = 0; a < m_table->size(); ++a)
        for (std::uint32_t e = 0; e < (*m_table)[a].record.length; ++e) {
            const index::RowLayout::Field& field = m_layout.fields()[m_layout.fieldOf(a) + e];
            const auto column = readColumn(m_session, leaf, (*m_table)[a], e);
            column->visit([&](auto codes) {
                std::uint8_t* out = rows.data() + field.offset;
                for (const auto code : codes) {
                    std::memcpy(out, &code, sizeof code);
                    out += stride;
                }
            });
        }
    const index::RowLayout::Field* primary = &m_layout.fields()[m_layout.fieldOf(0)];
    for (std::size_t i = 0; i < leaf.ownCount; ++i) {
        std::uint8_t* row = rows.data() + i * stride;
        std::uint64_t codes[index::maximumDimensions];
        for (unsigned d = 0; d < m_space.dimensions(); ++d)
            codes[d] = codeAt(row, primary[d]);
        const index::Key key = m_space.key(codes);
        std::memcpy(row, &key, sizeof key);
    }
    return index::sortRows(rows, stride);
}

index::Page LeafWriter::readPage(const BlobRef& reference) {
    return index::decodePage(m_session.container().read(reference, "a page of the index"));
}

BlobRef LeafWriter::writePage(const index::Page& page) {
    return m_session.container().add(index::encodePage(page));
}

std::uint32_t LeafWriter::newNodeId() {
    if (m_state.nextNodeId == 0)
        throw Failure(ErrorCode::State, "The index has no more node numbers.");
    return m_state.nextNodeId++;
}

}  // namespace tarvo::engine::query
