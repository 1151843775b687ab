#include "tests/reliability/workfolder.h"

#include <unistd.h>

#include <filesystem>
#include <system_error>

namespace tarvo::trial {

namespace fs = std::filesystem;

WorkFolder::WorkFolder(const std::string& name) {
    std::error_code error;
    const fs::path memory = "/dev/shm";
    const bool roomy = fs::space(memory, error).available > 1'000'000'000u && !error;
    const fs::path parent = roomy ? memory : fs::temp_directory_path();
    m_path = (parent / ("qrb-" + name + "-" + std::to_string(::getpid()))).string();
    fs::create_directories(m_path);
}

WorkFolder::~WorkFolder() {
    std::error_code error;
    fs::remove_all(m_path, error);
}

std::string WorkFolder::folder(const std::string& name) const {
    const std::string path = m_path + "/" + name;
    fs::create_directories(path);
    return path;
}

void clear(const std::string& folder) {
    for (const auto& entry : fs::directory_iterator(folder))
        fs::remove_all(entry.path());
}

void copyFolder(const std::string& from, const std::string& to) {
    clear(to);
    fs::copy(from, to);
}

}  // namespace tarvo::trial
