// Where the chunks of a file end and, if they are of variable size, how many points each has.
#pragma once

#include <cstdint>
#include <span>
#include <vector>

namespace tarvo::exchange::laz {

struct ChunkSize {
    std::uint32_t points = 0;  // 0 in tables of chunks of a fixed size
    std::uint32_t bytes = 0;
};

// What stands before the coded sizes: a version and the number of chunks.
inline constexpr std::size_t chunkTableHead = 8;
// The most bytes that the table of so many chunks takes.
std::uint64_t largestChunkTable(std::uint64_t chunks);

// Reads the sizes of count chunks behind the head. Throws Damage.
std::vector<ChunkSize> readChunkTable(std::span<const std::uint8_t> bytes, std::uint32_t count,
                                      bool isVariable);

// The whole table, head included, of chunks of a fixed number of points or of variable ones.
std::vector<std::uint8_t> writeChunkTable(std::span<const ChunkSize> chunks, bool isVariable);

}  // namespace tarvo::exchange::laz
