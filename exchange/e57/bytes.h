// Little-endian numbers out of bytes.
#pragma once

#include <bit>
#include <cstdint>
#include <cstring>

namespace tarvo::exchange::e57 {

static_assert(std::endian::native == std::endian::little,
              "records are read in place, which needs a little-endian machine");

template <typename T>
T get(const std::uint8_t* bytes) {
    T value;
    std::memcpy(&value, bytes, sizeof value);
    return value;
}

}  // namespace tarvo::exchange::e57
