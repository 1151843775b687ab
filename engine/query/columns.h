// The values of the points that a node stores: from the cache, else read and decoded. Any thread.
#pragma once

#include "engine/codec/block.h"
#include "engine/index/node.h"
#include "engine/index/rows.h"
#include "engine/session/session.h"

#include <cstdint>
#include <memory>
#include <span>
#include <vector>

namespace tarvo::engine::query {

// The codes of the points of a node; never null.
std::shared_ptr<const codec::Block> blockOf(session::Session& session, const index::Node& node,
                                            const schema::Attribute& attribute,
                                            std::uint32_t element);

// The same of an element that has a block, from the file, whatever the cache holds.
codec::Block readBlock(session::Session& session, const index::Node& node,
                       const schema::Attribute& attribute, std::uint32_t element);

// blockOf() as a column.
std::shared_ptr<const schema::Column> readColumn(session::Session& session, const index::Node& node,
                                                 const schema::Attribute& attribute,
                                                 std::uint32_t element);

// The points of a node at the given indexes as rows.
std::vector<std::uint8_t> readRows(session::Session& session, const index::Node& node,
                                   const schema::AttributeTable& table,
                                   const index::RowLayout& layout,
                                   std::span<const std::uint32_t> points);

}  // namespace tarvo::engine::query
