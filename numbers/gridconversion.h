// What becomes of the values of an attribute when it gets another definition: the one place that
// says so, for those who convert values and for those who tell beforehand what that will do.
#pragma once

#include "numbers/grid.h"

#include <array>
#include <cstdint>

namespace tarvo::numbers {

enum class Fate : std::uint8_t {
    Kept,
    Rounded,       // to a step of the new grid
    Outside,       // of the new range: becomes the invalid value or, without one, the default value
    MadeInvalid,   // is what the new definition calls invalid
    InvalidMoved,  // invalid before and after, by another number
    Validated,     // was invalid, which the new definition doesn't know: becomes the default value
};

// How many values have which fate.
class FateCounts {
public:
    void add(Fate fate, std::uint64_t count = 1) {
        m_counts[static_cast<std::size_t>(fate)] += count;
    }
    void add(const FateCounts& other) {
        for (std::size_t i = 0; i < m_counts.size(); ++i)
            m_counts[i] += other.m_counts[i];
    }
    std::uint64_t of(Fate fate) const { return m_counts[static_cast<std::size_t>(fate)]; }
    // All that are not kept.
    std::uint64_t changed() const;

private:
    std::array<std::uint64_t, 6> m_counts{};
};

// From one grid to another; both must outlive it.
class GridConversion {
public:
    // defaultCode: the default value in the new grid.
    GridConversion(const Grid& from, const Grid& to, std::uint64_t defaultCode);

    struct Result {
        std::uint64_t code;  // in the new grid
        Fate fate;
    };
    Result of(std::uint64_t code) const;
    // Whether all valid codes from first to last and the invalid one are kept for sure. False where
    // that takes a look at each.
    bool keeps(std::uint64_t first, std::uint64_t last) const;

private:
    bool isSame(std::uint64_t code, double before, double after) const;

    const Grid& m_from;
    const Grid& m_to;
    std::uint64_t m_lost;    // what takes the place of values that have none
    Fate m_invalid;          // of values that are invalid
    bool m_whole;            // both are of whole numbers
    double m_tolerance = 0;  // how far two numbers of one value may lie apart
};

}  // namespace tarvo::numbers
