// Points into PLY files.
#pragma once

#include "core/pointpages.h"
#include "exchange/import/importsteps.h"
#include "exchange/table/pointsource.h"

#include <cstdint>
#include <cstdio>
#include <vector>

namespace tarvo::exchange::ply {

// Coordinates are called x, y and z, colours red, green, blue and alpha, everything else as its
// element of an attribute. Whole numbers keep the type that they need, others are doubles. asText:
// as "ascii", else as "binary_little_endian". formats: of the columns, as text. file: open for
// writing, at its beginning. Returns the number of points. progress may be empty. Throws Failure,
// also for whole numbers beyond 2^53, for which the format has no type.
std::uint64_t writePoints(PointSource& source, const std::vector<core::PointColumn>& formats,
                          bool asText, std::FILE* file, const ImportProgress& progress);

}  // namespace tarvo::exchange::ply
