// The headers of the scans in a PTX file, and its points line by line.
#pragma once

#include "exchange/csv/linereader.h"
#include "exchange/table/pose.h"

#include <array>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace tarvo::exchange::ptx {

// A grid of points, column by column.
struct Scan {
    std::uint64_t columns = 0;
    std::uint64_t rows = 0;
    std::array<double, 3> position{};               // of the scanner
    std::array<std::array<double, 3>, 3> axes{};    // of the scanner
    std::array<std::array<double, 4>, 4> matrix{};  // a point times the matrix
    Pose pose;                                      // the same
    std::size_t width = 4;                          // numbers of a point: 4, with a colour 7

    std::uint64_t pointCount() const { return columns * rows; }
    bool hasColour() const { return width == 7; }
};

class ScanReader {
public:
    explicit ScanReader(const std::string& fileName, const OpenProgress& progress = {})
        : m_fileName(fileName), m_lines(fileName, progress) {}
    void endOpening() { m_lines.endOpening(); }

    void rewind() { m_lines.rewind(); }
    double progress() const;
    // The header of the next scan; false at the end of the file. Throws Failure.
    bool nextScan(Scan& scan);
    // The numbers of the next point of the scan, as they stand there. Throws Failure.
    const std::vector<std::string_view>& nextPoint(const Scan& scan);
    // A number of the last line. Throws Failure.
    double number(std::size_t field) const;
    std::uint16_t colour(std::size_t field) const;

private:
    template <std::size_t size>
    std::array<double, size> numbers();
    std::uint64_t count(const char* what);
    void nextLine(std::size_t width);
    [[noreturn]] void fail(const std::string& what) const;

    std::string m_fileName;
    csv::LineReader m_lines;
    std::vector<std::string_view> m_fields;
};

}  // namespace tarvo::exchange::ptx
