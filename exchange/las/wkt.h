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
    // The tree is what stands before: the rest can't be read, or the text is cut off. Of what is
    // open there the innermost node is left out.
    std::string_view rest;
    bool isCut = false;
};

// The text must outlive the tree. What nests deeper or holds more than any system does can't be
// read from there on.
WktTree parseWkt(std::string_view text);

// Nothing where the text is empty but for what stands around texts: blanks, zeros, a byte order
// mark.
std::optional<core::ReferenceSystem> systemOfWkt(std::string_view text);

}  // namespace tarvo::exchange::las
