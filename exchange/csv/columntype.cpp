#include "exchange/csv/columntype.h"

#include "core/utf8.h"
#include "exchange/table/decimal.h"

namespace tarvo::exchange::csv {

void ColumnType::add(std::string_view text, std::uint64_t line) {
    std::int64_t whole = 0;
    std::uint64_t wholeUnsigned = 0;
    const bool isSigned = parseNumber(text, whole);
    const bool isUnsigned = parseNumber(text, wholeUnsigned);
    m_any = true;
    m_isSigned = m_isSigned && isSigned;
    m_isUnsigned = m_isUnsigned && isUnsigned;
    if (m_isId) {
        if (!m_noId && !isUnsigned) {
            m_noId = {line, std::string(text)};
        }
    } else if (!m_inexact && changedAsDouble(text)) {
        m_inexact = {line, std::string(text)};
    }
}

DataType ColumnType::type() const {
    return m_any && m_isSigned     ? DataType::INT64
           : m_any && m_isUnsigned ? DataType::UINT64
                                   : DataType::DOUBLE;
}

std::optional<core::Failure> ColumnType::fault(const std::string& fileName,
                                               const std::string& column) const {
    if (m_noId) {
        return idFault(fileName, *m_noId);
    }
    if (type() != DataType::DOUBLE || !m_inexact) {
        return std::nullopt;
    }
    return core::Failure(
        "Line " + std::to_string(m_inexact->line) + " of \"" + fileName + "\": " + m_inexact->text +
            " in the column \"" + column + "\" would become " +
            changedAsDouble(m_inexact->text).value_or("another number") + ".",
        "Whole numbers of 64 bits are kept where no cell of their column is empty, has a point or "
        "an\nexponent, or is negative beside one of 2^63 or more: put the lines of such cells into "
        "a file of\ntheir own. Where the nearest number will do, write a point: " +
            m_inexact->text + ".0");
}

core::Failure ColumnType::idFault(const std::string& fileName, const Cell& cell) const {
    const std::string where = "Line " + std::to_string(cell.line) + " of \"" + fileName + "\"";
    return core::Failure(
        where + (cell.text.empty() ? " has no id."
                                   : ": \"" + core::excerpt(cell.text) + "\" is no id."),
        "Ids are whole numbers from 0 to 18446744073709551615, without point and exponent.");
}

}  // namespace tarvo::exchange::csv
