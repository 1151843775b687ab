#include "exchange/inputfile.h"

#include "core/error.h"

#include <cerrno>
#include <cstring>
#include <filesystem>
#include <system_error>

namespace tarvo::exchange {

InputFile::InputFile(const std::string& fileName) {
    std::error_code error;
    const auto fail = [&](const std::string& reason, const char* details = "") {
        throw core::Failure("Failed to open \"" + fileName + "\": " + reason + ".", details);
    };
    if (std::filesystem::is_directory(fileName, error)) {
        fail("it is a folder");
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

}  // namespace tarvo::exchange
