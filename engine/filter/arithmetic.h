// The operators on single values, shared by constant folding and the batch evaluation, so that
// both give the same to the last bit.
#pragma once

#include "engine/filter/syntax.h"

#include <cmath>
#include <limits>
#include <type_traits>

namespace tarvo::engine::filter {

// T: std::int64_t, Wide or double. The binder has made sure that integers don't overflow and are
// not divided by 0.
template <Operator operation, typename T>
T apply(T a, T b) {
    if constexpr (operation == Operator::Add)
        return a + b;
    else if constexpr (operation == Operator::Subtract)
        return a - b;
    else if constexpr (operation == Operator::Multiply)
        return a * b;
    else if constexpr (operation == Operator::Divide)
        return a / b;
    else if constexpr (std::is_same_v<T, double>)
        return std::fmod(a, b);
    else if constexpr (sizeof(T) == 8)
        return b == -1 ? 0 : a % b;  // the smallest number by -1 traps
    else
        return a % b;
}

// Of two integers of which the second may be 0.
inline double moduloOrNaN(schema::Grid::Wide a, schema::Grid::Wide b) {
    return b == 0 ? std::numeric_limits<double>::quiet_NaN() : static_cast<double>(a % b);
}

template <Operator operation, typename T>
bool compare(T a, T b) {
    if constexpr (operation == Operator::Equal)
        return a == b;
    else if constexpr (operation == Operator::Less)
        return a < b;
    else
        return a <= b;
}

}  // namespace tarvo::engine::filter
