#include "exchange/ptx/scans.h"

#include "exchange/csv/columntype.h"
#include "exchange/rawfile.h"
#include "exchange/table/names.h"
#include "exchange/text/fields.h"

#include <limits>

namespace tarvo::exchange::ptx {

double ScanReader::progress() const {
    return m_lines.size() == 0
               ? 1.0
               : static_cast<double>(m_lines.position()) / static_cast<double>(m_lines.size());
}

void ScanReader::fail(const std::string& what) const {
    failFormat("PTX", m_fileName, "line " + std::to_string(m_lines.lineNumber()) + " " + what);
}

void ScanReader::nextLine(std::size_t width) {
    std::string_view line;
    if (!m_lines.next(line)) {
        failFormat("PTX", m_fileName, "it ends within a scan");
    }
    text::splitFields(line, text::Separator::Blanks, m_fields);
    if (m_fields.size() != width) {
        fail("has " + std::to_string(m_fields.size()) + " numbers in place of " +
             std::to_string(width));
    }
}

double ScanReader::number(std::size_t field) const {
    double value = 0;
    if (!csv::parseNumber(m_fields[field], value)) {
        fail("has \"" + validUtf8(std::string(m_fields[field].substr(0, 80))) +
             "\" in place of a number");
    }
    return value;
}

std::uint16_t ScanReader::colour(std::size_t field) const {
    std::uint16_t value = 0;
    if (!csv::parseNumber(m_fields[field], value)) {
        fail("has \"" + validUtf8(std::string(m_fields[field].substr(0, 80))) +
             "\" in place of a colour");
    }
    return value;
}

template <std::size_t size>
std::array<double, size> ScanReader::numbers() {
    nextLine(size);
    std::array<double, size> values{};
    for (std::size_t i = 0; i < size; ++i) {
        values[i] = number(i);
    }
    return values;
}

std::uint64_t ScanReader::count(const char* what) {
    std::uint32_t value = 0;
    if (m_fields.size() != 1 || !csv::parseNumber(m_fields[0], value)) {
        fail(std::string("is not the number of ") + what);
    }
    return value;
}

bool ScanReader::nextScan(Scan& scan) {
    std::string_view line;
    if (!m_lines.next(line)) {
        return false;
    }
    scan = {};
    text::splitFields(line, text::Separator::Blanks, m_fields);
    scan.columns = count("columns");
    nextLine(1);
    scan.rows = count("rows");
    scan.position = numbers<3>();
    for (auto& axis : scan.axes) {
        axis = numbers<3>();
    }
    for (auto& row : scan.matrix) {
        row = numbers<4>();
    }
    for (std::size_t i = 0; i < 3; ++i) {
        scan.pose.translation[i] = scan.matrix[3][i];
        for (std::size_t j = 0; j < 3; ++j) {
            scan.pose.rotation[i][j] = scan.matrix[j][i];
        }
    }
    if (!scan.pose.isFinite()) {
        fail("ends a matrix whose numbers are not finite");
    }
    if (!scan.pose.keepsApart()) {
        fail("ends a matrix that puts different points into the same place");
    }
    scan.width = 0;
    return true;
}

const std::vector<std::string_view>& ScanReader::nextPoint(const Scan& scan) {
    std::string_view line;
    if (!m_lines.next(line)) {
        failFormat("PTX", m_fileName,
                   "it ends within a scan of " + std::to_string(scan.pointCount()) + " points");
    }
    text::splitFields(line, text::Separator::Blanks, m_fields);
    const std::size_t width = m_fields.size();
    if (scan.width == 0 ? width != 4 && width != 7 : width != scan.width) {
        fail("has " + std::to_string(width) + " numbers in place of " +
             (scan.width == 0 ? "4 or 7" : std::to_string(scan.width)));
    }
    return m_fields;
}

}  // namespace tarvo::exchange::ptx
