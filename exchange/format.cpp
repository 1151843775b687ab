#include "exchange/format.h"

#include "core/error.h"
#include "exchange/inputfile.h"
#include "exchange/text/fields.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <cerrno>
#include <cstring>
#include <optional>
#include <vector>

namespace tarvo::exchange {

namespace {

constexpr std::size_t beginSize = 64u << 10;

constexpr const char* names[] = {"las", "laz", "ply", "ptx", "e57", "csv", "text"};

struct Signature {
    std::string_view bytes;
    const char* what;
};
using namespace std::string_view_literals;
constexpr const char* crText = "a text whose lines end with carriage returns alone";
constexpr Signature strangers[] = {
    {"SQLite format 3\0"sv, "a database file"},
    {"PK\3\4"sv, "a ZIP archive"},
    {"PK\5\6"sv, "a ZIP archive"},
    {"%PDF-"sv, "a PDF document"},
    {"# .PCD"sv, "a PCD file"},
    {"VERSION .7\n"sv, "a PCD file"},
    {"VERSION 0.7\n"sv, "a PCD file"},
    {"<"sv, "a text in XML or HTML"},
    {"{"sv, "a text in JSON"},
    {"\x1f\x8b"sv, "packed by gzip"},
    {"BZh"sv, "packed by bzip2"},
    {"\xfd"
     "7zXZ"sv,
     "packed by xz"},
    {"7z\xbc\xaf"sv, "a 7z archive"},
    {"\x28\xb5\x2f\xfd"sv, "packed by zstd"},
    {"\xff\xfe"sv, "a text in UTF-16"},
    {"\xfe\xff"sv, "a text in UTF-16"},
};

bool isText(std::string_view begin) {
    return std::none_of(begin.begin(), begin.end(), [](char c) {
        return static_cast<unsigned char>(c) < 32 && c != '\t' && c != '\n' && c != '\r' &&
               c != '\f';
    });
}

// A text without a byte order mark whose every other byte is 0.
bool isWideText(std::string_view begin) {
    const std::string_view part = begin.substr(0, std::min<std::size_t>(begin.size(), 32) & ~1u);
    for (const std::size_t first : {0u, 1u}) {
        std::size_t zeros = 0;
        for (std::size_t i = first; i < part.size(); i += 2) {
            zeros += part[i] == 0 && part[i ^ 1] != 0 ? 1 : 0;
        }
        if (part.size() >= 8 && zeros == part.size() / 2) {
            return true;
        }
    }
    return false;
}

class Lines {
public:
    explicit Lines(std::string_view text) : m_rest(text) {
        if (m_rest.starts_with("\xef\xbb\xbf")) {
            m_rest.remove_prefix(3);
        }
    }
    // The next line with anything in it, taken apart by blanks.
    bool next() {
        while (!m_rest.empty()) {
            const std::size_t end = m_rest.find('\n');
            m_line = m_rest.substr(0, end);
            m_rest.remove_prefix(end == std::string_view::npos ? m_rest.size() : end + 1);
            text::splitFields(m_line, text::Separator::Blanks, m_words);
            if (!m_words.empty()) {
                return true;
            }
        }
        return false;
    }
    std::string_view line() const { return m_line; }
    const std::vector<std::string_view>& words() const { return m_words; }
    bool hasNumbers(std::size_t count) const {
        return m_words.size() == count && std::ranges::all_of(m_words, text::isNumber);
    }

private:
    std::string_view m_rest;
    std::string_view m_line;
    std::vector<std::string_view> m_words;
};

// Columns, rows, position, three axes, four rows of a matrix.
bool isPtx(std::string_view begin) {
    static constexpr std::size_t widths[] = {1, 1, 3, 3, 3, 3, 4, 4, 4, 4};
    Lines lines(begin);
    return std::ranges::all_of(
        widths, [&](std::size_t width) { return lines.next() && lines.hasNumbers(width); });
}

bool isCoordinate(std::string_view name, char axis) {
    while (!name.empty() && (name.front() == '"' || name.front() == ' ')) {
        name.remove_prefix(1);
    }
    while (!name.empty() && (name.back() == '"' || name.back() == ' ')) {
        name.remove_suffix(1);
    }
    return (name.size() == 1 && std::tolower(static_cast<unsigned char>(name[0])) == axis) ||
           name == std::string("tarvo.xyz[") + static_cast<char>(axis - 'x' + '0') + "]";
}

bool namesCoordinates(const std::vector<std::string_view>& fields) {
    return std::ranges::all_of("xyz"sv, [&](char axis) {
        return std::ranges::any_of(fields,
                                   [&](std::string_view name) { return isCoordinate(name, axis); });
    });
}

FileKind kindOfText(std::string_view begin) {
    Lines lines(begin);
    std::vector<std::string_view> fields;
    bool isFirst = true;
    for (; lines.next(); isFirst = false) {
        if (text::isComment(lines.line()) || lines.hasNumbers(1)) {
            continue;
        }
        const std::string_view numbers = text::withoutRemark(lines.line());
        text::splitFields(numbers, text::separatorOf(numbers), fields);
        const bool isNumeric = std::ranges::all_of(
            fields, [](std::string_view field) { return field.empty() || text::isNumber(field); });
        if (isNumeric && fields.size() > 1) {
            return {"text", {}, fields.size() > 2};
        }
        const bool isSeparated = lines.line().find_first_of(",;\t") != std::string_view::npos;
        if (!isSeparated && namesCoordinates(lines.words())) {
            return {"text", {}, true};
        }
        for (const char separator : {',', ';', '\t'}) {
            fields.clear();
            std::string_view rest = lines.line();
            while (rest.ends_with('\r')) {
                rest.remove_suffix(1);
            }
            for (std::size_t end = 0; end != std::string_view::npos;) {
                end = rest.find(separator);
                fields.push_back(rest.substr(0, end));
                rest.remove_prefix(end == std::string_view::npos ? rest.size() : end + 1);
            }
            if (namesCoordinates(fields)) {
                // In CSV nothing stands before the header line.
                return {isFirst ? "csv" : "text", {}, true};
            }
        }
        break;
    }
    return {"csv", "a text whose first line names no coordinates", false};
}

}  // namespace

std::span<const char* const> formatNames() {
    return names;
}

FileKind kindOf(std::string_view begin) {
    if (begin.empty()) {
        return {{}, "an empty file", true};
    }
    if (begin.starts_with("LASF")) {
        return {"las", {}, true};
    }
    if (begin.starts_with("ASTM-E57")) {
        return {"e57", {}, true};
    }
    if (begin.starts_with("ply\r") && begin.size() > 4 && begin[4] != '\n') {
        return {{}, crText, true};
    }
    if (begin.size() > 3 && begin.starts_with("ply") &&
        std::isspace(static_cast<unsigned char>(begin[3]))) {
        return {"ply", {}, true};
    }
    for (const Signature& stranger : strangers) {
        if (begin.starts_with(stranger.bytes)) {
            return {{}, stranger.what, true};
        }
    }
    if (isWideText(begin)) {
        return {{}, "a text in UTF-16", true};
    }
    if (!isText(begin)) {
        return {{}, "not of a format that is known", true};
    }
    if (begin.find('\n') == std::string_view::npos && begin.find('\r') < begin.size() - 1) {
        return {{}, crText, true};
    }
    // The last line may be cut off.
    if (begin.size() == beginSize && begin.find('\n') != std::string_view::npos) {
        begin = begin.substr(0, begin.rfind('\n') + 1);
    }
    return isPtx(begin) ? FileKind{"ptx", {}, true} : kindOfText(begin);
}

FileKind kindOfFile(const std::string& fileName) {
    const InputFile input(fileName);
    std::string begin(beginSize, '\0');
    begin.resize(std::fread(begin.data(), 1, begin.size(), input.file.get()));
    if (std::ferror(input.file.get())) {
        throw core::Failure("Failed to read \"" + fileName + "\": " + std::strerror(errno) + ".");
    }
    return kindOf(begin);
}

}  // namespace tarvo::exchange
