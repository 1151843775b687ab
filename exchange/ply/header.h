// The header of a PLY file: which elements it holds, and what each consists of.
#pragma once

#include "qrb/pointattribute.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace tarvo::exchange::ply {

using qrb::pointcloud::DataType;

enum class Encoding : std::uint8_t { Ascii, LittleEndian, BigEndian };

struct Property {
    std::string name;
    DataType type = DataType::SINGLE;
    std::optional<DataType> countType;  // of a list
};

struct Element {
    std::string name;
    std::uint64_t count = 0;
    std::vector<Property> properties;

    bool hasLists() const;
    // Bytes in a binary file, lists left out.
    std::size_t size() const;
};

struct Header {
    Encoding encoding = Encoding::Ascii;
    std::vector<std::string> comments;
    std::vector<std::string> information;  // lines "obj_info"
    std::vector<Element> elements;
    std::uint64_t dataOffset = 0;  // bytes
};

// Throws Failure.
Header readHeader(const std::string& fileName);

// The element "vertex".
const Element& vertices(const Header& header);

}  // namespace tarvo::exchange::ply
