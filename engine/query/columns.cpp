#include "engine/query/columns.h"

#include "engine/base/spares.h"
#include "engine/codec/codec.h"

#include <cstring>

namespace tarvo::engine::query {

std::shared_ptr<const codec::Block> blockOf(session::Session& session, const index::Node& node,
                                            const schema::Attribute& attribute,
                                            std::uint32_t element) {
    const unsigned width = attribute.grid.width();
    const index::AttributeData* data = node.find(attribute.uid);
    if (!data || element >= data->elements.size() || !data->elements[element].block) {
        const schema::ElementStatistics statistics = index::statisticsOf(node, attribute, element);
        return std::make_shared<const codec::Block>(
            width, node.ownCount,
            statistics.hasValid ? statistics.minimum : attribute.grid.invalidCode());
    }
    const BlobRef& reference = data->elements[element].block;
    session::BlockCache& cache = session.blobs().blocks();
    if (auto cached = cache.get(reference);
        cached && cached->width() == width && cached->size() == node.ownCount)
        return cached;
    auto block = std::make_shared<const codec::Block>(readBlock(session, node, attribute, element));
    cache.put(reference, block, block->bytes());
    return block;
}

codec::Block readBlock(session::Session& session, const index::Node& node,
                       const schema::Attribute& attribute, std::uint32_t element) {
    const BlobRef& block = node.find(attribute.uid)->elements[element].block;
    const std::string what =
        "a block of \"" + attribute.record.name + "\" in node " + std::to_string(node.id);
    Bytes bytes = session.blobs().read(block, what);
    static Spares<codec::Decoder> decoders;
    const Spares<codec::Decoder>::Loan decoder(decoders);
    return decoder->decode(std::move(bytes), attribute.grid.width(), node.ownCount, what);
}

std::shared_ptr<const schema::Column> readColumn(session::Session& session, const index::Node& node,
                                                 const schema::Attribute& attribute,
                                                 std::uint32_t element) {
    return std::make_shared<const schema::Column>(
        blockOf(session, node, attribute, element)->column());
}

std::vector<std::uint8_t> readRows(session::Session& session, const index::Node& node,
                                   const schema::AttributeTable& table,
                                   const index::RowLayout& layout,
                                   std::span<const std::uint32_t> points) {
    std::vector<std::uint8_t> rows(points.size() * layout.stride());
    for (std::size_t a = 0; a < table.size(); ++a) {
        if (!index::RowLayout::has(table[a]))
            continue;
        for (std::uint32_t e = 0; e < table[a].record.length; ++e) {
            const index::RowLayout::Field& field = layout.fields()[layout.fieldOf(a) + e];
            const auto block = blockOf(session, node, table[a], e);
            block->visit([&]<typename T>(T) {
                std::vector<T> codes(points.size());
                block->gather(points, codes.data());
                std::uint8_t* out = rows.data() + field.offset;
                for (const T code : codes) {
                    std::memcpy(out, &code, sizeof code);
                    out += layout.stride();
                }
            });
        }
    }
    return rows;
}

}  // namespace tarvo::engine::query
