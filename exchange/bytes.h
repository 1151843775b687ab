// Little-endian numbers in the bytes of files, as all formats that are no texts hold them.
#pragma once

#include <bit>
#include <cstdint>
#include <cstring>

namespace tarvo::exchange {

static_assert(std::endian::native == std::endian::little,
              "records are read in place, which needs a little-endian machine");

template <typename T>
T get(const std::uint8_t* bytes) {
    T value;
    std::memcpy(&value, bytes, sizeof value);
    return value;
}

template <typename T>
void put(std::uint8_t* bytes, T value) {
    std::memcpy(bytes, &value, sizeof value);
}

}  // namespace tarvo::exchange
