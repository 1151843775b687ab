#include "exchange/csv/source.h"

#include "catalogue/catalogue.h"
#include "core/error.h"
#include "core/utf8.h"
#include "exchange/csv/columntype.h"
#include "exchange/table/knownnames.h"
#include "exchange/table/names.h"

#include <algorithm>
#include <bit>
#include <limits>
#include <set>

namespace tarvo::exchange::csv {

namespace {

// Of all columns together.
constexpr std::size_t mostAttributes = 4096;
constexpr std::size_t valuesAtOnce = 8u << 20;

// namesInFull: the header line calls the coordinates by the name of their attribute, so that x may
// be anything.
Column columnOf(const std::string& title, bool namesInFull) {
    Column column;
    column.name = validUtf8(title);
    column.attribute = title;
    if (!namesInFull && title.size() == 1 &&
        std::string_view("xyzXYZ").find(title[0]) != std::string_view::npos) {
        column.attribute = "tarvo.xyz";
        column.element = static_cast<std::uint32_t>((title[0] | 0x20) - 'x');
        return column;
    }
    splitElement(column.attribute, column.element);
    if (!isFullName(column.attribute)) {
        column.attribute = "csv." + safeName(column.attribute);
        column.title = validUtf8(title);
    }
    return column;
}

}  // namespace

CsvSource::CsvSource(const std::string& fileName, const OpenProgress& progress)
    : m_fileName(fileName), m_lines(fileName, progress) {
    readHeader();
    findTypes();
    m_lines.endOpening();
    // A header line may name any number of columns.
    m_largestBatch = static_cast<std::uint32_t>(
        std::clamp<std::size_t>(valuesAtOnce / m_columns.size(), 1, batchSize));
    m_rowLines.resize(m_largestBatch);
    m_values.resize(m_columns.size());
    for (auto& values : m_values) {
        values.resize(m_largestBatch);
    }
    rewind();
}

void CsvSource::readHeader() {
    std::string_view line;
    if (!m_lines.next(line)) {
        throw core::Failure(
            "The file \"" + m_fileName + "\" is empty.",
            "A header line that names the columns is needed, for example \"x,y,z\".");
    }
    m_separator = detectSeparator(line);
    if (!splitLine(line, m_separator, m_fields, m_storage)) {
        throw core::Failure("A quote in the header line of \"" + m_fileName + "\" is not closed.");
    }
    std::set<std::string> taken;
    const bool namesInFull = std::ranges::any_of(
        m_fields, [](std::string_view name) { return name.starts_with("tarvo.xyz["); });
    for (const std::string_view name : m_fields) {
        m_names.emplace_back(name);
        Column column = columnOf(m_names.back(), namesInFull);
        if (column.element >= mostElements) {
            throw core::Failure("The column \"" + m_names.back() + "\" of \"" + m_fileName +
                                "\" has an element number above " +
                                std::to_string(mostElements - 1) + ".");
        }
        if (!taken.insert(column.attribute + "[" + std::to_string(column.element)).second) {
            throw core::Failure("The column \"" + m_names.back() + "\" stands twice in \"" +
                                m_fileName + "\".");
        }
        m_columns.push_back(std::move(column));
    }
    setLengths(m_columns);
    std::set<std::string_view> attributes;
    for (const Column& column : m_columns) {
        attributes.insert(column.attribute);
    }
    if (attributes.size() > mostAttributes) {
        throw core::Failure("The header line of \"" + m_fileName + "\" names " +
                                std::to_string(attributes.size()) + " attributes; at most " +
                                std::to_string(mostAttributes) + " can be imported.",
                            "Leave columns out of the file, or make them elements of one "
                            "attribute: \"a[0]\", \"a[1]\".");
    }
}

void CsvSource::findTypes() {
    std::vector<ColumnType> types;
    for (const Column& column : m_columns) {
        types.emplace_back(column.attribute == "tarvo.id");
    }
    while (nextRow()) {
        for (std::size_t i = 0; i < types.size(); ++i) {
            types[i].add(m_fields[i], m_lines.lineNumber());
        }
    }
    m_isLooking = false;
    if (m_pointLine != 0 && m_commaLine != 0) {
        throw core::Failure(
            "\"" + m_fileName + "\" has points and commas in its numbers, in line " +
                std::to_string(m_pointLine) + " and line " + std::to_string(m_commaLine) + ".",
            "Decimals are written with one of the two throughout a file.");
    }
    for (std::size_t i = 0; i < types.size(); ++i) {
        m_columns[i].type = types[i].type();
        m_columns[i].fault = types[i].fault(m_fileName, m_names[i]);
    }
}

bool CsvSource::nextRow() {
    std::string_view line;
    if (!m_lines.next(line)) {
        return false;
    }
    const std::string where =
        "Line " + std::to_string(m_lines.lineNumber()) + " of \"" + m_fileName + "\" ";
    if (!splitLine(line, m_separator, m_fields, m_storage)) {
        throw core::Failure(where + "has a quote that is not closed.");
    }
    if (m_fields.size() != m_names.size()) {
        throw core::Failure(where + "has " + std::to_string(m_fields.size()) +
                                (m_fields.size() == 1 ? " field" : " fields") +
                                ", but the header line names " + std::to_string(m_names.size()) +
                                ".",
                            "The first line is taken for the names of the columns. Take out lines "
                            "that are neither\nnames nor numbers, or begin them with #.");
    }
    changeCommas(line);
    return true;
}

// Numbers such as 1.234,5 have two meanings, and so has 1,234 between commas.
void CsvSource::changeCommas(std::string_view line) {
    if (m_isLooking && m_pointLine == 0 && line.find('.') != std::string_view::npos) {
        m_pointLine = m_lines.lineNumber();
    }
    if ((m_separator == ',' && m_storage.empty()) || line.find(',') == std::string_view::npos) {
        return;
    }
    constexpr std::size_t digitsOfThousands = 3;
    m_changed.clear();
    m_changed.reserve(m_fields.size());
    for (std::string_view& field : m_fields) {
        const std::size_t comma = field.find(',');
        const bool isDecimal =
            comma != std::string_view::npos &&
            (m_separator != ',' || field.size() - comma - 1 != digitsOfThousands);
        if (isDecimal) {
            m_changed.emplace_back(field);
            m_changed.back()[comma] = '.';
            field = m_changed.back();
            m_commaLine = m_commaLine == 0 ? m_lines.lineNumber() : m_commaLine;
        }
    }
}

void CsvSource::rewind() {
    std::string_view header;
    m_lines.rewind();
    m_lines.next(header);
}

double CsvSource::progress() const {
    return m_lines.size() == 0
               ? 1.0
               : static_cast<double>(m_lines.position()) / static_cast<double>(m_lines.size());
}

std::uint32_t CsvSource::next() {
    std::uint32_t count = 0;
    while (count < m_largestBatch && nextRow()) {
        for (std::size_t i = 0; i < m_columns.size(); ++i) {
            parse(i, count);
        }
        m_rowLines[count] = m_lines.lineNumber();
        ++count;
    }
    return count;
}

void CsvSource::parse(std::size_t column, std::uint32_t row) {
    const std::string_view text = m_fields[column];
    std::uint64_t& slot = m_values[column][row];
    bool good = false;
    if (m_columns[column].type == DataType::INT64) {
        std::int64_t value = 0;
        good = parseNumber(text, value);
        slot = static_cast<std::uint64_t>(value);
    } else if (m_columns[column].type == DataType::UINT64) {
        good = parseNumber(text, slot);
    } else {
        double value = std::numeric_limits<double>::quiet_NaN();
        good = text.empty() || parseNumber(text, value);
        slot = std::bit_cast<std::uint64_t>(value);
    }
    if (!good) {
        failCell(column, text);
    }
}

void CsvSource::failCell(std::size_t column, std::string_view text) const {
    throw core::Failure("Line " + std::to_string(m_lines.lineNumber()) + " of \"" + m_fileName +
                            "\": \"" + core::excerpt(text) + "\" in the column \"" +
                            core::excerpt(m_names[column]) + "\" is not a number.",
                        "Numbers are written with a point before the decimals, for example 12.5.");
}

}  // namespace tarvo::exchange::csv
