// Reads parts of a file by position; a read beyond the end is an error that names the field.
#pragma once

#include "exchange/inputfile.h"

#include <cstddef>
#include <cstdint>
#include <string>

namespace tarvo::exchange {

class RawFile {
public:
    // format: for messages, such as "PLY". Throws Failure when the file can't be opened.
    RawFile(const std::string& fileName, std::string format);

    const std::string& fileName() const { return m_fileName; }
    std::uint64_t size() const { return m_input.size; }
    const std::string& format() const { return m_format; }
    void setFormat(const std::string& format) { m_format = format; }

    // Reads exactly size bytes from a position; what names the thing that is read in the error.
    void read(std::uint64_t position, void* buffer, std::size_t size, const char* what);

    // Throws Failure: the file is damaged, with the field and its value.
    [[noreturn]] void fail(const std::string& text) const;

private:
    std::string m_fileName;
    std::string m_format;
    InputFile m_input;
    std::uint64_t m_position = 0;
};

// The failure of a file that breaks the rules of its format.
[[noreturn]] void failFormat(const std::string& format, const std::string& fileName,
                             const std::string& text);

}  // namespace tarvo::exchange
