// Unpacks the lists of names that the library hands out.
#pragma once

#include <cstdint>
#include <cstring>
#include <string>
#include <vector>

namespace tarvo::qrb {

// block holds count zero-terminated texts one after another; it is not read for count 0.
inline std::vector<std::string> unpackNames(std::uint32_t count, const char* block) {
    std::vector<std::string> names;
    if (block == nullptr) {
        return names;
    }
    names.reserve(count);
    for (std::uint32_t i = 0; i < count; ++i) {
        names.emplace_back(block);
        block += names.back().size() + 1;
    }
    return names;
}

}  // namespace tarvo::qrb
