// A set of 64-bit numbers, small for the dense runs that ids mostly are: a bit each there.
#pragma once

#include <cstdint>
#include <unordered_map>
#include <vector>

namespace tarvo::engine {

class IdSet {
public:
    // Whether it was not in the set. Throws std::bad_alloc and then changes nothing.
    bool insert(std::uint64_t id);
    // Whether it was in the set.
    bool erase(std::uint64_t id) noexcept;
    bool contains(std::uint64_t id) const noexcept;
    std::uint64_t size() const noexcept { return m_size; }

private:
    // The numbers that have all but their last 16 bits in common.
    struct Chunk {
        std::vector<std::uint16_t> few;   // ascending; until they are too many
        std::vector<std::uint64_t> bits;  // then a bit for each that there could be
    };
    std::unordered_map<std::uint64_t, Chunk> m_chunks;
    std::uint64_t m_size = 0;
};

}  // namespace tarvo::engine
