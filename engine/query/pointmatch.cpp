#include "engine/query/pointmatch.h"

#include <algorithm>

namespace tarvo::engine::query {

namespace {

template <typename T>
void matchRuns(const codec::Block& idsOfNode, std::span<const std::uint64_t> ids,
               std::vector<PointMatch>& matches) {
    T room[codec::runLength];
    for (std::size_t begin = 0; begin < idsOfNode.size(); begin += codec::runLength) {
        const std::size_t run = begin / codec::runLength;
        const codec::Block::Bounds bounds = idsOfNode.bounds(run);
        const auto first = std::lower_bound(ids.begin(), ids.end(), bounds.low);
        const auto end = std::upper_bound(first, ids.end(), bounds.high);
        if (first == end)
            continue;
        const T* const codes = idsOfNode.run(run, room);
        const std::size_t count = std::min(codec::runLength, idsOfNode.size() - begin);
        auto from = first;
        for (std::size_t i = 0; i < count; ++i) {
            // Leaves are in the order of ids; should one not be, begin anew.
            if (i > 0 && codes[i] < codes[i - 1])
                from = first;
            while (from != end && *from < codes[i])
                ++from;
            if (from != end && *from == codes[i])
                matches.push_back({static_cast<std::uint32_t>(begin + i),
                                   static_cast<std::size_t>(from - ids.begin())});
        }
    }
}

}  // namespace

std::vector<PointMatch> matchIds(const codec::Block& idsOfNode,
                                 std::span<const std::uint64_t> ids) {
    std::vector<PointMatch> matches;
    idsOfNode.visit([&]<typename T>(T) { matchRuns<T>(idsOfNode, ids, matches); });
    return matches;
}

bool mayHold(const index::Node& node, const schema::Attribute& pointId,
             std::span<const std::uint64_t> ids) {
    const schema::ElementStatistics range = index::statisticsOf(node, pointId, 0);
    const auto first = std::lower_bound(ids.begin(), ids.end(), range.minimum);
    return first != ids.end() && *first <= range.maximum;
}

}  // namespace tarvo::engine::query
