// The codes of a bit-packed run from its bytes, by the widest instructions that the machine has.
#pragma once

#include <cstddef>
#include <cstdint>

namespace tarvo::engine::codec {

inline constexpr std::size_t runLength = 256;
// Unpacking reads up to so many bytes behind the packed ones.
inline constexpr std::size_t readAhead = 16;

// Writes the runLength codes of a run: base and an offset of so many bits each, 0 to those of T,
// from the lowest bit of the first byte upwards.
template <typename T>
void unpackRun(const std::uint8_t* in, T base, unsigned bits, T* out);

extern template void unpackRun(const std::uint8_t*, std::uint8_t, unsigned, std::uint8_t*);
extern template void unpackRun(const std::uint8_t*, std::uint16_t, unsigned, std::uint16_t*);
extern template void unpackRun(const std::uint8_t*, std::uint32_t, unsigned, std::uint32_t*);
extern template void unpackRun(const std::uint8_t*, std::uint64_t, unsigned, std::uint64_t*);

}  // namespace tarvo::engine::codec
