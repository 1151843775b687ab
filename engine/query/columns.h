// The columns of the points that a node stores: from the cache, else read and decoded. Any thread.
#pragma once

#include "engine/index/node.h"
#include "engine/index/rows.h"
#include "engine/session/session.h"

#include <cstdint>
#include <memory>
#include <span>
#include <vector>

namespace tarvo::engine::query {

// Never null; as long as the node's own count.
std::shared_ptr<const schema::Column> readColumn(session::Session& session, const index::Node& node,
                                                 const schema::Attribute& attribute,
                                                 std::uint32_t element);

// The same of an element that has a block, from the file, whatever the cache holds.
schema::Column readBlock(session::Session& session, const index::Node& node,
                         const schema::Attribute& attribute, std::uint32_t element);

// The points of a node at the given indexes as rows, their keys still zero.
std::vector<std::uint8_t> readRows(session::Session& session, const index::Node& node,
                                   const schema::AttributeTable& table,
                                   const index::RowLayout& layout,
                                   std::span<const std::uint32_t> points);

}  // namespace tarvo::engine::query
