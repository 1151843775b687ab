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

// The name of a file beside another one. (Putting paths of the standard library together ends the
// program when there is no memory.)
inline std::string beside(const std::string& fileName, const std::string& name) {
#ifdef _WIN32
    const std::size_t end = fileName.find_last_of("/\\:");
#else
    const std::size_t end = fileName.rfind('/');
#endif
    return end == std::string::npos ? name : fileName.substr(0, end + 1) + name;
}

}  // namespace tarvo::files
