#include "engine/codec/unpack.h"

#include "engine/base/instructions.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <utility>

#if QRB_HAS_WIDE
#include <immintrin.h>
#endif

namespace tarvo::engine::codec {

namespace {

std::uint64_t loadWord(const std::uint8_t* in) {
    std::uint64_t word;
    std::memcpy(&word, in, sizeof word);
    return word;
}

// One of eight offsets; eight of them end at a byte's end, so that all shifts are constants.
template <typename T, unsigned Bits, std::size_t Index>
T unpackOne(const std::uint8_t* in, T base) {
    constexpr std::size_t at = Index * Bits / 8;
    constexpr unsigned shift = Index * Bits % 8;
    std::uint64_t word = loadWord(in + at) >> shift;
    if constexpr (shift + Bits > 64)
        word |= static_cast<std::uint64_t>(in[at + 8]) << (64 - shift);
    if constexpr (Bits < 64)
        word &= (1ull << Bits) - 1;
    return static_cast<T>(base + static_cast<T>(word));
}

template <typename T, unsigned Bits>
void unpackPlain(const std::uint8_t* in, T base, T* out) {
    for (std::size_t i = 0; i < runLength; i += 8, in += Bits)
        [&]<std::size_t... Index>(std::index_sequence<Index...>) {
            ((out[i + Index] = unpackOne<T, Bits, Index>(in, base)), ...);
        }
    (std::make_index_sequence<8>());
}

template <typename T>
using Unpack = void (*)(const std::uint8_t*, T, T*);

template <typename T>
constexpr auto plainUnpackers = []<std::size_t... Bits>(std::index_sequence<Bits...>) {
    return std::array<Unpack<T>, sizeof...(Bits)>{unpackPlain<T, Bits>...};
}
(std::make_index_sequence<sizeof(T) * 8 + 1>());

#if QRB_HAS_WIDE

// The lowest bits of each of the 8 / Size numbers of a word.
template <std::size_t Size>
std::uint64_t lowBits(unsigned bits) {
    std::uint64_t mask = 0;
    for (unsigned at = 0; at < 64; at += 8 * Size)
        mask |= ((1ull << bits) - 1) << at;
    return mask;
}

QRB_WIDE void unpackWide(const std::uint8_t* in, std::uint8_t base, unsigned bits,
                         std::uint8_t* out) {
    const std::uint64_t mask = lowBits<1>(bits);
    const __m128i bases = _mm_set1_epi8(static_cast<char>(base));
    for (std::size_t i = 0; i < runLength; i += 8, in += bits) {
        const __m128i offsets =
            _mm_cvtsi64_si128(static_cast<long long>(_pdep_u64(loadWord(in), mask)));
        _mm_storel_epi64(reinterpret_cast<__m128i*>(out + i), _mm_add_epi8(offsets, bases));
    }
}

QRB_WIDE void unpackWide(const std::uint8_t* in, std::uint16_t base, unsigned bits,
                         std::uint16_t* out) {
    const std::uint64_t mask = lowBits<2>(bits);
    const __m128i bases = _mm_set1_epi16(static_cast<short>(base));
    for (std::size_t i = 0; i < runLength; i += 8, in += bits) {
        const std::uint64_t first = _pdep_u64(loadWord(in), mask);
        const std::uint64_t second = _pdep_u64(loadWord(in + bits / 2) >> (bits % 2 * 4), mask);
        const __m128i offsets =
            _mm_set_epi64x(static_cast<long long>(second), static_cast<long long>(first));
        _mm_storeu_si128(reinterpret_cast<__m128i*>(out + i), _mm_add_epi16(offsets, bases));
    }
}

// How the bytes of eight offsets of at most 25 bits come into eight numbers of 32: two halves of
// four, the second beginning at the byte where its first offset begins.
struct Spread {
    alignas(32) std::array<std::uint8_t, 32> bytes;
    alignas(32) std::array<std::uint32_t, 8> shifts;
};
constexpr unsigned mostSpread = 25;

constexpr auto spreads = [] {
    std::array<Spread, mostSpread + 1> all{};
    for (unsigned bits = 0; bits <= mostSpread; ++bits)
        for (unsigned i = 0; i < 8; ++i) {
            const unsigned half = i < 4 ? 0 : 4 * bits / 8;
            all[bits].shifts[i] = i * bits % 8;
            for (unsigned b = 0; b < 4; ++b)
                all[bits].bytes[i * 4 + b] = static_cast<std::uint8_t>(i * bits / 8 - half + b);
        }
    return all;
}();

__attribute__((always_inline)) QRB_WIDE inline __m256i eightOffsets(const std::uint8_t* in,
                                                                    unsigned bits, __m256i bytes,
                                                                    __m256i shifts, __m256i mask) {
    const __m128i low = _mm_loadu_si128(reinterpret_cast<const __m128i*>(in));
    const __m128i high = _mm_loadu_si128(reinterpret_cast<const __m128i*>(in + bits / 2));
    const __m256i both = _mm256_inserti128_si256(_mm256_castsi128_si256(low), high, 1);
    return _mm256_and_si256(_mm256_srlv_epi32(_mm256_shuffle_epi8(both, bytes), shifts), mask);
}

QRB_WIDE void unpackWide(const std::uint8_t* in, std::uint32_t base, unsigned bits,
                         std::uint32_t* out) {
    const Spread& spread = spreads[bits];
    const __m256i bytes = _mm256_load_si256(reinterpret_cast<const __m256i*>(&spread.bytes));
    const __m256i shifts = _mm256_load_si256(reinterpret_cast<const __m256i*>(&spread.shifts));
    const __m256i mask = _mm256_set1_epi32(static_cast<int>((1u << bits) - 1));
    const __m256i bases = _mm256_set1_epi32(static_cast<int>(base));
    for (std::size_t i = 0; i < runLength; i += 8, in += bits)
        _mm256_storeu_si256(reinterpret_cast<__m256i*>(out + i),
                            _mm256_add_epi32(eightOffsets(in, bits, bytes, shifts, mask), bases));
}

QRB_WIDE void unpackWide(const std::uint8_t* in, std::uint64_t base, unsigned bits,
                         std::uint64_t* out) {
    const Spread& spread = spreads[bits];
    const __m256i bytes = _mm256_load_si256(reinterpret_cast<const __m256i*>(&spread.bytes));
    const __m256i shifts = _mm256_load_si256(reinterpret_cast<const __m256i*>(&spread.shifts));
    const __m256i mask = _mm256_set1_epi32(static_cast<int>((1u << bits) - 1));
    const __m256i bases = _mm256_set1_epi64x(static_cast<long long>(base));
    for (std::size_t i = 0; i < runLength; i += 8, in += bits) {
        const __m256i offsets = eightOffsets(in, bits, bytes, shifts, mask);
        const __m256i low = _mm256_cvtepu32_epi64(_mm256_castsi256_si128(offsets));
        const __m256i high = _mm256_cvtepu32_epi64(_mm256_extracti128_si256(offsets, 1));
        _mm256_storeu_si256(reinterpret_cast<__m256i*>(out + i), _mm256_add_epi64(low, bases));
        _mm256_storeu_si256(reinterpret_cast<__m256i*>(out + i + 4), _mm256_add_epi64(high, bases));
    }
}

#endif

}  // namespace

template <typename T>
void unpackRun(const std::uint8_t* in, T base, unsigned bits, T* out) {
    if (bits == 0) {
        std::fill_n(out, runLength, base);
        return;
    }
#if QRB_HAS_WIDE
    if (bits <= mostSpread && wideInstructions().load(std::memory_order_relaxed)) {
        unpackWide(in, base, bits, out);
        return;
    }
#endif
    plainUnpackers<T>[bits](in, base, out);
}

template void unpackRun(const std::uint8_t*, std::uint8_t, unsigned, std::uint8_t*);
template void unpackRun(const std::uint8_t*, std::uint16_t, unsigned, std::uint16_t*);
template void unpackRun(const std::uint8_t*, std::uint32_t, unsigned, std::uint32_t*);
template void unpackRun(const std::uint8_t*, std::uint64_t, unsigned, std::uint64_t*);

}  // namespace tarvo::engine::codec
