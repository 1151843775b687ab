#include "engine/base/bytes.h"

#define XXH_INLINE_ALL
#include <xxhash.h>

namespace tarvo::engine {

std::uint64_t checksum(ByteSpan bytes) {
    return XXH3_64bits(bytes.data(), bytes.size());
}

}  // namespace tarvo::engine
