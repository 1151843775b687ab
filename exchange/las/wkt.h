// Coordinate reference systems as well-known text: the older form of the OGC and that of ISO 19162.
#pragma once

#include "core/referencesystem.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tarvo::exchange::las {

// NAME[value, ..., CHILD[...], ...]
struct WktNode {
    std::string_view keyword;              // as written
    std::vector<std::string_view> values;  // without quotes, in their order
    std::vector<std::size_t> children;     // places in the list
};

struct WktTree {
    std::vector<WktNode> nodes;
    std::vector<std::size_t> roots;
};

// The text must outlive the tree. Nothing for what is no such text, or nests deeper or holds more
// than any system does.
std::optional<WktTree> parseWkt(std::string_view text);

// Nothing where the text can't be read, or is no system of points in space.
std::optional<core::ReferenceSystem> systemOfWkt(std::string_view text);

}  // namespace tarvo::exchange::las
