// Column block <-> bytes: pure functions. A block holds the codes of one element for the points
// of one node. The encoder chooses the codec per block; the first byte of a block names it. The
// decoder is given the width and count that the node implies and writes exactly that much: a block
// that says otherwise fails with Failure(Damaged).
#pragma once

#include "engine/base/bytes.h"
#include "engine/schema/column.h"

#include <cstdint>
#include <memory>

namespace tarvo::engine::codec {

enum class Codec : std::uint8_t {
    Raw = 0,           // the codes as they are
    BitPacked = 1,     // runs of 256: base and bit width, then the packed offsets
    Shuffled = 2,      // byte planes, zstd
    DeltaShuffled = 3, // differences, zigzag, byte planes, zstd
    Zstd = 4,          // the codes as they are, zstd
    Delta = 5          // differences, zigzag, zstd
};

// How the caller wants a column to be stored.
struct Options {
    std::uint8_t compressionLevel = 100;   // of the file, 0 to 100; 0: Raw or BitPacked only
    std::uint8_t compressionOptions = 0;   // of the attribute: 0 default (the codec chooses),
                                           // 1 delta, 2 shuffle, 3 delta and shuffle
};

// Working memory that is reused from block to block; one per thread.
class Encoder {
public:
    Encoder();
    ~Encoder();
    Encoder(const Encoder&) = delete;
    Encoder& operator=(const Encoder&) = delete;

    // Appends the block of the column to out.
    void encode(const schema::Column& column, const Options& options, Bytes& out);

private:
    struct Scratch;
    std::unique_ptr<Scratch> m_scratch;
};

class Decoder {
public:
    Decoder();
    ~Decoder();
    Decoder(const Decoder&) = delete;
    Decoder& operator=(const Decoder&) = delete;

    // width and count as the node says; what names the block in errors.
    schema::Column decode(ByteSpan block, unsigned width, std::size_t count, std::string_view what);

private:
    struct Scratch;
    std::unique_ptr<Scratch> m_scratch;
};

}  // namespace tarvo::engine::codec
