#include "exchange/rawfile.h"

#include "core/error.h"
#include "exchange/seek.h"

#include <cerrno>
#include <cstring>
#include <utility>

namespace tarvo::exchange {

RawFile::RawFile(const std::string& fileName, std::string format)
    : m_fileName(fileName), m_format(std::move(format)), m_input(fileName) {}

void RawFile::read(std::uint64_t position, void* buffer, std::size_t size, const char* what) {
    if (position > m_input.size || size > m_input.size - position) {
        fail(std::string("the ") + what + " at byte " + std::to_string(position) + " takes " +
             std::to_string(size) + " bytes, but the file ends at byte " +
             std::to_string(m_input.size));
    }
    if (position != m_position && seekTo(m_input.file.get(), position) != 0) {
        throw core::Failure("Failed to read \"" + m_fileName + "\": " + std::strerror(errno) + ".");
    }
    m_position = position;
    if (std::fread(buffer, 1, size, m_input.file.get()) != size) {
        throw core::Failure(
            "Failed to read \"" + m_fileName + "\" at byte " + std::to_string(position) + ": " +
            (std::ferror(m_input.file.get()) ? std::strerror(errno) : "it became shorter") + ".");
    }
    m_position += size;
}

void RawFile::fail(const std::string& text) const {
    failFormat(m_format, m_fileName, text);
}

void failFormat(const std::string& format, const std::string& fileName, const std::string& text) {
    const bool consonant = format == "PLY" || format == "PTX";
    throw core::Failure("The " + format + " file \"" + fileName + "\" can't be read: " + text + ".",
                        "The file is damaged, cut off or not " +
                            std::string(consonant ? "a " : "an ") + format +
                            " file; nothing was imported.");
}

}  // namespace tarvo::exchange
