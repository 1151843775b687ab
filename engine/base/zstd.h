// What the results of the compression library mean.
#pragma once

#include "engine/base/error.h"

#include <zstd.h>
#include <zstd_errors.h>

#include <cstddef>
#include <new>

namespace tarvo::engine {

// Throws std::bad_alloc where memory ran out: other failures may be the data's.
inline void requireMemory(std::size_t result) {
    if (ZSTD_getErrorCode(result) == ZSTD_error_memory_allocation)
        throw std::bad_alloc();
}

// The same for compressing, which never fails otherwise.
inline void requireCompressed(std::size_t result) {
    requireMemory(result);
    if (ZSTD_isError(result))
        throw Failure(ErrorCode::Internal, "Compressing failed.", ZSTD_getErrorName(result));
}

}  // namespace tarvo::engine
