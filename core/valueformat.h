// How the values of a point attribute are read and written as texts: what window, exports and
// qrbtool show is made here.
#pragma once

#include "numbers/digits.h"
#include "qrb/pointattribute.h"

#include <cstdint>
#include <string>
#include <vector>

namespace tarvo::core {

// The decimal places that show a resolution, 0 to 16: the last place of its fraction, printed with
// 16 digits, that is not 0.
int decimalsOfResolution(double resolution);

// Whole numbers are written as such; others in fixed notation with the places of the resolution, or
// of the minimum where the grid begins between its multiples; numbers that lie on no grid
// (resolution 0, or one too fine for these places), or that 16 places would change, in the fewest
// digits that give them back. The invalid value is written as it was defined.
class ValueFormat {
public:
    explicit ValueFormat(const qrb::pointcloud::PointAttribute& attribute);

    // The type in which values are read so that none is lost: UINT64, INT64 or DOUBLE, 8 bytes
    // each. Attributes of whole numbers are read as DOUBLE only where an invalid value is none, or
    // where neither of the other types holds all values.
    qrb::pointcloud::DataType type() const { return m_type; }
    // Places behind the decimal mark; -1 where they differ from value to value.
    int places() const { return m_places; }

    // The smallest type in which values can be read instead, for those who read many.
    qrb::pointcloud::DataType narrowType() const { return m_narrowType; }

    // Appends the value in 8 bytes of the type; NaN is written as "nan".
    void append(std::string& text, std::uint64_t bits) const;
    // Writes a value of the type DOUBLE from at on, where there must be room for
    // numbers::mostCharacters; returns the end.
    char* writeDouble(char* at, double value) const {
        if (m_places >= 0 && value != m_invalid)
            if (char* const end = numbers::writeExactFixed(at, value, m_places))
                return end;
        return writeAnyDouble(at, value);
    }
    std::string text(std::uint64_t bits) const;
    // maximum - minimum, both in 8 bytes of the type.
    std::string differenceText(std::uint64_t minimum, std::uint64_t maximum) const;
    // Whether the 8 bytes are a number that JSON can write.
    bool isFinite(std::uint64_t bits) const;
    // Characters of the widest value within the definition's range.
    std::size_t width() const { return m_width; }

private:
    char* writeAnyDouble(char* at, double value) const;
    void appendDouble(std::string& text, double value) const;

    qrb::pointcloud::DataType m_type;
    qrb::pointcloud::DataType m_narrowType;
    int m_places = 0;
    double m_invalid;  // NaN: none
    std::string m_invalidText;
    std::size_t m_width = 0;
};

// "NAME" for length 1, else "NAME[0]", "NAME[1]", ... up to the maximum.
std::vector<std::string> elementNames(const std::string& attribute, std::uint32_t length,
                                      std::uint32_t maximum = UINT32_MAX);

}  // namespace tarvo::core
