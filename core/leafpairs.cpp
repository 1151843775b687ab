#include "core/leafpairs.h"

#include "core/attributerules.h"
#include "core/valueformat.h"

#include <algorithm>
#include <bit>
#include <unordered_map>

namespace tarvo::core {

namespace {

using qrb::pointcloud::IndexNode;
using qrb::pointcloud::PointAttribute;

struct Leaf {
    std::uint32_t revision = 0;
    std::int64_t points = 0;
    bool operator==(const Leaf&) const = default;
};

template <typename Function>
void forEachLeaf(const IndexNode& node, const Function& function) {
    if (node.children.empty()) {
        if (node.id != 0 && node.pointCountNode > 0)
            function(node.id, Leaf{node.revision, node.pointCountNode});
        return;
    }
    for (const IndexNode& child : node.children)
        forEachLeaf(child, function);
}

IndexNode indexOf(const qrb::Pointcloud& database) {
    IndexNode root;
    database.stat().index(root);
    return root;
}

bool isConstant(const PointAttribute& attribute) {
    return attribute.storageClass == PointAttribute::CONSTANT;
}

// The value of each element that the whole file has. There are points.
std::vector<std::uint64_t> constantOf(const qrb::Pointcloud& database,
                                      const PointAttribute& attribute) {
    const auto stat = database.stat();
    std::vector<std::uint64_t> values(attribute.length);
    stat.minimum(stat.root().id, attribute.name, ValueFormat(attribute).type(), values.data(),
                 false);
    return values;
}

}  // namespace

LeafPairs pairLeaves(const qrb::Pointcloud& before, const qrb::Pointcloud& after) {
    std::unordered_map<std::uint32_t, Leaf> others;
    forEachLeaf(indexOf(after),
                [&](std::uint32_t id, const Leaf& leaf) { others.emplace(id, leaf); });
    LeafPairs pairs;
    forEachLeaf(indexOf(before), [&](std::uint32_t id, const Leaf& leaf) {
        const auto found = others.find(id);
        const auto points = static_cast<std::uint64_t>(leaf.points);
        if (found != others.end() && found->second == leaf) {
            pairs.common.push_back(id);
            pairs.pointsCommon += points;
            others.erase(found);
        } else {
            pairs.before.push_back(id);
            pairs.pointsBefore += points;
        }
    });
    for (const auto& [id, leaf] : others) {
        pairs.after.push_back(id);
        pairs.pointsAfter += static_cast<std::uint64_t>(leaf.points);
    }
    std::sort(pairs.after.begin(), pairs.after.end());
    return pairs;
}

bool sameInCommonLeaves(const qrb::Pointcloud& before, const qrb::Pointcloud& after,
                        const std::string& attribute) {
    const PointAttribute old = before.pointAttributes().get(attribute);
    const PointAttribute now = after.pointAttributes().get(attribute);
    // A leaf that says nothing about an attribute stands for the default value.
    if (!sameValues(old, now) ||
        std::bit_cast<std::uint64_t>(old.defaultValue) !=
            std::bit_cast<std::uint64_t>(now.defaultValue) ||
        isConstant(old) != isConstant(now))
        return false;
    return !isConstant(old) || constantOf(before, old) == constantOf(after, now);
}

}  // namespace tarvo::core
