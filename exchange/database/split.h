// The points of a database in parts, each of which one filter expression selects.
#pragma once

#include "exchange/import/importsteps.h"
#include "qrb/pointcloud.h"

#include <cstdint>
#include <string>
#include <vector>

namespace tarvo::exchange::database {

struct Part {
    std::string name;    // for a file name: digits, points, minus signs and underscores, or "none"
    std::string filter;  // what selects its points
    std::uint64_t points = 0;
};

// More parts are refused, once they are counted.
inline constexpr std::size_t mostParts = 1000;

// Squares of x and y of "tarvo.xyz" with lower corners at the multiples of size, which are
// positive numbers; the lower edges belong to a square. filter: which points (empty: all). Reads
// all of them once; progress may be empty. Parts have a point at least and are in the order of x,
// then y. Throws Failure for too many parts, points without a place and coordinates that size
// doesn't divide; qrb::Error.
std::vector<Part> tilesOf(const qrb::Pointcloud& database, double size, const std::string& filter,
                          const ImportProgress& progress);

// By the values of an attribute with one element, ascending. Throws the same.
std::vector<Part> valuesOf(const qrb::Pointcloud& database, const std::string& attribute,
                           const std::string& filter, const ImportProgress& progress);

}  // namespace tarvo::exchange::database
