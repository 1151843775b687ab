// The points of a LAS file as columns of numbers for the other engine: the values that our database
// holds, as steps of each attribute's resolution in the smallest type that takes them, so that both
// keep the same and counts agree exactly.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace bench {

enum class ColumnType {
    Unsigned8,
    Unsigned16,
    Unsigned32,
    Signed8,
    Signed16,
    Signed32,
    Signed64,
    Double
};

struct StoredColumn {
    std::string name;  // as filters write it: "tarvo.xyz[0]"
    ColumnType type = ColumnType::Double;
    // Steps are powers of ten: the numbers are decimal ones with so many places.
    int places = 0;
    double resolution = 0;  // 0: the values themselves
    std::vector<std::uint8_t> bytes;

    std::size_t width() const;
    // A value of the file as the whole number of steps that is stored.
    std::int64_t stepsOf(double value) const;
    // A number of the column as both languages write it.
    std::string text(std::int64_t steps) const;
};

struct StoredPoints {
    std::uint64_t count = 0;
    std::vector<StoredColumn> columns;

    const StoredColumn& column(const std::string& name) const;
    // The steps, or the values, of points spread over the file; the same ones for every column.
    std::vector<double> sample(const std::string& name, std::size_t size) const;
};

// database: where the points were imported into. Throws std::runtime_error and qrb::Error.
StoredPoints readPoints(const std::string& lasFile, const std::string& database);

// For each point its place on a Hilbert curve over x and y: neighbours on it are neighbours in
// space.
std::vector<std::uint32_t> hilbertKeys(const StoredPoints& points);

}  // namespace bench
