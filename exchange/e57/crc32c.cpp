#include "exchange/e57/crc32c.h"

#include <array>
#include <bit>
#include <cstring>

namespace tarvo::exchange::e57 {

namespace {

static_assert(std::endian::native == std::endian::little);

constexpr std::uint32_t polynomial = 0x82f63b78;  // of reflected bits

// Eight bytes at a time: tables[n] is what a byte does that n others follow.
using Tables = std::array<std::array<std::uint32_t, 256>, 8>;

constexpr Tables makeTables() {
    Tables tables{};
    for (std::uint32_t i = 0; i < 256; ++i) {
        std::uint32_t value = i;
        for (int bit = 0; bit < 8; ++bit) {
            value = (value >> 1) ^ ((value & 1) != 0 ? polynomial : 0);
        }
        tables[0][i] = value;
    }
    for (std::uint32_t i = 0; i < 256; ++i) {
        for (std::size_t n = 1; n < 8; ++n) {
            const std::uint32_t before = tables[n - 1][i];
            tables[n][i] = (before >> 8) ^ tables[0][before & 255];
        }
    }
    return tables;
}

constexpr Tables tables = makeTables();

}  // namespace

std::uint32_t crc32c(const std::uint8_t* bytes, std::size_t size) {
    std::uint32_t sum = ~0u;
    for (; size >= 8; bytes += 8, size -= 8) {
        std::uint64_t word = 0;
        std::memcpy(&word, bytes, 8);
        word ^= sum;
        sum = 0;
        for (std::size_t i = 0; i < 8; ++i) {
            sum ^= tables[7 - i][(word >> (8 * i)) & 255];
        }
    }
    for (; size > 0; ++bytes, --size) {
        sum = (sum >> 8) ^ tables[0][(sum ^ *bytes) & 255];
    }
    return ~sum;
}

}  // namespace tarvo::exchange::e57
