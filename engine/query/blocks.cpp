#include "engine/query/blocks.h"

#include "engine/base/spares.h"
#include "engine/codec/codec.h"

namespace tarvo::engine::query {

namespace {

// Marks a reference into a writer; blob ids of a container are never so large.
constexpr std::uint64_t unstored = std::uint64_t(1) << 63;

}  // namespace

bool isUniform(const schema::ElementStatistics& s) {
    return !s.hasValid || (!s.hasInvalid && s.minimum == s.maximum);
}

Bytes& BlockWriter::blobFor(const schema::Attribute& attribute, std::uint64_t& mark) {
    if (attribute.is(schema::StorageClass::Dynamic)) {
        m_own.emplace_back();
        mark = unstored | m_own.size();
        return m_own.back();
    }
    mark = unstored;
    return m_shared;
}

BlobRef BlockWriter::addBlock(const schema::Attribute& attribute, const schema::Column& column) {
    static Spares<codec::Encoder> encoders;
    const Spares<codec::Encoder>::Loan encoder(encoders);
    std::uint64_t mark = 0;
    Bytes& blob = blobFor(attribute, mark);
    const std::size_t begin = blob.size();
    encoder->encode(column, {m_compressionLevel, attribute.record.compressionOptions}, blob);
    const ByteSpan block = ByteSpan(blob).subspan(begin);
    return {mark, begin, static_cast<std::uint32_t>(block.size()), checksum(block)};
}

BlobRef BlockWriter::addCopy(const schema::Attribute& attribute, ByteSpan block) {
    std::uint64_t mark = 0;
    Bytes& blob = blobFor(attribute, mark);
    const std::size_t begin = blob.size();
    blob.insert(blob.end(), block.begin(), block.end());
    return {mark, begin, static_cast<std::uint32_t>(block.size()), checksum(block)};
}

index::ElementData BlockWriter::add(const schema::Attribute& attribute,
                                    const schema::Column& column) {
    index::ElementData element;
    element.statistics = schema::statistics(column, attribute.grid);
    if (!isUniform(element.statistics))
        element.block = addBlock(attribute, column);
    return element;
}

void BlockWriter::store(session::Blobs& blobs, std::vector<index::AttributeData>& attributes) {
    const std::uint64_t shared = m_shared.empty() ? 0 : blobs.add(m_shared).blob;
    std::vector<std::uint64_t> own;
    for (const Bytes& blob : m_own)
        own.push_back(blobs.add(blob).blob);
    for (index::AttributeData& attribute : attributes)
        for (index::ElementData& element : attribute.elements)
            if (const std::uint64_t mark = element.block.blob; mark & unstored)
                element.block.blob = mark == unstored ? shared : own[(mark & ~unstored) - 1];
}

}  // namespace tarvo::engine::query
