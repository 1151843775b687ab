#include "engine/query/columns.h"

#include "engine/base/spares.h"
#include "engine/codec/codec.h"

#include <algorithm>
#include <cstring>

namespace tarvo::engine::query {

namespace {

schema::Column constantColumn(unsigned width, std::size_t count, std::uint64_t code) {
    schema::Column column(width, count);
    column.visit([code](auto codes) {
        std::fill(codes.begin(), codes.end(),
                  static_cast<typename decltype(codes)::value_type>(code));
    });
    return column;
}

}  // namespace

std::shared_ptr<const schema::Column> readColumn(session::Session& session, const index::Node& node,
                                                 const schema::Attribute& attribute,
                                                 std::uint32_t element) {
    const unsigned width = attribute.grid.width();
    const index::AttributeData* data = node.find(attribute.uid);
    if (!data || element >= data->elements.size() || !data->elements[element].block) {
        const schema::ElementStatistics statistics = index::statisticsOf(node, attribute, element);
        const std::uint64_t code =
            statistics.hasValid ? statistics.minimum : attribute.grid.invalidCode();
        return std::make_shared<const schema::Column>(constantColumn(width, node.ownCount, code));
    }
    const BlobRef& block = data->elements[element].block;
    if (auto cached = session.blobs().columns().get(block);
        cached && cached->width() == width && cached->size() == node.ownCount)
        return cached;
    auto column =
        std::make_shared<const schema::Column>(readBlock(session, node, attribute, element));
    session.blobs().columns().put(block, column, column->bytes());
    return column;
}

schema::Column readBlock(session::Session& session, const index::Node& node,
                         const schema::Attribute& attribute, std::uint32_t element) {
    const BlobRef& block = node.find(attribute.uid)->elements[element].block;
    const std::string what =
        "a block of \"" + attribute.record.name + "\" in node " + std::to_string(node.id);
    const Bytes bytes = session.blobs().read(block, what);
    static Spares<codec::Decoder> decoders;
    const Spares<codec::Decoder>::Loan decoder(decoders);
    return decoder->decode(bytes, attribute.grid.width(), node.ownCount, what);
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
            const auto column = readColumn(session, node, table[a], e);
            column->visit([&](auto codes) {
                std::uint8_t* out = rows.data() + field.offset;
                for (const std::uint32_t point : points) {
                    const auto code = codes[point];
                    std::memcpy(out, &code, sizeof code);
                    out += layout.stride();
                }
            });
        }
    }
    return rows;
}

}  // namespace tarvo::engine::query
