// How often which value of an element occurs.
//
// A bin stands for one value where an element has few different ones: up to 16, or up to 64 where
// the definition has named values. Else the range that is present is cut into up to 64 bins of the
// same number of steps of the resolution, or, without a resolution, of the same width.
#pragma once

#include "engine/report/leafreader.h"

#include <cstdint>
#include <string>
#include <vector>

namespace tarvo::engine::report {

struct Bin {
    std::string from;  // the values, as decimal numbers, both within the bin; without a resolution
    std::string to;    // `to` belongs to the next bin, but for the last one
    std::uint64_t count = 0;
    std::string name;  // of a single value that the definition names
};

struct Histogram {
    ColumnRef column;
    bool singleValues = false;  // each bin stands for one value, and only those that occur have one
    std::vector<Bin> bins;      // ascending; none where no value is valid
    std::uint64_t count = 0;    // of valid values
    std::uint64_t invalid = 0;
    std::string invalidName;
    std::string minimum;  // of all points, also where only some were read; empty without valid ones
    std::string maximum;
    double mean = 0;  // of the valid values read
};

// Of a file with more than `limit` points only every n-th leaf is read: this n, else 1.
std::uint64_t sampleStep(const Facts& facts, std::uint64_t limit);

// Of every element of every attribute, in their order, from every step-th leaf. Throws
// Failure(Damaged) where points contradict the index.
std::vector<Histogram> makeHistograms(session::Session& session, const Facts& facts,
                                      std::uint64_t step);

}  // namespace tarvo::engine::report
