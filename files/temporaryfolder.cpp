#include "files/temporaryfolder.h"

#include "files/error.h"

#include <cerrno>
#include <cstring>
#include <filesystem>
#include <random>
#include <system_error>

#if !defined(_WIN32)
#include <stdlib.h>
#endif

namespace tarvo::files {

namespace fs = std::filesystem;

TemporaryFolder::TemporaryFolder() {
    std::error_code error;
    const fs::path parent = fs::temp_directory_path(error);
    if (error)
        throw FileError("There is no folder for temporary files.",
                        error.message() + ". Name one in the environment variable TMPDIR.");
#if defined(_WIN32)
    m_path = (parent / ("qrb-" + std::to_string(std::random_device()()))).string();
    const bool made = fs::create_directory(m_path, error);
    const std::string why = error.message();
#else
    // Other users can neither guess its name nor look into it.
    m_path = (parent / "qrb-XXXXXX").string();
    const bool made = mkdtemp(m_path.data()) != nullptr;
    const std::string why = std::strerror(errno);
#endif
    if (!made)
        throw FileError("Failed to make a temporary folder in \"" + parent.string() + "\".",
                        why + ". Name another one in the environment variable TMPDIR.");
}

TemporaryFolder::~TemporaryFolder() {
    std::error_code error;
    fs::remove_all(m_path, error);
}

std::string TemporaryFolder::file(const std::string& name) const {
    return (fs::path(m_path) / name).string();
}

}  // namespace tarvo::files
