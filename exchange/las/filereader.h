// Reads parts of a file by position; a read beyond the end is an error that names the field.
#pragma once

#include "exchange/inputfile.h"

#include <cstddef>
#include <cstdint>
#include <string>

namespace tarvo::exchange::las {

class FileReader {
public:
    // Throws Failure when the file can't be opened.
    explicit FileReader(const std::string& fileName);

    const std::string& fileName() const { return m_fileName; }
    std::uint64_t size() const { return m_input.size; }
    // "LAS" or "LAZ", as errors call it.
    const std::string& kind() const { return m_kind; }
    void setKind(const std::string& kind) { m_kind = kind; }

    // Reads exactly size bytes from a position; what names the thing that is read in the error.
    void read(std::uint64_t position, void* buffer, std::size_t size, const char* what);

    // Throws Failure: the file is damaged, with the field and its value.
    [[noreturn]] void fail(const std::string& text) const;

private:
    std::string m_fileName;
    std::string m_kind = "LAS";
    InputFile m_input;
    std::uint64_t m_position = 0;
};

}  // namespace tarvo::exchange::las
