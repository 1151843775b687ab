// Little-endian numbers out of bytes, as all LAS records hold them.
#pragma once

#include <algorithm>
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

template <typename T>
void put(std::uint8_t* bytes, T value) {
    std::memcpy(bytes, &value, sizeof value);
}

// A text of at most size bytes that ends at the first zero.
inline std::string getText(const std::uint8_t* bytes, std::size_t size) {
    if (size == 0) {
        return {};  // an empty record has no address
    }
    const auto* const text = reinterpret_cast<const char*>(bytes);
    return {text, strnlen(text, size)};
}

// As much of a text as size bytes hold; they are zero behind it.
inline void putText(std::uint8_t* bytes, std::size_t size, const std::string& text) {
    std::memset(bytes, 0, size);
    std::memcpy(bytes, text.data(), std::min(size, text.size()));
}

}  // namespace tarvo::exchange::las
