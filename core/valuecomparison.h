// Whether two stored values of an attribute are the same, and their texts.
#pragma once

#include "core/valueformat.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace tarvo::core {

// The values of a point as they are read: its elements side by side in the narrow type of the
// format.
class ValueComparison {
public:
    // Definitions of the same length.
    ValueComparison(const qrb::pointcloud::PointAttribute& before,
                    const qrb::pointcloud::PointAttribute& after);

    const std::string& attribute() const { return m_before.name; }
    bool asNumbers() const { return m_asNumbers; }
    qrb::pointcloud::DataType typeBefore() const { return m_formatBefore.narrowType(); }
    qrb::pointcloud::DataType typeAfter() const { return m_formatAfter.narrowType(); }
    // Bytes of a point's elements.
    std::size_t strideBefore() const { return strideOf(typeBefore()); }
    std::size_t strideAfter() const { return strideOf(typeAfter()); }

    // By the same definition values are compared as they are stored, else as ValuesDiff says.
    bool equal(const std::uint8_t* before, const std::uint8_t* after) const;
    // By different definitions an invalid value is "no value": its number may be one of the other's.
    std::vector<std::string> textsBefore(const std::uint8_t* values) const;
    std::vector<std::string> textsAfter(const std::uint8_t* values) const;

private:
    std::size_t strideOf(qrb::pointcloud::DataType type) const {
        return qrb::pointcloud::dataTypeSize(type) * m_before.length;
    }
    std::vector<std::string> texts(const ValueFormat& format,
                                   const qrb::pointcloud::PointAttribute& attribute,
                                   const std::uint8_t* values) const;
    bool agree(std::uint64_t before, std::uint64_t after) const;

    qrb::pointcloud::PointAttribute m_before;
    qrb::pointcloud::PointAttribute m_after;
    ValueFormat m_formatBefore;
    ValueFormat m_formatAfter;
    bool m_asNumbers;
    double m_tolerance;
};

// The texts of a point's elements in the narrow type of the format.
std::vector<std::string> valueTexts(const ValueFormat& format, std::uint32_t length,
                                    const std::uint8_t* values);

}  // namespace tarvo::core
