// Where a command writes its answer: standard output or a file.
#pragma once

#include <cstdio>
#include <stdexcept>
#include <string>
#include <string_view>

namespace tarvo::cli {

// The reader of standard output has gone: no failure, there is just nothing left to do.
class OutputClosed : public std::exception {};

// Buffers what is written. Throws Failure when writing fails, OutputClosed when nobody reads.
class Output {
public:
    // Empty or "-": standard output. An existing file is replaced.
    explicit Output(const std::string& fileName);
    ~Output();
    Output(const Output&) = delete;
    Output& operator=(const Output&) = delete;

    void write(std::string_view text);
    // Writes what is buffered and closes the file; call it at the end of what succeeded.
    void finish();

private:
    void flush();

    std::string m_fileName;
    std::FILE* m_file = nullptr;
    std::string m_buffer;
};

// Writes a whole answer to standard output. Throws Failure.
void print(std::string_view text);

}  // namespace tarvo::cli
