// Sorts many numbers of which few bits differ, faster than comparing them.
#pragma once

#include <algorithm>
#include <array>
#include <bit>
#include <cstddef>
#include <vector>

namespace tarvo::engine {

// Sorts unsigned numbers by their bits from `begin` on; those that are equal there stay in the
// order in which they are. scratch: memory that is reused.
template <typename T>
void radixSort(std::vector<T>& numbers, unsigned begin, std::vector<T>& scratch) {
    constexpr unsigned digitBits = 11;
    constexpr std::size_t few = 64;
    if (numbers.size() <= few) {
        std::stable_sort(numbers.begin(), numbers.end(),
                         [begin](T a, T b) { return a >> begin < b >> begin; });
        return;
    }
    T differing = 0;
    for (const T number : numbers)
        differing |= static_cast<T>(number ^ numbers[0]);
    const auto end = static_cast<unsigned>(std::bit_width(differing));
    if (end <= begin)
        return;
    scratch.resize(numbers.size());
    const unsigned passes = (end - begin + digitBits - 1) / digitBits;
    const unsigned bits = (end - begin + passes - 1) / passes;
    const T mask = (T(1) << bits) - 1;
    for (unsigned pass = 0; pass < passes; ++pass) {
        const unsigned shift = begin + pass * bits;
        std::array<std::size_t, std::size_t(1) << digitBits> places{};
        for (const T number : numbers)
            ++places[(number >> shift) & mask];
        std::size_t place = 0;
        for (std::size_t& count : places) {
            const std::size_t of = count;
            count = place;
            place += of;
        }
        for (const T number : numbers)
            scratch[places[(number >> shift) & mask]++] = number;
        numbers.swap(scratch);
    }
}

}  // namespace tarvo::engine
