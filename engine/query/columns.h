// The columns of the points that a node stores: from the cache, else read and decoded. Any thread.
#pragma once

#include "engine/index/node.h"
#include "engine/session/session.h"

#include <cstdint>
#include <memory>

namespace tarvo::engine::query {

// Never null; as long as the node's own count.
std::shared_ptr<const schema::Column> readColumn(session::Session& session, const index::Node& node,
                                                 const schema::Attribute& attribute,
                                                 std::uint32_t element);

}  // namespace tarvo::engine::query
