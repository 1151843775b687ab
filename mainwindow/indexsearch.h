// Searches through the point index, and what the user can ask for in the index filter.
#pragma once

#include "qrb/queries.h"

#include <QString>
#include <cstdint>
#include <optional>
#include <set>

enum class IndexSearch { LARGEST_LEAF, LARGEST_NODE, FULLEST_LEAF, FULLEST_NODE };

// The search that a filter text commands, letter case aside: "find largest leaf" and so on.
std::optional<IndexSearch> indexSearchCommand(const QString& text);

// The node found, 0 where the index has none of the kind. Nodes are inner nodes. Edge lengths halve
// from level to level, so the largest is the one nearest to the root; the fullest holds most points
// itself. Of equals the one with more points counts, then the first.
std::uint32_t findIndexNode(const tarvo::qrb::pointcloud::IndexNode& root, IndexSearch search);

// Whether the text can only be a list of node ids.
bool isNodeList(const QString& text);

// The nodes without children: of an index narrowed by a filter those that match it.
std::set<std::uint32_t> leavesOf(const tarvo::qrb::pointcloud::IndexNode& root);
