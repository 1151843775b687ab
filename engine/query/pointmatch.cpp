#include "engine/query/pointmatch.h"

#include <algorithm>

namespace tarvo::engine::query {

std::vector<PointMatch> matchIds(const schema::Column& idsOfNode,
                                 std::span<const std::uint64_t> ids) {
    std::vector<PointMatch> matches;
    auto from = ids.begin();
    std::uint64_t last = 0;
    for (std::uint32_t point = 0; point < idsOfNode.size(); ++point) {
        const std::uint64_t id = idsOfNode[point];
        if (id < last)  // leaves are in the order of ids; should one not be, begin anew
            from = ids.begin();
        last = id;
        from = std::lower_bound(from, ids.end(), id);
        if (from != ids.end() && *from == id)
            matches.push_back({point, static_cast<std::size_t>(from - ids.begin())});
    }
    return matches;
}

bool mayHold(const index::Node& node, const schema::Attribute& pointId,
             std::span<const std::uint64_t> ids) {
    const schema::ElementStatistics range = index::statisticsOf(node, pointId, 0);
    const auto first = std::lower_bound(ids.begin(), ids.end(), range.minimum);
    return first != ids.end() && *first <= range.maximum;
}

}  // namespace tarvo::engine::query
