// Reads parts of a file by position; a read beyond the end is an error that names the field.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <memory>
#include <string>

namespace tarvo::exchange::las {

class FileReader {
public:
    // Throws Failure when the file can't be opened.
    explicit FileReader(const std::string& fileName);

    const std::string& fileName() const { return m_fileName; }
    std::uint64_t size() const { return m_size; }

    // Reads exactly size bytes from a position; what names the thing that is read in the error.
    void read(std::uint64_t position, void* buffer, std::size_t size, const char* what);

    // Throws Failure: the file is damaged, with the field and its value.
    [[noreturn]] void fail(const std::string& text) const;

private:
    struct Close {
        void operator()(std::FILE* file) const { std::fclose(file); }
    };
    std::string m_fileName;
    std::uint64_t m_size = 0;
    std::uint64_t m_position = 0;
    std::unique_ptr<std::FILE, Close> m_file;
};

}  // namespace tarvo::exchange::las
