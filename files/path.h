// UTF-8 names as paths of the standard library, and back.
#pragma once

#include <filesystem>
#include <string>

namespace tarvo::files {

inline std::filesystem::path pathOf(const std::string& utf8) {
    return {reinterpret_cast<const char8_t*>(utf8.c_str())};
}

inline std::string nameOf(const std::filesystem::path& path) {
    const std::u8string name = path.u8string();
    return {reinterpret_cast<const char*>(name.data()), name.size()};
}

}  // namespace tarvo::files
