// Points into PLY files.
#pragma once

#include "core/pointpages.h"
#include "exchange/import/importsteps.h"
#include "exchange/table/pointsource.h"

#include <cstdint>
#include <cstdio>
#include <string>
#include <vector>

namespace tarvo::exchange::ply {

struct Written {
    std::uint64_t points = 0;
    std::vector<std::string> notes;  // lines for the user
};

// Coordinates are called x, y and z, colours red, green, blue and alpha, everything else as its
// element of an attribute; one whose name would mean what another one is gets "ply." before it, and
// a note. Whole numbers keep the type that they need, others are doubles. asText:
// as "ascii", else as "binary_little_endian". formats: of the columns, as text. file: open for
// writing, at its beginning. progress may be empty. Throws Failure,
// also for whole numbers beyond 2^53, for which the format has no type.
Written writePoints(PointSource& source, const std::vector<core::PointColumn>& formats, bool asText,
                    std::FILE* file, const ImportProgress& progress);

}  // namespace tarvo::exchange::ply
