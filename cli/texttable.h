// Tables and labelled lines for people to read.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace tarvo::cli {

class TextTable {
public:
    struct Column {
        std::string title;
        bool right = false;  // numbers stand right
    };
    explicit TextTable(std::vector<Column> columns);

    // One cell per column. Line breaks in a cell become blanks.
    void add(std::vector<std::string> cells);
    // The titles and the rows, columns as wide as their widest cell.
    std::string text() const;

private:
    void append(std::string& text, const std::vector<std::string>& cells) const;

    std::vector<Column> m_columns;
    std::vector<std::size_t> m_widths;
    std::vector<std::vector<std::string>> m_rows;
};

// "Label         text", further lines of the text below its first; empty for an empty text.
std::string labelled(std::string_view label, std::string_view text);

// "1 point", "2 points".
std::string counted(std::uint64_t count, std::string_view noun);

// A size as the manner says: "1.50 MB" or "1572864 bytes".
std::string sizeInWords(std::uint64_t bytes);

}  // namespace tarvo::cli
