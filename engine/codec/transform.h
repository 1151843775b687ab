// The reversible rearrangements that make codes easier to compress, and a cheap estimate of which
// one does.
#pragma once

#include "engine/schema/column.h"

#include <cstdint>
#include <span>

namespace tarvo::engine::codec {

// Writes width * size bytes: the codes or, with delta, the zigzag-coded differences to the code
// before (the first to 0), modulo the width; as byte planes (the lowest bytes of all codes first)
// with shuffle. out must have exactly that size; work is memory that is reused.
void applyTransform(const schema::Column& column, bool delta, bool shuffle,
                    std::span<std::uint8_t> out, schema::Column& work);

// The inverse: in has exactly the bytes of the column.
void revertTransform(std::span<const std::uint8_t> in, bool delta, bool shuffle,
                     schema::Column& column);

// The entropy of the differences (of the bytes in each plane, in a sample) as a part of that of
// the codes themselves.
double deltaRatio(const schema::Column& column);

}  // namespace tarvo::engine::codec
