// A folder for the files of one test; gone with the object.
#pragma once

#include <unistd.h>

#include <atomic>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

namespace tarvo::cli::tests {

class Folder {
public:
    Folder() {
        static std::atomic<int> number{0};
        m_path = std::filesystem::temp_directory_path() /
                 ("qrbtool_test-" + std::to_string(getpid()) + "-" + std::to_string(++number));
        std::filesystem::create_directories(m_path);
    }
    ~Folder() {
        std::error_code error;
        std::filesystem::remove_all(m_path, error);
    }
    Folder(const Folder&) = delete;
    Folder& operator=(const Folder&) = delete;

    std::string file(const std::string& name) const { return (m_path / name).string(); }
    std::string write(const std::string& name, const std::vector<std::uint8_t>& bytes) const {
        return write(name, std::string(bytes.begin(), bytes.end()));
    }
    std::string write(const std::string& name, const std::string& text) const {
        std::ofstream stream(file(name), std::ios::binary);
        stream << text;
        return file(name);
    }
    std::size_t count() const {
        const std::filesystem::directory_iterator begin(m_path);
        return static_cast<std::size_t>(std::distance(begin, {}));
    }

private:
    std::filesystem::path m_path;
};

}  // namespace tarvo::cli::tests
