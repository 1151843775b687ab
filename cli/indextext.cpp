#include "cli/indextext.h"

#include "cli/json.h"
#include "cli/texttable.h"

#include <algorithm>
#include <vector>

namespace tarvo::cli {

using qrb::pointcloud::IndexNode;

namespace {

// The recursions below are as deep as the index.
void addNodes(TextTable& table, const IndexNode& node, std::uint32_t level, std::uint32_t depth) {
    table.add({std::string(2 * std::size_t(level), ' ') + std::to_string(node.id),
               std::to_string(node.pointCountTotal), std::to_string(node.pointCountNode),
               std::to_string(node.revision)});
    if (level < depth) {
        for (const IndexNode& child : node.children) {
            addNodes(table, child, level + 1, depth);
        }
    }
}

void addLeaves(Leaves& leaves, const IndexNode& node) {
    if (node.children.empty()) {
        leaves.push_back(node.id);
    }
    for (const IndexNode& child : node.children) {
        addLeaves(leaves, child);
    }
}

bool isLeaf(const IndexNode& node, const Leaves& leaves) {
    return std::binary_search(leaves.begin(), leaves.end(), node.id);
}

void putNode(JsonText& json, const IndexNode& node, std::uint32_t level, std::uint32_t depth,
             const Leaves& leaves) {
    json.beginObject();
    json.member("id", node.id);
    json.member("points", node.pointCountTotal);
    json.member("points_own", node.pointCountNode);
    json.member("revision", node.revision);
    json.member("leaf", isLeaf(node, leaves));
    if (level < depth && !node.children.empty()) {
        json.key("children");
        json.beginArray();
        for (const IndexNode& child : node.children) {
            putNode(json, child, level + 1, depth, leaves);
        }
        json.endArray();
    }
    json.endObject();
}

struct Level {
    std::uint64_t nodes = 0;
    std::uint64_t leaves = 0;
    std::int64_t leafPoints = 0;
    std::int64_t lodPoints = 0;
    std::uint32_t revision = 0;  // the newest
};

void addLevels(std::vector<Level>& levels, const IndexNode& node, std::size_t level,
               const Leaves& leaves) {
    if (levels.size() <= level) {
        levels.resize(level + 1);
    }
    const bool leaf = isLeaf(node, leaves);
    ++levels[level].nodes;
    levels[level].leaves += leaf ? 1 : 0;
    (leaf ? levels[level].leafPoints : levels[level].lodPoints) += node.pointCountNode;
    levels[level].revision = std::max(levels[level].revision, node.revision);
    for (const IndexNode& child : node.children) {
        addLevels(levels, child, level + 1, leaves);
    }
}

std::vector<Level> levelsOf(const IndexNode& root, const Leaves& leaves) {
    std::vector<Level> levels;
    if (root.id != 0) {
        addLevels(levels, root, 0, leaves);
    }
    return levels;
}

}  // namespace

std::string indexTree(const IndexNode& root, std::uint32_t depth) {
    TextTable table({{"Node"}, {"Points", true}, {"Own", true}, {"Revision", true}});
    if (root.id != 0) {
        addNodes(table, root, 0, depth);
    }
    return table.text();
}

Leaves leavesOf(const IndexNode& whole) {
    Leaves leaves;
    addLeaves(leaves, whole);
    std::sort(leaves.begin(), leaves.end());
    return leaves;
}

std::string indexLevels(const IndexNode& root, const Leaves& leaves) {
    TextTable table({{"Level", true},
                     {"Nodes", true},
                     {"Leaves", true},
                     {"Points in leaves", true},
                     {"Level-of-detail points", true},
                     {"Revision", true}});
    std::size_t number = 0;
    for (const Level& level : levelsOf(root, leaves)) {
        table.add({std::to_string(number++), std::to_string(level.nodes),
                   std::to_string(level.leaves), std::to_string(level.leafPoints),
                   std::to_string(level.lodPoints), std::to_string(level.revision)});
    }
    return table.text();
}

std::string indexTreeJson(const IndexNode& root, std::uint32_t depth, const Leaves& leaves) {
    JsonText json;
    if (root.id == 0) {
        json.raw("null");
    } else {
        putNode(json, root, 0, depth, leaves);
    }
    return json.text();
}

std::string indexLevelsJson(const IndexNode& root, const Leaves& leaves) {
    JsonText json;
    json.beginArray();
    std::uint32_t number = 0;
    for (const Level& level : levelsOf(root, leaves)) {
        json.beginObject();
        json.member("level", number++);
        json.member("nodes", level.nodes);
        json.member("leaves", level.leaves);
        json.member("leaf_points", level.leafPoints);
        json.member("lod_points", level.lodPoints);
        json.member("revision", level.revision);
        json.endObject();
    }
    json.endArray();
    return json.text();
}

}  // namespace tarvo::cli
