#include "engine/schema/column.h"

#include "engine/schema/grid.h"

#include <limits>

namespace tarvo::engine::schema {

namespace {

// Free of branches, so that the compiler turns it into vector instructions.
template <typename T>
ElementStatistics statisticsOf(std::span<const T> codes, bool hasInvalid, T invalid) {
    T minimum = std::numeric_limits<T>::max();
    T maximum = 0;
    if (!hasInvalid) {
        for (const T code : codes) {
            minimum = code < minimum ? code : minimum;
            maximum = code > maximum ? code : maximum;
        }
        return {minimum, maximum, !codes.empty(), false};
    }
    T anyValid = 0;
    T anyInvalid = 0;
    for (const T code : codes) {
        const T valid = static_cast<T>(code == invalid ? 0 : ~T(0));
        const T low = static_cast<T>(code | static_cast<T>(~valid));
        const T high = static_cast<T>(code & valid);
        minimum = low < minimum ? low : minimum;
        maximum = high > maximum ? high : maximum;
        anyValid |= valid;
        anyInvalid |= static_cast<T>(~valid);
    }
    if (anyValid == 0)
        return {0, 0, false, anyInvalid != 0};
    return {minimum, maximum, true, anyInvalid != 0};
}

}  // namespace

ElementStatistics statistics(const Column& column, const Grid& grid) {
    if (column.size() == 0)
        return {};
    return column.visit([&]<typename T>(std::span<const T> codes) {
        // A code that the column's width can't hold doesn't occur in it.
        const bool possible =
            grid.hasInvalid() && grid.invalidCode() <= std::numeric_limits<T>::max();
        return statisticsOf(codes, possible, static_cast<T>(possible ? grid.invalidCode() : 0));
    });
}

}  // namespace tarvo::engine::schema
