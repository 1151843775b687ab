// A database in parts: what a mutator may change without a checksum noticing. Put together again
// every reference has the blob, length and checksum of the part that it names.
//
// In bytes: for each part u8 kind, u32 length, the content. Blobs get the numbers 1, 2, ... in the
// order of their parts; references lead to earlier ones. In texts a reference is "@N;" for the
// members "blob", "length" and "checksum" of the N-th part (from 0); in pages 01 00 00, N as u32
// and "REF!".
#pragma once

#include "engine/base/bytes.h"

#include <string>
#include <vector>

namespace tarvo::fuzz {

using engine::Bytes;
using engine::ByteSpan;

enum class Kind : std::uint8_t {
    Blob,      // as it is
    Text,      // a blob with references
    Page,      // unpacked, with references; a blob with its zstd frame
    Block,     // codec, then what is in the zstd frame where the codec has one
    Bomb,      // u32 count, u8 byte: a zstd frame of count times 128 KiB of the byte
    Root,      // a snapshot's text with references
    Identity,  // the text of the identity
    History,   // in place of the right text
    Count
};

struct Part {
    Kind kind = Kind::Blob;
    Bytes content;
};
using Parts = std::vector<Part>;

// What is cut off or of no kind becomes something that is possible.
Parts partsFromBytes(ByteSpan bytes);
Bytes bytesFromParts(const Parts& parts);

// Writes the database file.
void assemble(const Parts& parts, const std::string& fileName);
// The parts of a good database file.
Parts takeApart(const std::string& fileName);

}  // namespace tarvo::fuzz
