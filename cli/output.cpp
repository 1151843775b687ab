#include "cli/output.h"

#include "cli/database.h"
#include "cli/errors.h"
#include "cli/inputs.h"
#include "core/outputplace.h"
#include "files/error.h"

#include <cerrno>
#include <cstdio>
#include <cstring>

namespace tarvo::cli {

namespace {

constexpr std::size_t bufferSize = 1 << 16;

}  // namespace

Output::Output(const Database& database, const std::string& fileName) {
    if (fileName.empty() || fileName == "-" || fileName == "/dev/stdout") {
        return;
    }
    std::vector<std::string> reads = inputs();
    reads.push_back(database.fileName());
    core::checkOutputPlace(database.cloud().context(), fileName, reads);
    try {
        m_file.emplace(fileName);
    } catch (const files::FileError& error) {
        throw Failure("Failed to open output file!",
                      error.what() + (error.details().empty() ? "" : "\n" + error.details()));
    }
}

void Output::write(std::string_view text) {
    if (text.size() >= bufferSize) {
        flush();
        put(text);
        return;
    }
    m_buffer += text;
    if (m_buffer.size() >= bufferSize) {
        flush();
    }
}

void Output::flush() {
    put(m_buffer);
    m_buffer.clear();
}

void Output::put(std::string_view text) {
    if (m_file) {
        m_file->write(text);
    } else if (std::fwrite(text.data(), 1, text.size(), stdout) != text.size() ||
               std::fflush(stdout) != 0) {
        if (errno == EPIPE) {
            throw OutputClosed();
        }
        throw Failure("Failed to write the output: " + std::string(std::strerror(errno)) + ".");
    }
}

void Output::finish() {
    flush();
    if (m_file) {
        m_file->publish();
    }
}

namespace {

void writeAnswer(Output& output, std::string_view text) {
    try {
        output.write(text);
        output.finish();
    } catch (const OutputClosed&) {
        // The reader has seen what it wanted.
    }
}

}  // namespace

void print(std::string_view text) {
    Output output;
    writeAnswer(output, text);
}

void writeAnswer(const Database& database, const std::string& fileName, std::string_view text) {
    Output output(database, fileName);
    writeAnswer(output, text);
}

}  // namespace tarvo::cli
