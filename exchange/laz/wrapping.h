// Whole numbers of 32 bits that wrap around.
#pragma once

#include <cstdint>

namespace tarvo::exchange::laz {

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
