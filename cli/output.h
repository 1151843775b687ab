// Where a command writes its answer: standard output or a file.
#pragma once

#include "files/wholefile.h"

#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>

namespace tarvo::cli {

class Database;

// The reader of standard output has gone: no failure, there is just nothing left to do.
class OutputClosed : public std::exception {};

// Buffers what is written. A file appears, or is replaced, when finish() is called and not before.
// Throws Failure and FileError when writing fails, OutputClosed when nobody reads.
class Output {
public:
    // Standard output.
    Output() = default;
    // Empty, "-" or "/dev/stdout": standard output. Throws qrb::Error for the place of a database,
    // the open one first of all, and of a file that was read.
    Output(const Database& database, const std::string& fileName);
    Output(const Output&) = delete;
    Output& operator=(const Output&) = delete;

    // Whether a file is there that finish() would replace.
    bool replacesFile() const { return m_file && m_file->replaces(); }
    void write(std::string_view text);
    // Writes what is buffered, and puts the file in its place; call it at the end of what
    // succeeded.
    void finish();

private:
    void flush();
    void put(std::string_view text);

    std::optional<files::WholeFile> m_file;  // none: standard output
    std::string m_buffer;
};

// Writes a whole answer to standard output. Throws Failure.
void print(std::string_view text);
// The same to where the constructor of Output says.
void writeAnswer(const Database& database, const std::string& fileName, std::string_view text);

}  // namespace tarvo::cli
