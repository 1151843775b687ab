// Little-endian numbers out of bytes, as all LAS records hold them.
#pragma once

#include <bit>
#include <cstdint>
#include <cstring>
#include <string>

namespace tarvo::exchange::las {

static_assert(std::endian::native == std::endian::little,
              "records are read in place, which needs a little-endian machine");

template <typename T>
T get(const std::uint8_t* bytes) {
    T value;
    std::memcpy(&value, bytes, sizeof value);
    return value;
}

// A text of at most size bytes that ends at the first zero.
inline std::string getText(const std::uint8_t* bytes, std::size_t size) {
    if (size == 0) {
        return {};  // an empty record has no address
    }
    const auto* const text = reinterpret_cast<const char*>(bytes);
    return {text, strnlen(text, size)};
}

}  // namespace tarvo::exchange::las
