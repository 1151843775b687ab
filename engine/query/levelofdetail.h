// Level-of-detail points: what an inner node shows in place of the points below. They are made
// from the points stored in the node's children, level by level from the leaves up.
//
//   thinout  size per cent of the points below, those of each child by the points below that,
//   evenly
//            along the order of the index
//   combine  one point per cell of a grid of 2^size cells along each edge of the smallest cell of
//            the index that holds them, each attribute by its method (schema/lodmethod.h),
//            each point with the weight of the points that it stands for
//
// A node never has more of them than a leaf may have points: thinout takes fewer, combine a coarser
// grid.
#pragma once

#include "engine/session/session.h"

namespace tarvo::engine::query {

// Brings those of the pending state up to date: in the nodes that the transaction changed, or in
// all when mode or size were set. Changes nothing on failure.
void updateLevelOfDetail(session::Session& session, const session::Progress& progress);

}  // namespace tarvo::engine::query
