// What the user can ask for in the index filter besides filter expressions.
#pragma once

#include "qrb/queries.h"

#include <QString>
#include <cstdint>
#include <set>

namespace tarvo::window {

// Whether the text is one of the commands that find a node, letter case aside: "find largest leaf"
// and so on. The library answers them wherever it takes a filter.
bool isIndexCommand(const QString& text);

// Whether the text can only be a list of node ids.
bool isNodeList(const QString& text);

// The nodes without children: of an index narrowed by a filter those that match it.
std::set<std::uint32_t> leavesOf(const qrb::pointcloud::IndexNode& root);

}  // namespace tarvo::window
