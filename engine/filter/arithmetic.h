// The operators on single values, shared by constant folding and the batch evaluation, so that
// both give the same to the last bit.
#pragma once

#include "engine/filter/syntax.h"

#include <cmath>
#include <limits>
#include <type_traits>

namespace tarvo::engine::filter {

// Integers are added modulo 2^64 or 2^128, and their remainder by 0 is 0: the binder has made sure
// that neither occurs, but a damaged column may hold codes that no value has.
template <typename T>
struct UnsignedOf {
    __extension__ typedef unsigned __int128 Type;
};
template <>
struct UnsignedOf<std::int64_t> {
    using Type = std::uint64_t;
};

// T: std::int64_t, Wide or double.
template <Operator operation, typename T>
T apply(T a, T b) {
    if constexpr (std::is_same_v<T, double>) {
        if constexpr (operation == Operator::Add)
            return a + b;
        else if constexpr (operation == Operator::Subtract)
            return a - b;
        else if constexpr (operation == Operator::Multiply)
            return a * b;
        else if constexpr (operation == Operator::Divide)
            return a / b;
        else
            return std::fmod(a, b);
    } else {
        using Unsigned = typename UnsignedOf<T>::Type;
        const auto x = static_cast<Unsigned>(a), y = static_cast<Unsigned>(b);
        if constexpr (operation == Operator::Add)
            return static_cast<T>(x + y);
        else if constexpr (operation == Operator::Subtract)
            return static_cast<T>(x - y);
        else if constexpr (operation == Operator::Multiply)
            return static_cast<T>(x * y);
        else
            return b == 0 || b == -1 ? 0 : a % b;  // the smallest number by -1 traps
    }
}

template <typename T>
T negative(T a) {
    if constexpr (std::is_same_v<T, double>)
        return -a;
    else
        return apply<Operator::Subtract>(T(0), a);
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
