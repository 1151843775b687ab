// The grid of an attribute definition, with the failures of values that it can't hold.
#pragma once

#include "numbers/grid.h"

#include <string>

namespace tarvo::engine::schema {

struct AttributeRecord;

class Grid : public numbers::Grid {
public:
    // Throws Failure(Argument) when the values can't be stored.
    explicit Grid(const AttributeRecord& record);

    // The code of a value. Throws Failure(Range) naming the value and the range when it is
    // neither in the range nor the invalid value.
    std::uint64_t code(double value) const;
    std::uint64_t code(Wide value) const;  // Integer kind only

private:
    [[noreturn]] void failRange(const std::string& value) const;

    std::string m_name;
};

using numbers::fromOrderedBits;
using numbers::orderedBits;

}  // namespace tarvo::engine::schema
