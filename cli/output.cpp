#include "cli/output.h"

#include "cli/database.h"
#include "cli/errors.h"
#include "cli/inputs.h"
#include "cli/json.h"
#include "cli/manner.h"
#include "core/outputplace.h"
#include "files/error.h"

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <utility>

namespace tarvo::cli {

namespace {

constexpr std::size_t bufferSize = 1 << 16;

std::optional<std::size_t> s_listed;  // answers in the list that is open

}  // namespace

bool isStandardOutput(const std::string& fileName) {
    return fileName.empty() || fileName == "-" || fileName == "/dev/stdout";
}

Output::Output(const Database& database, const std::string& fileName) {
    if (isStandardOutput(fileName)) {
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
    if (text.empty()) {
        return;
    }
    if (m_file) {
        m_file->write(text);
        return;
    }
    if (!std::exchange(m_isBegun, true) && s_listed && (*s_listed)++ > 0) {
        putToStandardOutput(",\n");
    }
    putToStandardOutput(text);
}

void Output::putToStandardOutput(std::string_view text) {
    if (std::fwrite(text.data(), 1, text.size(), stdout) != text.size() ||
        std::fflush(stdout) != 0) {
        if (errno == EPIPE) {
            throw OutputClosed();
        }
        throw Failure("Failed to write the output: " + std::string(std::strerror(errno)) + ".");
    }
}

void Output::breakOff(std::string_view end) noexcept {
    if (m_file || !m_isBegun) {
        return;
    }
    try {
        flush();
        put(end);
    } catch (const std::exception&) {
        // The failure that broke it off is told.
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

void printText(std::string_view text) {
    if (!manner().json) {
        print(text);
        return;
    }
    JsonText json;
    json.beginObject();
    json.member("text", text);
    json.endObject();
    print(json.text());
}

void writeAnswer(const Database& database, const std::string& fileName, std::string_view text) {
    Output output(database, fileName);
    writeAnswer(output, text);
}

AnswerList::AnswerList(std::string_view before) {
    print(before);
    s_listed = 0;
}

AnswerList::~AnswerList() {
    if (m_isOpen) {
        try {
            close("]}\n");
        } catch (const std::exception&) {
            // Another failure is on its way.
        }
    }
}

void AnswerList::close(std::string_view after) {
    m_isOpen = false;
    s_listed.reset();
    print(after);
}

}  // namespace tarvo::cli
