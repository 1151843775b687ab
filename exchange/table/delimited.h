// Batches of points as delimited text.
#pragma once

#include "core/delimitedpoints.h"
#include "exchange/table/pointsource.h"

#include <cstdint>

namespace tarvo::exchange {

// Adds the batch of count points that the source read last. The writer must have been made for the
// columns of the source.
void addBatch(core::DelimitedWriter& writer, const PointSource& source, std::uint32_t count);

}  // namespace tarvo::exchange
