#include "cli/texttable.h"

#include "cli/manner.h"
#include "cli/text.h"
#include "numbers/sizetext.h"

#include <algorithm>
#include <utility>

namespace tarvo::cli {

namespace {

constexpr std::size_t labelWidth = 14;

// Characters, not bytes.
std::size_t widthOf(std::string_view text) {
    return static_cast<std::size_t>(std::count_if(text.begin(), text.end(), [](char c) {
        return (static_cast<unsigned char>(c) & 0xc0) != 0x80;
    }));
}

}  // namespace

TextTable::TextTable(std::vector<Column> columns) : m_columns(std::move(columns)) {
    for (const Column& column : m_columns) {
        m_widths.push_back(widthOf(column.title));
    }
}

void TextTable::add(std::vector<std::string> cells) {
    for (std::size_t i = 0; i < cells.size(); ++i) {
        cells[i] = oneLine(cells[i]);
        m_widths[i] = std::max(m_widths[i], widthOf(cells[i]));
    }
    m_rows.push_back(std::move(cells));
}

void TextTable::append(std::string& text, const std::vector<std::string>& cells) const {
    std::string line;
    for (std::size_t i = 0; i < cells.size(); ++i) {
        const std::string padding(m_widths[i] - widthOf(cells[i]), ' ');
        line += i == 0 ? "" : "  ";
        line += m_columns[i].right ? padding + cells[i] : cells[i] + padding;
    }
    line.resize(line.find_last_not_of(' ') + 1);
    text += line + '\n';
}

std::string TextTable::text() const {
    std::vector<std::string> titles;
    for (const Column& column : m_columns) {
        titles.push_back(column.title);
    }
    std::string text;
    append(text, titles);
    for (const auto& row : m_rows) {
        append(text, row);
    }
    return text;
}

std::string labelled(std::string_view label, std::string_view text) {
    std::string result;
    const std::string safe = printable(text);
    for (std::string_view rest = safe; !rest.empty();) {
        const std::size_t end = rest.find('\n');
        std::string line(result.empty() ? label : std::string_view());
        line.resize(std::max(line.size() + 1, labelWidth), ' ');
        result += line + std::string(rest.substr(0, end)) + '\n';
        rest.remove_prefix(end == std::string_view::npos ? rest.size() : end + 1);
    }
    return result;
}

std::string counted(std::uint64_t count, std::string_view noun) {
    return std::to_string(count) + " " + std::string(noun) + (count == 1 ? "" : "s");
}

std::string sizeInWords(std::uint64_t bytes) {
    return manner().bytes ? counted(bytes, "byte") : numbers::sizeText(bytes);
}

}  // namespace tarvo::cli
