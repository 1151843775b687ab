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

// Whether the name of an output stands for standard output.
bool isStandardOutput(const std::string& fileName);

// Buffers what is written. A file appears, or is replaced, when finish() is called and not before.
// Throws Failure and FileError when writing fails, OutputClosed when nobody reads.
class Output {
public:
    // Standard output.
    Output() = default;
    // Throws qrb::Error for the place of a database,
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
    // Where standard output has a part of what was written already, writes the rest and an end, for
    // an answer that failed; else nothing. Throws nothing.
    void breakOff(std::string_view end) noexcept;

private:
    void flush();
    void put(std::string_view text);
    void putToStandardOutput(std::string_view text);

    std::optional<files::WholeFile> m_file;  // none: standard output
    bool m_isBegun = false;
    std::string m_buffer;
};

// Writes a whole answer to standard output. Throws Failure.
void print(std::string_view text);
// The same for a text for people: in JSON an object with the text as its only member.
void printText(std::string_view text);
// The same to where the constructor of Output says.
void writeAnswer(const Database& database, const std::string& fileName, std::string_view text);

// While one lives, each answer to standard output, JSON, is a member of an array. One at a time.
class AnswerList {
public:
    // Writes what comes before it. Throws Failure.
    explicit AnswerList(std::string_view before);
    // Where close() was not called: writes what comes behind a list that was broken off.
    ~AnswerList();
    AnswerList(const AnswerList&) = delete;
    AnswerList& operator=(const AnswerList&) = delete;

    // after: what comes behind it.
    void close(std::string_view after);

private:
    bool m_isOpen = true;
};

}  // namespace tarvo::cli
