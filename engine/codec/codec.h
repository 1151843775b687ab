// Column block <-> bytes: pure functions. A block holds the codes of one element for the points
// of one node. The encoder chooses the codec per block; the first byte of a block names it. The
// decoder is given the width and count that the node implies and writes exactly that much: a block
// that says otherwise fails with Failure(Damaged).
//
// The format of a block (persistent). Numbers are little-endian, n is the count of codes, w their
// width in bytes (1, 2, 4 or 8); neither is in the block.
//
//   offset 0   u8 codec, the numbers of Codec
//   offset 1   by codec, to the end of the block:
//
//   Raw            n codes of w bytes
//   BitPacked      ceil(n / 256) runs of 256 codes, the last of what is left.
//                  Directory, for each run:
//                    u8       bits b of an offset, 0 to 8 * w
//                    varint   base: zigzag of its 64-bit difference to the base of the run
//                             before (of the first: to 0)
//                  Then for each run ceil(codes * b / 8) bytes: the offsets code - base, b bits
//                  each, from the lowest bit of the first byte upwards; unused bits are 0.
//   Zstd           one zstd frame of the n codes of w bytes
//   Shuffled       one zstd frame of w planes of n bytes: the lowest bytes of all codes, the
//                  next higher bytes, ...
//   Delta          one zstd frame of n differences of w bytes: d[i] = code[i] - code[i-1] modulo
//                  2^(8w), with 0 before the first, as zigzag: (d << 1) ^ (d < 0 ? all ones : 0)
//   DeltaShuffled  one zstd frame of the planes of these differences
//
// A varint is LEB128; zigzag makes 0, -1, 1, -2, ... of 0, 1, 2, 3, ... A zstd frame carries its
// content size, which is n * w, and a content checksum; nothing follows it. Raw and BitPacked
// carry no checksum of their own: the reference to the block does.
#pragma once

#include "engine/base/bytes.h"
#include "engine/codec/block.h"
#include "engine/schema/column.h"

#include <cstdint>
#include <memory>

namespace tarvo::engine::codec {

enum class Codec : std::uint8_t {
    Raw = 0,            // the codes as they are
    BitPacked = 1,      // runs of 256: base and bit width, then the packed offsets
    Shuffled = 2,       // byte planes, zstd
    DeltaShuffled = 3,  // differences, zigzag, byte planes, zstd
    Zstd = 4,           // the codes as they are, zstd
    Delta = 5           // differences, zigzag, zstd
};

// How the caller wants a column to be stored.
struct Options {
    std::uint8_t compressionLevel = 100;  // of the file, 0 to 100; 0: Raw or BitPacked only
    std::uint8_t compressionOptions = 0;  // of the attribute: 0 default (the codec chooses),
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
    Block decode(Bytes block, unsigned width, std::size_t count, std::string_view what);

private:
    struct Scratch;
    std::unique_ptr<Scratch> m_scratch;
};

}  // namespace tarvo::engine::codec
