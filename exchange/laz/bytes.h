// Little-endian numbers in the bytes of records and of what describes their coding.
#pragma once

#include <bit>
#include <cstdint>
#include <cstring>

namespace tarvo::exchange::laz {

static_assert(std::endian::native == std::endian::little,
              "records are read in place, which needs a little-endian machine");

template <typename T>
T load(const std::uint8_t* bytes) {
    T value;
    std::memcpy(&value, bytes, sizeof value);
    return value;
}

template <typename T>
void store(std::uint8_t* bytes, T value) {
    std::memcpy(bytes, &value, sizeof value);
}

// Sums and differences modulo 2^32, as all predictions are made.
inline std::int32_t plus(std::int32_t a, std::int32_t b) {
    return static_cast<std::int32_t>(static_cast<std::uint32_t>(a) + static_cast<std::uint32_t>(b));
}
inline std::int32_t minus(std::int32_t a, std::int32_t b) {
    return static_cast<std::int32_t>(static_cast<std::uint32_t>(a) - static_cast<std::uint32_t>(b));
}

// A difference that 32 bits hold.
inline bool fits32(std::int64_t value) {
    return value == static_cast<std::int32_t>(value);
}

}  // namespace tarvo::exchange::laz
