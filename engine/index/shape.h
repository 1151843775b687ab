// The shape of an index: what its writers guarantee of the nodes below a node. Who walks an index
// relies on it to come to an end, who changes it to put points where they belong.
#pragma once

#include "engine/index/key.h"
#include "engine/index/node.h"

#include <span>

namespace tarvo::engine::index {

// The cells that the nodes of a file stand for.
struct Cells {
    KeySpace space;
    unsigned leafLevel;  // leaves there are not divided: several may share their cell
};

// Whether a node can be the root: an inner node over all keys.
bool isRoot(const Node& node, const KeySpace& space);

// Whether the nodes below lie within the node, at deeper levels and one behind the other. Only
// leaves may begin where the one before them does.
bool isNested(const Node& node, std::span<const Node> children);
// Whether a node below another one, within which it lies, is what it can be there: an inner node
// exactly one cell, a leaf one or more neighbouring ones of the level below the node above.
bool isCell(const Node& above, const Node& node, const Cells& cells);
// Whether leaves that begin at the same key, one behind the other, can't be divided.
bool canShareCell(const Node& before, const Node& leaf, const Cells& cells);

// Of the points below: the sum may be more than a node can tell.
Key sumOfPoints(std::span<const Node> children);

// Throws Failure(Damaged) unless the nodes below a node are nested, hold points, and together as
// many as the node tells. So a walk meets no page twice.
void requireTree(const Node& node, std::span<const Node> children);
// Also unless they are cells.
void requireCells(const Node& node, std::span<const Node> children, const Cells& cells);

}  // namespace tarvo::engine::index
