// Texts of a fixed size in the bytes of records.
#pragma once

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <string>

namespace tarvo::exchange::las {

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
