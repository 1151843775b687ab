#include "exchange/inputfile.h"

#include "core/error.h"

#include <cerrno>
#include <cstring>
#include <filesystem>
#include <system_error>
#include <vector>

#if defined(_WIN32)
#include <io.h>
#else
#include <poll.h>
#include <unistd.h>
#endif

namespace tarvo::exchange {

namespace {

using File = std::unique_ptr<std::FILE, CloseFile>;

File& keptInput() {
    static File kept;
    return kept;
}

// Another handle of the same open file, at its beginning.
File openKept() {
#if defined(_WIN32)
    File file(_fdopen(_dup(_fileno(keptInput().get())), "rb"));
#else
    File file(fdopen(dup(fileno(keptInput().get())), "rb"));
#endif
    if (file) {
        std::rewind(file.get());
    }
    return file;
}

// At most size bytes, 0 at the end, less than 0 for a failure. Calls check while none come.
#if defined(_WIN32)
std::int64_t readInput(char* buffer, std::size_t size, const std::function<void()>&) {
    return _read(_fileno(stdin), buffer, static_cast<unsigned>(size));
}
std::uint64_t sizeOf(std::FILE* file) {
    return static_cast<std::uint64_t>(_filelengthi64(_fileno(file)));
}
#else
std::int64_t readInput(char* buffer, std::size_t size, const std::function<void()>& check) {
    constexpr int milliseconds = 100;
    pollfd input{fileno(stdin), POLLIN, 0};
    while (poll(&input, 1, milliseconds) <= 0) {
        check();
    }
    return ::read(input.fd, buffer, size);
}
std::uint64_t sizeOf(std::FILE* file) {
    fseeko(file, 0, SEEK_END);
    const off_t size = ftello(file);
    std::rewind(file);
    return static_cast<std::uint64_t>(size);
}
#endif

}  // namespace

InputFile::InputFile(const std::string& fileName) {
    std::error_code error;
    const auto fail = [&](const std::string& reason, const char* details = "") {
        throw core::Failure("Failed to open \"" + fileName + "\": " + reason + ".", details);
    };
    if (fileName == standardInput && keptInput()) {
        file = openKept();
        if (!file) {
            fail(std::strerror(errno));
        }
        size = sizeOf(file.get());
        return;
    }
    if (std::filesystem::is_directory(fileName, error)) {
        fail("it is a folder");
    }
    // Opening a pipe would wait for somebody who writes to it.
    if (const auto status = std::filesystem::status(fileName, error);
        std::filesystem::exists(status) && !std::filesystem::is_regular_file(status)) {
        fail("it is no ordinary file", "Points are read from ordinary files, and from \"-\".");
    }
    file.reset(std::fopen(fileName.c_str(), "rb"));
    if (!file) {
        fail(std::strerror(errno));
    }
    size = std::filesystem::file_size(fileName, error);
    if (error) {
        fail(error.message(), "Points are read from ordinary files only.");
    }
}

void keepStandardInput(const std::function<void()>& check) {
    if (keptInput()) {
        return;
    }
    File kept(std::tmpfile());
    const auto failToWrite = [] {
        throw core::Failure("Failed to keep standard input in a temporary file.",
                            std::string(std::strerror(errno)) + ".");
    };
    if (!kept) {
        failToWrite();
    }
    std::vector<char> buffer(1 << 20);
    while (const std::int64_t count = readInput(buffer.data(), buffer.size(), check)) {
        check();
        if (count < 0) {
            throw core::Failure("Failed to read standard input.",
                                std::string(std::strerror(errno)) + ".");
        }
        const auto size = static_cast<std::size_t>(count);
        if (std::fwrite(buffer.data(), 1, size, kept.get()) != size) {
            failToWrite();
        }
    }
    check();
    if (std::fflush(kept.get()) != 0) {
        failToWrite();
    }
    keptInput() = std::move(kept);
}

}  // namespace tarvo::exchange
