#include "view/blocks.h"

#include <algorithm>

namespace tarvo::view {

namespace {

constexpr std::uint8_t fadedAlpha = 40;

}  // namespace

PointBlock readBlock(const qrb::Pointcloud& database, NodeTree& tree, const Colouring& colouring,
                     const BlockLook& look, const ChosenNode& chosen,
                     const std::function<void()>& check) {
    PointBlock block;
    block.node = tree.nodes()[chosen.node].id;
    block.box = tree.box(chosen.node);
    block.origin = block.box.isEmpty() ? drawing::Vector{} : block.box.centre();
    const NodeReader reader(database, tree, colouring);
    const bool fades = !look.filter.empty() && look.unmatched == Unmatched::Faded;
    // Those that pass, to be found among all.
    std::unordered_set<std::uint64_t> passing;
    if (fades)
        reader.read(chosen.node, look.filter, [&](const PointBatch& batch) {
            check();
            passing.insert(batch.ids.begin(), batch.ids.end());
        });
    std::uint64_t seen = 0;
    reader.read(chosen.node, fades ? std::string() : look.filter, [&](const PointBatch& batch) {
        check();
        for (std::size_t i = 0; i < batch.places.size(); ++i) {
            if (seen++ % chosen.every != 0)
                continue;
            const drawing::Vector place = batch.places[i] - block.origin;
            block.places.push_back({static_cast<float>(place[0]), static_cast<float>(place[1]),
                                    static_cast<float>(place[2])});
            drawing::Colour colour = look.single ? *look.single : colouring.colour(batch.shades[i]);
            if (fades && !passing.contains(batch.ids[i]))
                colour.alpha = fadedAlpha;
            block.colours.push_back(colour);
            block.ids.push_back(batch.ids[i]);
        }
    });
    return block;
}

BlockCache::Block BlockCache::find(const ChosenNode& chosen) {
    const auto found = m_entries.find(chosen.node);
    if (found == m_entries.end() || found->second.every != chosen.every)
        return nullptr;
    found->second.used = ++m_clock;
    return found->second.block;
}

BlockCache::Block BlockCache::findAny(std::uint32_t node) {
    const auto found = m_entries.find(node);
    if (found == m_entries.end())
        return nullptr;
    found->second.used = ++m_clock;
    return found->second.block;
}

void BlockCache::add(const ChosenNode& chosen, Block block) {
    Entry& entry = m_entries[chosen.node];
    if (entry.block)
        m_bytes -= entry.block->bytes();
    m_bytes += block->bytes();
    entry = {std::move(block), chosen.every, ++m_clock};
}

void BlockCache::shrink(std::uint64_t bytes, const std::unordered_set<std::uint32_t>& kept) {
    if (m_bytes <= bytes)
        return;
    std::vector<std::pair<std::uint64_t, std::uint32_t>> oldest;
    for (const auto& [node, entry] : m_entries)
        if (!kept.contains(node))
            oldest.emplace_back(entry.used, node);
    std::sort(oldest.begin(), oldest.end());
    for (const auto& [used, node] : oldest) {
        if (m_bytes <= bytes)
            return;
        const auto found = m_entries.find(node);
        m_bytes -= found->second.block->bytes();
        m_entries.erase(found);
    }
}

void BlockCache::clear() {
    m_entries.clear();
    m_bytes = 0;
}

}  // namespace tarvo::view
