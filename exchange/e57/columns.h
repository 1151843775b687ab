// Which columns the scans of a file become, and where a scan has what.
#pragma once

#include "exchange/e57/document.h"
#include "exchange/table/pointsource.h"

#include <map>
#include <optional>
#include <string>
#include <vector>

namespace tarvo::exchange::e57 {

// The first four columns.
enum At : std::size_t { Coordinates = 0, ScanNumber = 3, Others };

// How a scan tells coordinates.
enum class Geometry : std::uint8_t { None, Cartesian, Spherical };
Geometry geometryOf(const Scan& scan);

// How the values of a scan become those of a column.
struct Filling {
    std::size_t column = 0;
    std::optional<std::size_t> field;  // nothing: the scan lacks it
    std::optional<std::size_t> flag;   // a field that is not 0 where there is no value
    std::uint32_t added = 0;           // to the values
    std::optional<Limits> colour;      // becomes 0 to brightest
};

class ColumnPlan {
public:
    // Throws Failure for scans with one name twice.
    ColumnPlan(const Document& document, const std::string& fileName);

    const std::vector<Column>& columns() const { return m_columns; }
    // Columns of real numbers are of type DOUBLE or SINGLE, others INT64.
    std::vector<Filling> fillings(const Scan& scan) const;
    // How coordinates are stored, where all scans store them alike and none has a pose.
    const std::vector<Affine>& axes() const { return m_axes; }
    double brightest() const { return m_brightest; }

private:
    void addCoordinates(const Document& document);
    void addFields(const Document& document);
    void finish(const Document& document);

    std::vector<Column> m_columns;
    std::map<std::string, std::size_t> m_columnOf;  // by the name of the field
    std::vector<Affine> m_axes;
    double m_brightest = 255;
};

}  // namespace tarvo::exchange::e57
