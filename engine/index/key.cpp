#include "engine/index/key.h"

#include <algorithm>
#include <bit>

namespace tarvo::engine::index {

namespace {

// Spreads the low 32 bits so that two zero bits follow each.
std::uint64_t spreadBy3(std::uint64_t x) {
    x &= 0x1fffff;
    x = (x | x << 32) & 0x1f00000000ffff;
    x = (x | x << 16) & 0x1f0000ff0000ff;
    x = (x | x << 8) & 0x100f00f00f00f00f;
    x = (x | x << 4) & 0x10c30c30c30c30c3;
    x = (x | x << 2) & 0x1249249249249249;
    return x;
}

// The low 10 bits.
std::uint32_t spread10By3(std::uint32_t x) {
    x &= 0x3ff;
    x = (x | x << 16) & 0xff0000ff;
    x = (x | x << 8) & 0x0300f00f;
    x = (x | x << 4) & 0x030c30c3;
    x = (x | x << 2) & 0x09249249;
    return x;
}

// The low 16 bits, so that a zero bit follows each.
std::uint32_t spreadBy2(std::uint32_t x) {
    x &= 0xffff;
    x = (x | x << 8) & 0x00ff00ff;
    x = (x | x << 4) & 0x0f0f0f0f;
    x = (x | x << 2) & 0x33333333;
    x = (x | x << 1) & 0x55555555;
    return x;
}

std::uint32_t spreadBy4(std::uint32_t x) {
    return spreadBy2(spreadBy2(x & 0xff));
}

}  // namespace

KeySpace::KeySpace(const schema::Attribute& primary)
    : m_dimensions(std::clamp(primary.record.length, 1u, maximumDimensions)) {
    // The off-grid invalid code takes part: a point without a position has a place too.
    const std::uint64_t largest =
        primary.grid.invalidIsOffGrid() ? primary.grid.invalidCode() : primary.grid.maximumCode();
    m_bits = std::max(1, static_cast<int>(std::bit_width(largest)));
    m_depth = std::min(m_bits, 128 / m_dimensions);
}

Key KeySpace::key(const std::uint64_t* codes) const {
    const unsigned shift = m_bits - m_depth;
    if (m_dimensions == 1)
        return codes[0] >> shift;
    if (m_dimensions == 3) {
        Key result = 0;
        for (unsigned part = 0; part < m_depth; part += 21) {
            const std::uint64_t bits = spreadBy3(codes[0] >> shift >> part) << 2 |
                                       spreadBy3(codes[1] >> shift >> part) << 1 |
                                       spreadBy3(codes[2] >> shift >> part);
            result |= static_cast<Key>(bits) << (part * 3);
        }
        return result;
    }
    Key result = 0;
    for (unsigned bit = m_depth; bit-- > 0;)
        for (unsigned d = 0; d < m_dimensions; ++d)
            result = result << 1 | (codes[d] >> shift >> bit & 1);
    return result;
}

void KeySpace::cells(std::span<const std::uint64_t> codes, unsigned level, unsigned levels,
                     std::span<std::uint32_t> out) const {
    std::fill(out.begin(), out.end(), 0);
    if (level == 0)
        return;
    const unsigned shift = m_bits - level;
    const std::uint32_t mask = levels == 32 ? ~0u : (1u << levels) - 1;
    const std::size_t count = out.size();
    for (unsigned d = 0; d < m_dimensions; ++d) {
        const auto add = [&](auto spread) {
            const std::uint64_t* code = codes.data() + d * count;
            for (std::size_t i = 0; i < count; ++i)
                out[i] = out[i] << 1 | spread(static_cast<std::uint32_t>(code[i] >> shift) & mask);
        };
        // A level more would not fit: the highest bits of what is spread are zero.
        if (m_dimensions == 1)
            add([](std::uint32_t part) { return part; });
        else if (m_dimensions == 2)
            add(spreadBy2);
        else if (m_dimensions == 3)
            add(spread10By3);
        else
            add(spreadBy4);
    }
}

}  // namespace tarvo::engine::index
