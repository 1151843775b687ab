#include "engine/base/idset.h"

#include <algorithm>

namespace tarvo::engine {

namespace {

constexpr std::size_t most = 4096;   // as many take as much memory as the bits do
constexpr std::size_t words = 1024;  // bits of a chunk, 64 a word

std::uint64_t bitOf(std::uint16_t low) {
    return std::uint64_t(1) << (low % 64);
}

}  // namespace

bool IdSet::insert(std::uint64_t id) {
    Chunk& chunk = m_chunks[id >> 16];
    const auto low = static_cast<std::uint16_t>(id);
    if (chunk.bits.empty()) {
        const auto at = std::lower_bound(chunk.few.begin(), chunk.few.end(), low);
        if (at != chunk.few.end() && *at == low)
            return false;
        if (chunk.few.size() < most) {
            chunk.few.insert(at, low);
            ++m_size;
            return true;
        }
        std::vector<std::uint64_t> bits(words);
        for (const std::uint16_t one : chunk.few)
            bits[one / 64] |= bitOf(one);
        chunk.bits = std::move(bits);
        chunk.few = {};
    }
    std::uint64_t& word = chunk.bits[low / 64];
    if (word & bitOf(low))
        return false;
    word |= bitOf(low);
    ++m_size;
    return true;
}

bool IdSet::erase(std::uint64_t id) noexcept {
    const auto found = m_chunks.find(id >> 16);
    if (found == m_chunks.end())
        return false;
    Chunk& chunk = found->second;
    const auto low = static_cast<std::uint16_t>(id);
    if (chunk.bits.empty()) {
        const auto at = std::lower_bound(chunk.few.begin(), chunk.few.end(), low);
        if (at == chunk.few.end() || *at != low)
            return false;
        chunk.few.erase(at);
    } else {
        std::uint64_t& word = chunk.bits[low / 64];
        if (!(word & bitOf(low)))
            return false;
        word &= ~bitOf(low);
    }
    --m_size;
    return true;
}

bool IdSet::contains(std::uint64_t id) const noexcept {
    const auto found = m_chunks.find(id >> 16);
    if (found == m_chunks.end())
        return false;
    const Chunk& chunk = found->second;
    const auto low = static_cast<std::uint16_t>(id);
    return chunk.bits.empty() ? std::binary_search(chunk.few.begin(), chunk.few.end(), low)
                              : (chunk.bits[low / 64] & bitOf(low)) != 0;
}

}  // namespace tarvo::engine
