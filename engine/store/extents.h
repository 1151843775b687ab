// Parts of a blob that are still wanted. A blob of which too much is not wanted any more becomes a
// sparse one: a row under the negative of its number that has only the wanted extents, with a
// list of them in front. References to the blob stay what they are.
#pragma once

#include "engine/base/bytes.h"

#include <cstdint>
#include <optional>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace tarvo::engine::store {

struct Extent {
    std::uint64_t offset = 0;  // within the blob as it was written
    std::uint64_t length = 0;
    bool operator==(const Extent&) const = default;
};

// Extents of one blob: ascending, with a gap between any two.
class Extents {
public:
    // Overlapping and adjacent extents become one. An empty extent is none; Failure(Damaged) where
    // it ends behind what a blob can hold.
    void add(Extent extent);
    const std::vector<Extent>& all() const { return m_extents; }
    std::uint64_t bytes() const;
    // Those that are not among the others'.
    std::uint64_t bytesBeside(const Extents& others) const;

private:
    std::vector<Extent> m_extents;
};

// By the blob's number; those that are not in it are not wanted.
using WantedExtents = std::unordered_map<std::uint64_t, Extents>;

// A sparse blob begins with a list: u32 count, count * (u32 offset, u32 length).
inline constexpr std::size_t extentCountBytes = 4;
inline constexpr std::size_t extentBytes = 8;
Bytes encodeExtents(const Extents& extents);
// Of the whole sparse blob.
std::uint64_t sparseBytes(const Extents& extents);
// list: without its count; of a sparse blob of so many bytes. Where in these the wanted bytes
// begin, or nothing where not all of them are there. Failure(Damaged), naming what, for a list that
// is not one of such a blob.
std::optional<std::uint64_t> placeOf(Extent wanted, ByteSpan list, std::uint64_t blobBytes,
                                     std::string_view what);

}  // namespace tarvo::engine::store
