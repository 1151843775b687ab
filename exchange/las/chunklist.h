// Where the chunks of a compressed file lie.
#pragma once

#include "exchange/las/header.h"
#include "exchange/laz/layout.h"

#include <cstdint>
#include <vector>

namespace tarvo::exchange::las {

struct Chunk {
    std::uint64_t begin = 0;  // byte of the file
    std::uint64_t size = 0;
    std::uint32_t points = 0;
};

// All points of a file in order.
struct ChunkList {
    // Throws Failure where the file contradicts itself: afterwards every listed chunk lies within
    // the file, and they have as many points as the header tells.
    static ChunkList read(RawFile& file, const Header& header, const laz::Description& description);

    std::vector<Chunk> chunks;
    // Where nobody tells the sizes (there is one stream of all points, or the writer of pointwise
    // chunks was interrupted) nothing is listed: chunks of so many points each, the last one of
    // fewer, follow each other from `begin`, and end before `end`.
    bool isListed = true;
    std::uint64_t chunkPoints = 0;
    std::uint64_t begin = 0;
    std::uint64_t end = 0;
};

}  // namespace tarvo::exchange::las
