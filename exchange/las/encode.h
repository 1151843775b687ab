// Columns into point records: what decode() of dimensions.h takes apart.
#pragma once

#include "exchange/las/dimensions.h"

#include <cstddef>
#include <cstdint>

namespace tarvo::exchange::las {

// Puts count packed values of a type into a field of records of recordLength bytes, which were 0.
// Returns how many were rounded; values that the field can't hold must not be among them.
std::uint64_t encode(const Field& field, DataType type, const void* values, std::size_t count,
                     std::uint8_t* records, std::size_t recordLength);

}  // namespace tarvo::exchange::las
