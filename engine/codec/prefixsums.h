// Codes out of the differences between neighbours that a block keeps.
#pragma once

#include "engine/schema/column.h"

namespace tarvo::engine::codec {

// codes: zigzag differences, the first from 0; each becomes the sum of all up to it, modulo 2^(8w).
// docs/file-format.md, "Blocks".
void sumDifferences(schema::Column& codes);

}  // namespace tarvo::engine::codec
