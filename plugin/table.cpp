#include "plugin/run.h"

namespace tarvo::plugin {

namespace {

void append(std::string& text, const std::string& cell, bool first) {
    if (!first)
        text += ',';
    if (cell.find_first_of(",\"\r\n") == std::string::npos) {
        text += cell;
        return;
    }
    text += '"';
    for (const char c : cell)
        text.append(c == '"' ? 2 : 1, c);
    text += '"';
}

}  // namespace

std::string csvOf(const Table& table) {
    std::string text;
    for (std::size_t i = 0; i < table.columns.size(); ++i)
        append(text, table.columns[i].title, i == 0);
    text += '\n';
    for (const std::vector<std::string>& row : table.rows) {
        for (std::size_t i = 0; i < row.size(); ++i)
            append(text, row[i], i == 0);
        text += '\n';
    }
    return text;
}

}  // namespace tarvo::plugin
