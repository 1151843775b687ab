// The ways in which queries rewrite a leaf. Any thread.
#pragma once

#include "engine/query/treeedit.h"

#include <cstdint>
#include <span>

namespace tarvo::engine::query {

// Puts the data of one element in place of what the leaf has.
void setElement(EditedLeaf& edited, const index::Node& leaf, const schema::Attribute& attribute,
                std::uint32_t element, index::ElementData data, std::uint32_t revision);

// Takes points (ascending indexes) out; all attributes are encoded anew.
void removePoints(session::Session& session, const session::State& state, const index::Node& leaf,
                  std::span<const std::uint32_t> points, EditedLeaf& edited);

}  // namespace tarvo::engine::query
