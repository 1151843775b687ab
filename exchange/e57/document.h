// The XML section of an E57 file: what scans there are, and what a record of each consists of.
#pragma once

#include "exchange/e57/pagedfile.h"
#include "exchange/table/pose.h"

#include <array>
#include <cstdint>
#include <limits>
#include <optional>
#include <string>
#include <vector>

namespace tarvo::exchange::e57 {

// A part of a record.
struct Field {
    enum class Kind : std::uint8_t { Integer, Scaled, Single, Double, Text };
    std::string name;
    Kind kind = Kind::Double;
    // Of the stored whole numbers; a Scaled one stands for number * scale + offset.
    std::int64_t minimum = std::numeric_limits<std::int64_t>::min();
    std::int64_t maximum = std::numeric_limits<std::int64_t>::max();
    double scale = 1;
    double offset = 0;

    // Bits of a value; 0 for whole numbers of one value, and for texts, which have no fixed number.
    unsigned bits() const;
};

// What stands for dark and for full brightness.
struct Limits {
    double low = 0;
    double high = 0;
};

struct Scan {
    std::uint64_t offset = 0;  // physical, of the records' section
    std::uint64_t recordCount = 0;
    std::vector<Field> fields;
    Pose pose;
    std::array<std::optional<Limits>, 3> colourLimits;  // red, green, blue

    std::optional<std::size_t> find(const char* name) const;  // a field
};

struct Document {
    std::vector<Scan> scans;
    std::size_t imageCount = 0;
    // JSON texts of what stands in the section besides the description of records: of the file as
    // a whole, and an array of the scans.
    std::string fileJson;
    std::string scansJson;
    std::string coordinateSystem;  // well-known text, or what stands in its place
};

// Throws Failure for a section that is too large, nests too deep or breaks the format's rules.
// Entities are not replaced and nothing outside of the file is read.
Document readDocument(PagedFile& file);

}  // namespace tarvo::exchange::e57
