// What a point record consists of, and which attributes its parts become.
#pragma once

#include "exchange/las/extrabytes.h"
#include "exchange/table/pointsource.h"

#include <cstdint>
#include <vector>

namespace tarvo::exchange::las {

// How the values of a column are taken out of point records.
struct Field {
    enum class Kind { Plain, Bits, Affine };
    Kind kind = Kind::Plain;
    DataType raw = DataType::UINT8;  // as stored
    std::uint32_t offset = 0;        // bytes from the begin of the record
    std::uint8_t shift = 0;          // Bits: (byte >> shift) & mask
    std::uint8_t mask = 0xff;
    Affine affine;  // Affine: a double
};

struct Dimension {
    Column column;
    Field field;
};

// The dimensions of a file, coordinates first. What means the same as a default attribute has its
// name, the rest is called "las....".
std::vector<Dimension> dimensions(const Header& header, const std::vector<ExtraDimension>& extra);

// Takes a column out of count records of recordLength bytes into packed values of its type.
void decode(const Field& field, const std::uint8_t* records, std::size_t recordLength,
            std::size_t count, void* values);

}  // namespace tarvo::exchange::las
