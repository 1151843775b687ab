#include "cli/textfile.h"

#include "cli/errors.h"
#include "cli/inputs.h"

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <memory>

namespace tarvo::cli {

namespace {

constexpr std::size_t largestText = std::size_t(1) << 30;

}  // namespace

std::string readTextFile(const std::string& fileName) {
    const bool isInput = fileName == "-";
    const std::string shown = isInput ? "the standard input" : "\"" + fileName + "\"";
    const auto close = [isInput](std::FILE* file) {
        if (!isInput) {
            std::fclose(file);
        }
    };
    const std::unique_ptr<std::FILE, decltype(close)> file(
        isInput ? stdin : std::fopen(fileName.c_str(), "rb"), close);
    if (!file) {
        throw Failure("Failed to open input file!", shown + ": " + std::strerror(errno) + ".");
    }
    if (!isInput) {
        noteInput(fileName);
    }
    std::string text;
    char buffer[1 << 16];
    while (const std::size_t got = std::fread(buffer, 1, sizeof buffer, file.get())) {
        text.append(buffer, got);
        if (text.size() > largestText) {
            throw Failure("The text in " + shown + " is too large.",
                          "At most " + std::to_string(largestText) + " bytes are read.");
        }
    }
    if (std::ferror(file.get()) != 0) {
        throw Failure("Failed to read " + shown + ": " + std::strerror(errno) + ".");
    }
    return text;
}

std::string textOfArgument(const std::string& argument) {
    if (argument == "-") {
        return readTextFile(argument);
    }
    return argument.size() > 1 && argument.front() == '@' ? readTextFile(argument.substr(1))
                                                          : argument;
}

}  // namespace tarvo::cli
