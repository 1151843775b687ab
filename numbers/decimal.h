// The decimal number that people mean by a double: 0.01 is one hundredth, not the double beside it.
#pragma once

#include <cstdint>

namespace tarvo::numbers {

// digits * 10^exponent
struct Decimal {
    std::int64_t digits = 0;  // at most 17 of them; no zero at the end but of 0 itself
    int exponent = 0;         // 0 for 0

    // Places behind the decimal mark; 0 for whole numbers.
    int places() const { return exponent < 0 ? -exponent : 0; }
};

// The shortest decimal number that reads back as this finite double.
Decimal shortestDecimal(double value);

}  // namespace tarvo::numbers
