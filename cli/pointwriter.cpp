#include "cli/pointwriter.h"

#include "cli/errors.h"

#include <algorithm>

namespace tarvo::cli {

namespace {

class TextWriter : public PointWriter {
public:
    TextWriter(const std::vector<PointColumn>& columns, Output& output)
        : m_columns(columns), m_output(output) {}

protected:
    void endLine() {
        m_line += '\n';
        m_output.write(m_line);
        m_line.clear();
    }

    const std::vector<PointColumn> m_columns;
    Output& m_output;
    std::string m_line;
};

class CsvWriter : public TextWriter {
public:
    using TextWriter::TextWriter;
    void begin() override {
        for (const PointColumn& column : m_columns) {
            m_line += (m_line.empty() ? "" : ",") + column.name;
        }
        endLine();
    }
    void point(std::uint32_t index) override {
        bool first = true;
        for (const PointColumn& column : m_columns) {
            if (!first) {
                m_line += ',';
            }
            first = false;
            column.format.append(m_line, column.values[index]);
        }
        endLine();
    }
};

// Columns are as wide as the attribute's range needs, so that points need not be looked at twice.
class TableWriter : public TextWriter {
public:
    TableWriter(const std::vector<PointColumn>& columns, Output& output)
        : TextWriter(columns, output) {
        for (const PointColumn& column : columns) {
            m_widths.push_back(std::max(column.format.width(), column.name.size()));
        }
    }
    void begin() override {
        for (std::size_t i = 0; i < m_columns.size(); ++i) {
            cell(i, m_columns[i].name);
        }
        endLine();
    }
    void point(std::uint32_t index) override {
        for (std::size_t i = 0; i < m_columns.size(); ++i) {
            m_cell.clear();
            m_columns[i].format.append(m_cell, m_columns[i].values[index]);
            cell(i, m_cell);
        }
        endLine();
    }

private:
    void cell(std::size_t column, const std::string& text) {
        if (column > 0) {
            m_line += "  ";
        }
        m_line.append(m_widths[column] - std::min(m_widths[column], text.size()), ' ');
        m_line += text;
    }

    std::vector<std::size_t> m_widths;
    std::string m_cell;
};

// One member per attribute; several elements are an array.
class JsonLinesWriter : public TextWriter {
public:
    using TextWriter::TextWriter;
    void begin() override {}
    void point(std::uint32_t index) override {
        m_line += '{';
        for (std::size_t i = 0; i < m_columns.size(); ++i) {
            const bool isElement = m_columns[i].name != m_columns[i].attribute;
            const bool opens = i == 0 || m_columns[i - 1].attribute != m_columns[i].attribute;
            const bool closes =
                i + 1 == m_columns.size() || m_columns[i + 1].attribute != m_columns[i].attribute;
            const bool alone = isElement && opens && closes;
            if (i > 0) {
                m_line += ',';
            }
            if (opens) {
                m_line += '"' + (alone ? m_columns[i].name : m_columns[i].attribute) + "\":";
                m_line += isElement && !alone ? "[" : "";
            }
            if (m_columns[i].format.isFinite(m_columns[i].values[index])) {
                m_columns[i].format.append(m_line, m_columns[i].values[index]);
            } else {
                m_line += "null";
            }
            m_line += isElement && closes && !alone ? "]" : "";
        }
        m_line += '}';
        endLine();
    }
};

}  // namespace

std::unique_ptr<PointWriter> makePointWriter(const std::string& format,
                                             const std::vector<PointColumn>& columns,
                                             Output& output) {
    if (format == "csv") {
        return std::make_unique<CsvWriter>(columns, output);
    }
    if (format == "jsonl") {
        return std::make_unique<JsonLinesWriter>(columns, output);
    }
    return std::make_unique<TableWriter>(columns, output);
}

}  // namespace tarvo::cli
