#include "cli/pointwriter.h"

#include <algorithm>

namespace tarvo::cli {

namespace {

class TextWriter : public PointWriter {
public:
    TextWriter(const core::PointPages& points, Output& output)
        : m_points(points), m_output(output) {}

protected:
    void endLine() {
        m_line += '\n';
        writeLine();
    }
    void writeLine() {
        m_output.write(m_line);
        m_line.clear();
    }

    const std::vector<core::PointColumn>& columns() const { return m_points.columns(); }

    const core::PointPages& m_points;
    Output& m_output;
    std::string m_line;
};

// Columns are as wide as the attribute's range needs, so that points need not be looked at twice.
class TableWriter : public TextWriter {
public:
    TableWriter(const core::PointPages& points, Output& output) : TextWriter(points, output) {
        for (const core::PointColumn& column : columns()) {
            m_widths.push_back(std::max(column.format.width(), column.name.size()));
        }
    }
    void begin() override {
        for (std::size_t i = 0; i < columns().size(); ++i) {
            cell(i, columns()[i].name);
        }
        endLine();
    }
    void point(std::uint32_t row) override {
        for (std::size_t i = 0; i < columns().size(); ++i) {
            m_cell.clear();
            m_points.appendText(m_cell, row, i);
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
    void point(std::uint32_t row) override {
        object(row);
        endLine();
    }

protected:
    void object(std::uint32_t row) {
        m_line += '{';
        for (std::size_t i = 0; i < columns().size(); ++i) {
            const bool isElement = columns()[i].name != columns()[i].attribute;
            const bool opens = i == 0 || columns()[i - 1].attribute != columns()[i].attribute;
            const bool closes =
                i + 1 == columns().size() || columns()[i + 1].attribute != columns()[i].attribute;
            const bool alone = isElement && opens && closes;
            if (i > 0) {
                m_line += ',';
            }
            if (opens) {
                m_line += '"' + (alone ? columns()[i].name : columns()[i].attribute) + "\":";
                m_line += isElement && !alone ? "[" : "";
            }
            if (columns()[i].format.isFinite(m_points.value(row, i))) {
                m_points.appendText(m_line, row, i);
            } else {
                m_line += "null";
            }
            m_line += isElement && closes && !alone ? "]" : "";
        }
        m_line += '}';
    }
};

class JsonArrayWriter : public JsonLinesWriter {
public:
    using JsonLinesWriter::JsonLinesWriter;
    ~JsonArrayWriter() override {
        if (m_isOpen) {
            m_output.breakOff(closing);
        }
    }
    void begin() override {
        m_isOpen = true;
        m_line = "[";
    }
    void point(std::uint32_t row) override {
        m_line += m_isFirst ? "\n" : ",\n";
        m_isFirst = false;
        object(row);
        writeLine();
    }
    void end() override {
        m_isOpen = false;
        m_line += closing;
        writeLine();
    }

private:
    static constexpr const char* closing = "\n]\n";
    bool m_isOpen = false;
    bool m_isFirst = true;
};

}  // namespace

std::unique_ptr<PointWriter> makePointWriter(const std::string& format,
                                             const core::PointPages& points, Output& output) {
    if (format == "jsonl") {
        return std::make_unique<JsonLinesWriter>(points, output);
    }
    if (format == "json") {
        return std::make_unique<JsonArrayWriter>(points, output);
    }
    return std::make_unique<TableWriter>(points, output);
}

}  // namespace tarvo::cli
