#include "cli/output.h"

#include "cli/errors.h"

#include <cerrno>
#include <cstring>

namespace tarvo::cli {

namespace {

constexpr std::size_t bufferSize = 1 << 16;

}  // namespace

Output::Output(const std::string& fileName) : m_fileName(fileName == "-" ? "" : fileName) {
    m_file = m_fileName.empty() ? stdout : std::fopen(m_fileName.c_str(), "wb");
    if (m_file == nullptr) {
        throw Failure("Failed to open output file!",
                      "\"" + m_fileName + "\": " + std::strerror(errno) + ".");
    }
}

Output::~Output() {
    if (m_file != nullptr && m_file != stdout) {
        std::fclose(m_file);
    }
}

void Output::write(std::string_view text) {
    m_buffer += text;
    if (m_buffer.size() >= bufferSize) {
        flush();
    }
}

void Output::flush() {
    const std::size_t written = std::fwrite(m_buffer.data(), 1, m_buffer.size(), m_file);
    if (written != m_buffer.size() || std::fflush(m_file) != 0) {
        if (errno == EPIPE) {
            throw OutputClosed();
        }
        throw Failure("Failed to write " +
                      (m_fileName.empty() ? "the output" : "\"" + m_fileName + "\"") + ": " +
                      std::strerror(errno) + ".");
    }
    m_buffer.clear();
}

void Output::finish() {
    flush();
    if (m_file != stdout) {
        std::FILE* const file = m_file;
        m_file = nullptr;
        if (std::fclose(file) != 0) {
            throw Failure("Failed to write \"" + m_fileName + "\": " + std::strerror(errno) + ".");
        }
    }
}

void print(std::string_view text) {
    try {
        Output output("");
        output.write(text);
        output.finish();
    } catch (const OutputClosed&) {
        // The reader has seen what it wanted.
    }
}

}  // namespace tarvo::cli
