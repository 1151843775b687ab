// What type the cells of a column of a text have together, and whether that type holds them all.
#pragma once

#include "core/error.h"
#include "qrb/pointattribute.h"

#include <charconv>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace tarvo::exchange::csv {

using qrb::pointcloud::DataType;

template <typename T>
bool parseNumber(std::string_view text, T& value) {
    // A number has one sign at most.
    if (text.starts_with('+') && !text.starts_with("+-")) {
        text.remove_prefix(1);
    }
    const auto result = std::from_chars(text.data(), text.data() + text.size(), value);
    return result.ec == std::errc() && result.ptr == text.data() + text.size();
}

class ColumnType {
public:
    explicit ColumnType(bool isId) : m_isId(isId) {}

    // Looks at the next cell.
    void add(std::string_view text, std::uint64_t line);

    // INT64 or UINT64 where all cells are such whole numbers, DOUBLE else and without cells.
    DataType type() const;
    // The first cell that is no id, or that a column of type DOUBLE changes; nothing: there is
    // none. The names are for the message.
    std::optional<core::Failure> fault(const std::string& fileName,
                                       const std::string& column) const;

private:
    struct Cell {
        std::uint64_t line = 0;
        std::string text;
    };
    core::Failure idFault(const std::string& fileName, const Cell& cell) const;

    bool m_isId;
    bool m_any = false;
    bool m_isSigned = true;
    bool m_isUnsigned = true;
    std::optional<Cell> m_noId;
    std::optional<Cell> m_inexact;  // as a double
};

}  // namespace tarvo::exchange::csv
