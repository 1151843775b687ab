#include "exchange/csv/linereader.h"

#include "core/error.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <utility>

namespace tarvo::exchange::csv {

namespace {

constexpr std::size_t maximumLine = 16 << 20;
constexpr std::string_view byteOrderMark = "\xef\xbb\xbf";

bool isBlank(char c) {
    return c == ' ' || c == '\t' || c == '\r';
}

std::string_view trim(std::string_view text) {
    while (!text.empty() && isBlank(text.front())) {
        text.remove_prefix(1);
    }
    while (!text.empty() && isBlank(text.back())) {
        text.remove_suffix(1);
    }
    return text;
}

}  // namespace

LineReader::LineReader(const std::string& fileName, OpenProgress progress)
    : m_fileName(fileName), m_input(fileName), m_progress(std::move(progress)), m_buffer(1 << 20) {}

void LineReader::rewind() {
    std::rewind(m_input.file.get());
    m_begin = m_end = 0;
    m_position = m_lineNumber = 0;
}

bool LineReader::fill() {
    if (m_progress && size() > 0) {
        m_progress(static_cast<double>(m_position) / static_cast<double>(size()));
    }
    if (m_begin > 0) {
        std::memmove(m_buffer.data(), m_buffer.data() + m_begin, m_end - m_begin);
        m_end -= m_begin;
        m_begin = 0;
    }
    if (m_end == m_buffer.size()) {
        if (m_buffer.size() >= maximumLine) {
            throw core::Failure("Line " + std::to_string(m_lineNumber + 1) + " of \"" + m_fileName +
                                    "\" is too long.",
                                "The file doesn't look like one of comma-separated values.");
        }
        m_buffer.resize(m_buffer.size() * 2);
    }
    const std::size_t got =
        std::fread(m_buffer.data() + m_end, 1, m_buffer.size() - m_end, m_input.file.get());
    if (got == 0 && std::ferror(m_input.file.get())) {
        throw core::Failure("Failed to read \"" + m_fileName + "\": " + std::strerror(errno) + ".");
    }
    m_end += got;
    return got > 0;
}

bool LineReader::next(std::string_view& line) {
    std::size_t searched = 0;
    while (true) {
        const char* const begin = m_buffer.data() + m_begin;
        const std::size_t length = m_end - m_begin;
        const void* const feed =
            length > searched ? std::memchr(begin + searched, '\n', length - searched) : nullptr;
        std::size_t taken = 0;
        if (feed != nullptr) {
            line = {begin, static_cast<std::size_t>(static_cast<const char*>(feed) - begin)};
            taken = line.size() + 1;
        } else {
            searched = length;
            if (fill()) {
                continue;
            }
            if (length == 0) {
                return false;
            }
            line = {m_buffer.data() + m_begin, length};
            taken = length;
        }
        m_begin += taken;
        m_position += taken;
        if (++m_lineNumber == 1 && line.starts_with(byteOrderMark)) {
            line.remove_prefix(byteOrderMark.size());
        }
        if (!trim(line).empty()) {
            return true;
        }
        searched = 0;
    }
}

bool splitLine(std::string_view line, char separator, std::vector<std::string_view>& fields,
               std::vector<std::string>& storage) {
    fields.clear();
    storage.clear();
    if (line.find('"') == std::string_view::npos) {
        while (true) {
            const std::size_t end = line.find(separator);
            // Once for each cell: a named value spares the checked return of emplace_back.
            const std::string_view cell = trim(line.substr(0, end));
            fields.push_back(cell);
            if (end == std::string_view::npos) {
                return true;
            }
            line.remove_prefix(end + 1);
        }
    }
    // With quotes every field gets a text of its own; storage must not move what views refer to.
    storage.reserve(line.size() + 1);
    bool quoted = false;
    bool wasQuoted = false;
    std::string field;
    const auto finish = [&] {
        storage.push_back(wasQuoted ? field : std::string(trim(field)));
        fields.push_back(storage.back());
        field.clear();
        wasQuoted = false;
    };
    for (std::size_t i = 0; i < line.size(); ++i) {
        const char c = line[i];
        if (quoted) {
            if (c != '"') {
                field += c;
            } else if (i + 1 < line.size() && line[i + 1] == '"') {
                field += c;
                ++i;
            } else {
                quoted = false;
            }
        } else if (c == '"' && trim(field).empty() && !wasQuoted) {
            field.clear();
            quoted = wasQuoted = true;
        } else if (c == separator) {
            finish();
        } else if (!wasQuoted || !isBlank(c)) {
            field += c;
        }
    }
    finish();
    return !quoted;
}

char detectSeparator(std::string_view header) {
    std::size_t counts[3] = {};
    static constexpr char separators[] = {',', ';', '\t'};
    bool quoted = false;
    for (const char c : header) {
        quoted ^= c == '"';
        for (std::size_t i = 0; i < 3 && !quoted; ++i) {
            counts[i] += c == separators[i] ? 1 : 0;
        }
    }
    return separators[std::max_element(counts, counts + 3) - counts];
}

}  // namespace tarvo::exchange::csv
