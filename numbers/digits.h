// The digits of numbers, straight into memory: for texts of many numbers. Each function writes from
// at on, returns the end of what counts, and may have used up to roomForDigits bytes.
#pragma once

#include <array>
#include <bit>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <type_traits>

namespace tarvo::numbers {

inline constexpr std::size_t roomForDigits = 32;

// Places behind the mark that writeExactFixed() knows.
inline constexpr int mostExactPlaces = 15;
inline constexpr std::uint64_t powersOfTen[mostExactPlaces + 1] = {1,
                                                                   10,
                                                                   100,
                                                                   1'000,
                                                                   10'000,
                                                                   100'000,
                                                                   1'000'000,
                                                                   10'000'000,
                                                                   100'000'000,
                                                                   1'000'000'000,
                                                                   10'000'000'000,
                                                                   100'000'000'000,
                                                                   1'000'000'000'000,
                                                                   10'000'000'000'000,
                                                                   100'000'000'000'000,
                                                                   1'000'000'000'000'000};

// The eight digits of a number below 10^8, zeros included, a byte each from the lowest byte on: all
// at once within a word.
inline std::uint64_t eightDigits(std::uint32_t number) {
    const std::uint64_t fours = number / 10'000 | std::uint64_t(number % 10'000) << 32;
    const std::uint64_t hundreds = fours * 5243 >> 19 & 0x7f0000007f;
    const std::uint64_t twos = hundreds | (fours - hundreds * 100) << 16;
    const std::uint64_t tens = twos * 103 >> 10 & 0x000f000f000f000f;
    return tens | (twos - tens * 10) << 8;
}

// The text of a number below 256 in three bytes, and its length in the last one.
struct ShortText {
    char bytes[4];
};
inline constexpr std::array<ShortText, 256> shortTexts = [] {
    std::array<ShortText, 256> texts{};
    for (int number = 0; number < 256; ++number) {
        const char length = number < 10 ? 1 : number < 100 ? 2 : 3;
        texts[number].bytes[3] = length;
        for (int at = length - 1, left = number; at >= 0; --at, left /= 10)
            texts[number].bytes[at] = static_cast<char>('0' + left % 10);
    }
    return texts;
}();

inline char* writeEight(char* at, std::uint64_t digits) {
    static_assert(std::endian::native == std::endian::little);
    digits += 0x3030303030303030;
    std::memcpy(at, &digits, sizeof digits);
    return at + sizeof digits;
}

// Any whole number of 64 bits.
template <typename Whole>
requires std::is_integral_v<Whole>
inline char* writeWhole(char* at, Whole number) {
    std::uint64_t size = static_cast<std::uint64_t>(number);
    if constexpr (std::is_signed_v<Whole>) {
        if (number < 0) {
            *at++ = '-';
            size = 0 - size;
        }
    }
    constexpr std::uint64_t eight = powersOfTen[8];
    if (size < shortTexts.size()) {
        const ShortText& text = shortTexts[size];
        std::memcpy(at, text.bytes, sizeof text.bytes);
        return at + text.bytes[3];
    }
    if (size < eight) {
        const std::uint64_t digits = eightDigits(static_cast<std::uint32_t>(size));
        const int zeros = std::countr_zero(digits) / 8;
        writeEight(at, digits >> 8 * zeros);
        return at + 8 - zeros;
    }
    at = writeWhole(at, size / eight);
    return writeEight(at, eightDigits(static_cast<std::uint32_t>(size % eight)));
}

// A number with this many decimal places (0 or more), rounded as its exact value wants it; what
// rounds to zero has no sign. Null where that takes more than a look: for numbers too large or too
// near to the middle of two texts, and for those that are none.
inline char* writeExactFixed(char* at, double number, int places) {
    if (places > mostExactPlaces)
        return nullptr;
    // Below 2^50 the product is off by a sixteenth at most.
    const double scaled = number * static_cast<double>(powersOfTen[places]);
    if (!(std::fabs(scaled) < 0x1p50))
        return nullptr;
    const auto nearest = static_cast<std::int64_t>(scaled + std::copysign(0.5, scaled));
    if (std::fabs(scaled - static_cast<double>(nearest)) > 0.25)
        return nullptr;
    if (nearest < 0)
        *at++ = '-';
    const auto size = static_cast<std::uint64_t>(nearest < 0 ? -nearest : nearest);
    if (places == 0)
        return writeWhole(at, size);
    if (size < powersOfTen[8] && places < 8) {
        const std::uint64_t digits = eightDigits(static_cast<std::uint32_t>(size));
        // One stands before the mark in any case.
        const int zeros = std::countr_zero(digits | 1ull << 8 * (7 - places)) / 8;
        const int whole = 8 - zeros - places;
        writeEight(at, digits >> 8 * zeros);
        writeEight(at + whole + 1, digits >> 8 * (zeros + whole));
        at[whole] = '.';
        return at + whole + 1 + places;
    }
    const std::uint64_t power = powersOfTen[places];
    at = writeWhole(at, size / power);
    char* const end = writeWhole(at, size % power + power);  // a one before the places' zeros
    *at = '.';
    return end;
}

}  // namespace tarvo::numbers
