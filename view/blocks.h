// Points of nodes as they are drawn, and those that are kept for the next picture.
#pragma once

#include "view/nodechoice.h"
#include "view/nodereader.h"

#include <array>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <unordered_map>
#include <unordered_set>
#include <vector>

namespace tarvo::view {

// Points of one node, ready to be drawn. Places are told from the middle of the node's box, so that
// they keep their digits as numbers of 32 bits however far from 0 they lie.
struct PointBlock {
    std::uint32_t node = 0;  // id in the index
    drawing::Vector origin{};
    drawing::Box box;
    std::vector<std::array<float, 3>> places;
    // Alpha is 255, less for what a filter fades.
    std::vector<drawing::Colour> colours;
    std::vector<std::uint64_t> ids;

    std::size_t bytes() const { return places.size() * (sizeof(places[0]) + 4 + 8); }
};

enum class Unmatched { Hidden, Faded };  // what becomes of points that do not pass a filter

// Which points of the nodes, and how they look.
struct BlockLook {
    std::string filter;  // empty: all points
    Unmatched unmatched = Unmatched::Hidden;
    std::optional<drawing::Colour> single;  // for all points, in place of the colouring's
};

// All must outlive the call. What check throws ends it; it is called every few thousand points.
// Throws qrb::Error.
PointBlock readBlock(const qrb::Pointcloud& database, NodeTree& tree, const Colouring& colouring,
                     const BlockLook& look, const ChosenNode& chosen,
                     const std::function<void()>& check);

// Blocks by the place of their node in the tree, thrown away least recently used.
class BlockCache {
public:
    using Block = std::shared_ptr<const PointBlock>;

    // A block of this part of the node's points; null where it is not there.
    Block find(const ChosenNode& chosen);
    // One of any part.
    Block findAny(std::uint32_t node);
    void add(const ChosenNode& chosen, Block block);
    // Throws away what was not looked for lately, until no more than so many bytes are left, but
    // none of those nodes.
    void shrink(std::uint64_t bytes, const std::unordered_set<std::uint32_t>& kept);
    void clear();
    std::uint64_t bytes() const { return m_bytes; }

private:
    struct Entry {
        Block block;
        std::uint64_t every = 1;
        std::uint64_t used = 0;
    };
    std::unordered_map<std::uint32_t, Entry> m_entries;
    std::uint64_t m_bytes = 0;
    std::uint64_t m_clock = 0;
};

}  // namespace tarvo::view
