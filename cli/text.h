// Numbers and lists as texts.
#pragma once

#include "qrb/pointattribute.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace tarvo::cli {

// Digits behind the point that show every multiple of a resolution: the last place of its
// fraction, printed with 16 digits, that is not 0.
int decimalsOf(double resolution);

// How the values of an attribute are read and written: whole numbers as such, others in fixed
// notation with the decimals of the resolution; numbers that are stored unrounded in the fewest
// digits that give them back.
class ValueFormat {
public:
    explicit ValueFormat(const qrb::pointcloud::PointAttribute& attribute);

    // UINT64, INT64 or DOUBLE: 8 bytes each.
    qrb::pointcloud::DataType type() const { return m_type; }
    // Appends the number in 8 bytes of the type; NaN is written as "nan".
    void append(std::string& text, std::uint64_t bits) const;
    std::string text(std::uint64_t bits) const;
    // Whether the 8 bytes are a number that JSON can write.
    bool isFinite(std::uint64_t bits) const;
    // Characters of the widest value within the definition's range.
    std::size_t width() const { return m_width; }

private:
    qrb::pointcloud::DataType m_type;
    bool m_unrounded = false;
    int m_decimals = 0;
    std::size_t m_width = 0;
};

// Node ids from a text such as "1,3-5": in ascending order, each once. Throws UsageError.
std::vector<std::uint32_t> parseNodes(std::string_view text);

// Columns of a vector attribute: "NAME" for length 1, else "NAME[0]", "NAME[1]", ...
std::vector<std::string> elementNames(const std::string& attribute, std::uint32_t length);

// A text from a file as a terminal may show it: control characters but line breaks, which could
// move the cursor or worse, become "?", tabs blanks.
std::string printable(std::string_view text);

}  // namespace tarvo::cli
