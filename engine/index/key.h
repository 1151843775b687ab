// Keys of the 2^n-tree: the grid coordinates of the primary attribute, bit-interleaved (Morton
// order), so that every cell of the tree is one contiguous range of keys. The first coordinate
// gives the highest bit of each level.
#pragma once

#include "engine/schema/attribute.h"

#include <cstdint>
#include <span>

namespace tarvo::engine::index {

__extension__ typedef unsigned __int128 Key;

// The most dimensions that an index has; more elements of the primary attribute do not take part.
inline constexpr unsigned maximumDimensions = 4;

// The shape of the tree over one primary attribute.
class KeySpace {
public:
    explicit KeySpace(const schema::Attribute& primary);

    unsigned dimensions() const { return m_dimensions; }
    // The depth at which a cell is one key. Grids of more bits than fit a key lose their lowest.
    unsigned depth() const { return m_depth; }
    // Children of a node.
    unsigned fanout() const { return 1u << m_dimensions; }
    // Grid steps of the edge of a cell at the depth, as a power of two.
    unsigned bits() const { return m_bits; }

    // codes: one per dimension.
    Key key(const std::uint64_t* codes) const;
    // Of many points: for each the lowest `levels` * dimensions() bits, at most 32, of the cell at
    // `level` that holds it. codes: of all points, one dimension after the other.
    void cells(std::span<const std::uint64_t> codes, unsigned level, unsigned levels,
               std::span<std::uint32_t> out) const;

    // The range of keys of the cell at `level` (0: everything) that holds the key.
    Key first(Key key, unsigned level) const { return key & ~mask(level); }
    Key last(Key key, unsigned level) const { return key | mask(level); }
    // Which child of its parent the cell at `level` (>= 1) that holds the key is.
    unsigned child(Key key, unsigned level) const {
        return static_cast<unsigned>(key >> ((m_depth - level) * m_dimensions)) & (fanout() - 1);
    }
    // The first key of child `number` of the cell at `level` that begins at `first`.
    Key childFirst(Key first, unsigned level, unsigned number) const {
        return first | (static_cast<Key>(number) << ((m_depth - level - 1) * m_dimensions));
    }

private:
    Key mask(unsigned level) const {
        const unsigned bits = (m_depth - level) * m_dimensions;
        return bits >= 128 ? ~Key(0) : (Key(1) << bits) - 1;
    }

    unsigned m_dimensions = 1;
    unsigned m_bits = 1;
    unsigned m_depth = 1;
};

}  // namespace tarvo::engine::index
