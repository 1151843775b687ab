// The blocks of one node on their way into the container: columns are encoded and copied on any
// thread, stored as few blobs on the session's. Until then a reference names the blob within the
// writer.
#pragma once

#include "engine/base/bytes.h"
#include "engine/index/node.h"
#include "engine/schema/attribute.h"
#include "engine/schema/column.h"
#include "engine/session/blobs.h"

#include <cstdint>
#include <string_view>
#include <vector>

namespace tarvo::engine::query {

class BlockWriter {
public:
    // compressionLevel: of the file, 0 to 100.
    explicit BlockWriter(std::uint8_t compressionLevel) : m_compressionLevel(compressionLevel) {}

    // The data of an element with the statistics of the column, with a block unless all codes are
    // the same.
    index::ElementData add(const schema::Attribute& attribute, const schema::Column& column);
    // Only the block, whatever the codes.
    BlobRef addBlock(const schema::Attribute& attribute, const schema::Column& column);
    // A copy of a stored block.
    BlobRef addCopy(const schema::Attribute& attribute, ByteSpan block);

    // Stores what was added and completes the references to it.
    void store(session::Blobs& blobs, std::vector<index::AttributeData>& attributes);

private:
    Bytes& blobFor(const schema::Attribute& attribute, std::uint64_t& mark);

    std::uint8_t m_compressionLevel;
    Bytes m_shared;
    std::vector<Bytes> m_own;  // of attributes whose blocks stand alone
};

// Whether the statistics tell that all codes are the same.
bool isUniform(const schema::ElementStatistics& statistics);

}  // namespace tarvo::engine::query
