// The files that points are read from.
#pragma once

#include <cstdint>
#include <cstdio>
#include <functional>
#include <memory>
#include <string>

namespace tarvo::exchange {

struct CloseFile {
    void operator()(std::FILE* file) const { std::fclose(file); }
};

struct InputFile {
    // Opens an ordinary file; "-": what keepStandardInput has kept, for one reader at a time.
    // Throws Failure.
    explicit InputFile(const std::string& fileName);

    std::unique_ptr<std::FILE, CloseFile> file;
    std::uint64_t size = 0;
};

// The name that stands for standard input.
inline constexpr const char* standardInput = "-";

// Copies standard input to its end into a file without a name, which goes with the process. check
// is called again and again; what it throws ends the copy. Not again when it was read. Throws
// Failure.
void keepStandardInput(const std::function<void()>& check);

}  // namespace tarvo::exchange
