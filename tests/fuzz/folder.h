// Files for the fuzzers: in memory, and never waiting for a disk. Include it in one file of a
// program.
#pragma once

#include <unistd.h>

#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>

namespace tarvo::fuzz {

class Folder {
public:
    Folder() {
        std::string pattern =
            (std::filesystem::is_directory("/dev/shm") ? std::filesystem::path("/dev/shm")
                                                       : std::filesystem::temp_directory_path()) /
            "qrb-fuzz-XXXXXX";
        m_path = ::mkdtemp(pattern.data());
        // The fuzzer forks for some of its work and ends without unwinding.
        owner() = {m_path, ::getpid()};
        std::atexit([] {
            std::error_code none;
            if (owner().process == ::getpid())
                std::filesystem::remove_all(owner().path, none);
        });
    }
    std::string file(const std::string& name) const { return (m_path / name).string(); }
    // Writes an input to where those who read files find it.
    std::string write(const std::string& name, const std::uint8_t* data, std::size_t size) const {
        std::ofstream stream(file(name), std::ios::binary | std::ios::trunc);
        stream.write(reinterpret_cast<const char*>(data), static_cast<std::streamsize>(size));
        return file(name);
    }

private:
    struct Owner {
        std::filesystem::path path;
        ::pid_t process = 0;
    };
    static Owner& owner() {
        static Owner* const one = new Owner;
        return *one;
    }
    std::filesystem::path m_path;
};

inline const Folder& folder() {
    static const Folder one;
    return one;
}

}  // namespace tarvo::fuzz

extern "C" __attribute__((visibility("default"))) int fsync(int) {
    return 0;
}
extern "C" __attribute__((visibility("default"))) int fdatasync(int) {
    return 0;
}
