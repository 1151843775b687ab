// The named values of a point attribute: lines "VALUE=NAME".
#pragma once

#include "numbers/grid.h"
#include "qrb/pointattribute.h"

#include <compare>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace tarvo::core {

struct NamedValue {
    std::string value;
    std::string name;
    // As it stood in the definition; empty: new or changed.
    std::string line = {};
    // False: the line is no "VALUE=NAME" and is kept as it stands; name shows it.
    bool understood = true;
};

// The number of a value. Whole ones of 64 bits are exact.
struct NamedNumber {
    double value = 0;
    std::uint64_t magnitude = 0;  // of a whole one from 2^53 on

    friend auto operator<=>(const NamedNumber&, const NamedNumber&) = default;
};

// The number of a value as libraries read it: without a plus sign. Nothing where it is none.
std::optional<NamedNumber> namedNumber(const std::string& text);

// The lines of a definition; lines of nothing but blanks, which say nothing, are left out.
std::vector<NamedValue> readNamedValues(const std::string& text);
// The definition's text. Lines that didn't change are written as they stood.
std::string writeNamedValues(const std::vector<NamedValue>& values);

// Those that the word is the name of, or if there are none, those whose names differ from it in the
// case of letters only; each number once, under the first of its names.
std::vector<NamedValue> valuesNamed(const std::string& word, const std::vector<NamedValue>& values);

struct NamedValueFinding {
    std::size_t row = 0;
    bool error = true;  // else the value only has no effect now
    std::string text;
};
// What can't be kept, or has no effect by the attribute's range and resolution. attribute: may be
// null, and is taken for it where its numbers make no grid.
std::vector<NamedValueFinding> checkNamedValues(const std::vector<NamedValue>& values,
                                                const qrb::pointcloud::PointAttribute* attribute);

// By number; lines that aren't understood stay behind the others.
void sortNamedValues(std::vector<NamedValue>& values);

// Where a value lies: it is stored as it is; rounded to a neighbour; not at all.
enum class ValuePlace { ON_GRID, OFF_GRID, OUTSIDE };
ValuePlace placeOf(double value, const numbers::Grid& grid);

}  // namespace tarvo::core
