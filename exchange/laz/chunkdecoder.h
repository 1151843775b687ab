// Points out of one chunk, all at once or some at a time.
#pragma once

#include "exchange/laz/decoder.h"
#include "exchange/laz/layout.h"

#include <cstdint>
#include <memory>
#include <span>

namespace tarvo::exchange::laz {

// It keeps its models' memory from chunk to chunk. Threads have one each.
class ChunkDecoder {
public:
    explicit ChunkDecoder(const Layout& layout);
    ~ChunkDecoder();

    // Decodes a whole chunk into count * recordLength bytes. Throws Damage.
    void decode(std::span<const std::uint8_t> chunk, std::uint32_t count, std::uint8_t* records);

    // The same bit by bit. Of pointwise chunks source, if any, has the bytes behind those given;
    // what is given must stay until finish. Throws Damage, as all of them.
    void begin(std::span<const std::uint8_t> chunk, std::uint32_t count,
               ByteSource* source = nullptr);
    // The next points; never more than there are.
    void next(std::uint32_t count, std::uint8_t* records);
    // The bytes that a pointwise chunk took.
    std::uint64_t position() const;
    // Checks, behind the last point, that nothing is left of a chunk that begin was given whole.
    void finish();

private:
    struct Records;
    void beginLayers(std::span<const std::uint8_t> bytes, std::uint32_t count);

    Layout m_layout;
    std::unique_ptr<Records> m_records;
    std::vector<std::uint8_t> m_first;
    bool m_isFirst = true;
    std::uint64_t m_size = 0;
};

// The length of a layered chunk by its first bytes, of which headSize are needed, and its points.
struct LayeredChunk {
    static std::size_t headSize(const Layout& layout);
    static LayeredChunk read(const Layout& layout, const std::uint8_t* head);

    std::uint64_t size = 0;
    std::uint32_t count = 0;
};

}  // namespace tarvo::exchange::laz
