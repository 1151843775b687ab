// The files that points are read from.
#pragma once

#include <cstdint>
#include <cstdio>
#include <memory>
#include <string>

namespace tarvo::exchange {

struct CloseFile {
    void operator()(std::FILE* file) const { std::fclose(file); }
};

struct InputFile {
    // Opens an ordinary file. Throws Failure.
    explicit InputFile(const std::string& fileName);

    std::unique_ptr<std::FILE, CloseFile> file;
    std::uint64_t size = 0;
};

}  // namespace tarvo::exchange
