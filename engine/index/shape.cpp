#include "engine/index/shape.h"

#include <algorithm>

namespace tarvo::engine::index {

namespace {

[[noreturn]] void throwNoTree(const Node& node) {
    throw Failure(ErrorCode::Damaged, "The file is damaged: its index is not a tree.",
                  "The nodes below node " + std::to_string(node.id) +
                      " are not what it says. Restore the file from a backup.");
}

}  // namespace

bool isRoot(const Node& node, const KeySpace& space) {
    return node.id == 1 && node.level == 0 && node.first == 0 && node.last == space.last(0, 0) &&
           !node.isLeaf() && node.totalCount > 0;
}

bool isNested(const Node& node, std::span<const Node> children) {
    for (std::size_t i = 0; i < children.size(); ++i) {
        const Node& child = children[i];
        if (child.level <= node.level || child.first < node.first || child.last > node.last ||
            child.last < child.first)
            return false;
        if (i == 0 || child.first > children[i - 1].last)
            continue;
        const Node& before = children[i - 1];
        if (child.first != before.first || child.last < before.last || !child.isLeaf() ||
            !before.isLeaf())
            return false;
    }
    return true;
}

bool isCell(const Node& above, const Node& node, const Cells& cells) {
    const KeySpace& space = cells.space;
    if (node.level <= above.level || node.level > cells.leafLevel)
        return false;
    if (!node.isLeaf())
        return node.level < cells.leafLevel && node.first == space.first(node.first, node.level) &&
               node.last == space.last(node.first, node.level);
    return node.level == above.level + 1u && node.first == space.first(node.first, node.level) &&
           node.last == space.last(node.last, node.level);
}

bool canShareCell(const Node& before, const Node& leaf, const Cells& cells) {
    return leaf.level == cells.leafLevel &&
           before.last == cells.space.last(before.first, leaf.level);
}

Key sumOfPoints(std::span<const Node> children) {
    Key sum = 0;
    for (const Node& child : children)
        sum += child.totalCount;
    return sum;
}

void requireTree(const Node& node, std::span<const Node> children) {
    const bool anyEmpty = std::any_of(children.begin(), children.end(),
                                      [](const Node& child) { return child.totalCount == 0; });
    if (anyEmpty || (children.empty() && !node.isLeaf()) ||
        sumOfPoints(children) != node.totalCount || !isNested(node, children))
        throwNoTree(node);
}

void requireCells(const Node& node, std::span<const Node> children, const Cells& cells) {
    requireTree(node, children);
    for (std::size_t i = 0; i < children.size(); ++i)
        if (!isCell(node, children[i], cells) ||
            (i > 0 && children[i].first == children[i - 1].first &&
             !canShareCell(children[i - 1], children[i], cells)))
            throwNoTree(node);
}

}  // namespace tarvo::engine::index
