#include "exchange/text/source.h"

#include "core/error.h"
#include "core/utf8.h"
#include "exchange/advice.h"
#include "exchange/table/knownnames.h"
#include "exchange/table/names.h"

#include <algorithm>
#include <bit>
#include <cstring>
#include <limits>

namespace tarvo::exchange::text {

namespace {

constexpr std::size_t valuesAtOnce = 8u << 20;  // of all columns together
constexpr std::size_t maximumWidth = 4096;
constexpr const char* unnamed = "column_";
constexpr const char* notNames =
    "The first line that is no comment and begins with no number is taken for the names of the "
    "columns.\nTake out lines that are neither names nor numbers, or begin them with #.";

bool has(std::string_view line, char c) {
    return std::memchr(line.data(), c, line.size()) != nullptr;
}

}  // namespace

TextSource::TextSource(const std::string& fileName, const std::vector<std::string>& names,
                       const OpenProgress& progress)
    : m_fileName(fileName), m_lines(fileName, progress) {
    readBegin(!names.empty());
    findTypes(names.empty() ? m_header : names);
    m_lines.endOpening();
    const bool isTold = !names.empty() || !m_header.empty();
    nameColumns(!names.empty() ? names : isTold ? m_header : defaultNames(), isTold);
    m_largestBatch = static_cast<std::uint32_t>(
        std::clamp<std::size_t>(valuesAtOnce / m_columns.size(), 1, batchSize));
    for (std::size_t i = 0; i < m_columns.size(); ++i) {
        m_values.emplace_back(m_largestBatch);
    }
    rewind();
}

std::string TextSource::line() const {
    return "Line " + std::to_string(m_lines.lineNumber()) + " of \"" + m_fileName + "\"";
}

void TextSource::readBegin(bool isNamed) {
    std::string_view line;
    while (m_lines.next(line)) {
        if (isComment(line)) {
            continue;
        }
        line = withoutRemark(line);
        m_separator = separatorOf(line);
        splitFields(line, m_separator, m_fields);
        std::uint64_t count = 0;
        if (m_fields.size() == 1 && csv::parseNumber(m_fields[0], count)) {
            continue;
        }
        m_width = m_fields.size();
        if (m_width > maximumWidth) {
            throw core::Failure(this->line() + " has more than " + std::to_string(maximumWidth) +
                                " columns.");
        }
        if (!isNumber(m_fields[0]) && !m_fields[0].empty()) {
            if (isNamed) {
                throw core::Failure(this->line() + " is no line of numbers.",
                                    "Names of columns are given to texts without a header line.");
            }
            m_headerLine = m_lines.lineNumber();
            m_header.assign(m_fields.begin(), m_fields.end());
        }
        return;
    }
    throw core::Failure("The file \"" + m_fileName + "\" holds no points.",
                        "Lines of numbers are needed: x, y, z and others.");
}

// A number such as 1.234,5 has two meanings.
void TextSource::refuseMixedPoints(std::string_view line) {
    m_pointLine = m_pointLine == 0 && has(line, '.') ? m_lines.lineNumber() : m_pointLine;
    m_commaLine = m_commaLine == 0 && has(line, ',') ? m_lines.lineNumber() : m_commaLine;
    if (m_pointLine != 0 && m_commaLine != 0) {
        throw core::Failure(
            "\"" + m_fileName + "\" has points and commas in its numbers, in line " +
                std::to_string(m_pointLine) + " and line " + std::to_string(m_commaLine) + ".",
            "Decimals are written with one of the two throughout a file.");
    }
}

bool TextSource::nextRow() {
    std::string_view line;
    while (m_lines.next(line)) {
        if ((line.front() <= '/' || line.front() == ';') && isComment(line)) {
            continue;
        }
        if (m_lines.lineNumber() == m_headerLine) {
            continue;
        }
        line = has(line, '#') ? withoutRemark(line) : line;
        if (m_separator != Separator::Comma) {
            if (m_isLooking) {
                refuseMixedPoints(line);
            }
            if (m_commaLine != 0) {
                m_changed.assign(line);
                std::replace(m_changed.begin(), m_changed.end(), ',', '.');
                line = m_changed;
            }
        }
        splitFields(line, m_separator, m_fields);
        if (m_fields.size() == m_width) {
            return true;
        }
        std::uint64_t count = 0;
        if (m_fields.size() != 1 || !csv::parseNumber(m_fields[0], count)) {
            throw core::Failure(this->line() + " has " + std::to_string(m_fields.size()) +
                                    (m_fields.size() == 1 ? " column, but " : " columns, but ") +
                                    (m_headerLine == 0 ? "the first points have "
                                                       : "the line of their names has ") +
                                    std::to_string(m_width) + ".",
                                m_headerLine == 0 ? "" : notNames);
        }
        if (m_isLooking) {
            m_isAnnounced = true;
            m_announced += std::min(count, std::numeric_limits<std::uint64_t>::max() - m_announced);
        }
    }
    return false;
}

void TextSource::findTypes(const std::vector<std::string>& names) {
    for (std::size_t i = 0; i < m_width; ++i) {
        m_types.emplace_back(i < names.size() && names[i] == "tarvo.id");
    }
    rewind();
    while (nextRow()) {
        for (std::size_t i = 0; i < m_width; ++i) {
            m_types[i].add(m_fields[i], m_lines.lineNumber());
        }
        ++m_pointCount;
    }
    m_isLooking = false;
    if (m_isAnnounced && m_pointCount < m_announced) {
        throw core::Failure("\"" + m_fileName + "\" ends after " + std::to_string(m_pointCount) +
                                " of " + std::to_string(m_announced) + " points.",
                            "The file is cut off, or its count is wrong; nothing was imported.");
    }
}

std::vector<std::string> TextSource::defaultNames() const {
    std::vector<std::string> names = {"x", "y", "z"};
    const auto isWhole = [&](std::size_t first) {
        return std::all_of(
            m_types.begin() + static_cast<std::ptrdiff_t>(first),
            m_types.begin() + static_cast<std::ptrdiff_t>(first) + 3,
            [](const csv::ColumnType& type) { return type.type() != DataType::DOUBLE; });
    };
    const auto append = [&](std::initializer_list<const char*> more) {
        names.insert(names.end(), more.begin(), more.end());
    };
    if (m_width == 4 || (m_width == 7 && isWhole(4)) || (m_width == 10 && isWhole(4))) {
        append({"intensity"});
    }
    if ((m_width == 6 && isWhole(3)) || (m_width == 9 && isWhole(3)) || names.size() == 4) {
        append({"r", "g", "b"});
    }
    if (names.size() + 3 == m_width && m_width >= 9) {
        append({"nx", "ny", "nz"});
    }
    while (names.size() < m_width) {
        names.push_back(unnamed + std::to_string(names.size() + 1));
    }
    names.resize(m_width);
    return names;
}

std::string TextSource::nameOf(std::size_t field) const {
    for (std::size_t i = 0; i < m_columns.size(); ++i) {
        if (m_fieldOf[i] == field) {
            return m_columns[i].title.empty() ? m_columns[i].descriptor() : m_columns[i].title;
        }
    }
    return std::to_string(field + 1);
}

void TextSource::nameColumns(const std::vector<std::string>& names, bool isTold) {
    if (names.size() != m_width) {
        throw core::Failure("The points of \"" + m_fileName + "\" have " + std::to_string(m_width) +
                                " columns, but " + std::to_string(names.size()) + " are named.",
                            "Each of them needs a name; \"-\" passes one over.");
    }
    for (std::size_t i = 0; i < m_width; ++i) {
        if (names[i] != "-") {
            m_columns.push_back(columnNamed(names[i], "text."));
            m_columns.back().name =
                isTold ? validUtf8(names[i]) : "column " + std::to_string(i + 1);
            m_fieldOf.push_back(i);
        }
    }
    if (m_columns.empty()) {
        throw core::Failure("All columns of \"" + m_fileName + "\" are passed over.");
    }
    makeUnique(m_columns, m_fileName);
    for (std::size_t i = 0; i < m_columns.size(); ++i) {
        m_columns[i].type = m_types[m_fieldOf[i]].type();
        m_columns[i].fault = m_types[m_fieldOf[i]].fault(m_fileName, nameOf(m_fieldOf[i]));
    }
}

double TextSource::progress() const {
    return m_lines.size() == 0
               ? 1.0
               : static_cast<double>(m_lines.position()) / static_cast<double>(m_lines.size());
}

std::uint32_t TextSource::next() {
    std::uint32_t count = 0;
    while (count < m_largestBatch && nextRow()) {
        for (std::size_t i = 0; i < m_columns.size(); ++i) {
            parse(i, count);
        }
        ++count;
    }
    return count;
}

void TextSource::parse(std::size_t column, std::uint32_t row) {
    const std::string_view text = m_fields[m_fieldOf[column]];
    std::uint64_t& slot = m_values[column][row];
    bool good = false;
    if (m_columns[column].type == DataType::INT64) {
        std::int64_t value = 0;
        good = csv::parseNumber(text, value);
        slot = static_cast<std::uint64_t>(value);
    } else if (m_columns[column].type == DataType::UINT64) {
        good = csv::parseNumber(text, slot);
    } else {
        double value = std::numeric_limits<double>::quiet_NaN();
        good = text.empty() || csv::parseNumber(text, value);
        slot = std::bit_cast<std::uint64_t>(value);
    }
    if (!good) {
        throw core::Failure(line() + ": \"" + core::excerpt(text) + "\" in the column \"" +
                            nameOf(m_fieldOf[column]) + "\" is not a number.");
    }
}

std::vector<std::string> TextSource::notes() const {
    std::vector<std::string> notes;
    if (m_isAnnounced && m_pointCount > m_announced) {
        notes.push_back(
            std::to_string(m_announced) +
            (m_announced == 1 ? " point is announced; all " : " points are announced; all ") +
            std::to_string(m_pointCount) + " that follow were read.");
    }
    for (const Column& column : m_columns) {
        if (column.title.starts_with(unnamed)) {
            const std::string& advised = advice().nameColumns;
            notes.push_back("nothing tells what \"" + column.attribute +
                            "\" and further columns mean." +
                            (advised.empty() ? "" : " " + advised));
            break;
        }
    }
    return notes;
}

}  // namespace tarvo::exchange::text
