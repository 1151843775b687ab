// What follows the header of a PLY file: the values of the vertices.
#pragma once

#include "exchange/ply/header.h"
#include "exchange/table/columnbuffers.h"

#include <memory>

namespace tarvo::exchange::ply {

// Which property of a vertex becomes which column.
struct Field {
    std::size_t property = 0;
    std::size_t column = 0;
    DataType type = DataType::SINGLE;  // of the column
};

class Body {
public:
    virtual ~Body() = default;
    // To the first vertex.
    virtual void rewind() = 0;
    // Reads the next vertices, of which there are as many, into the first rows. Throws Failure.
    virtual void read(std::uint32_t count, ColumnBuffers& buffers) = 0;
    // Lines behind the last element; known once all vertices have been read.
    virtual std::uint64_t linesBehind() const { return 0; }
};

// The header must outlive it. Throws Failure for a file that is too short for its counts.
std::unique_ptr<Body> openAscii(const std::string& fileName, const Header& header,
                                std::vector<Field> fields);
std::unique_ptr<Body> openBinary(const std::string& fileName, const Header& header,
                                 std::vector<Field> fields);

}  // namespace tarvo::exchange::ply
