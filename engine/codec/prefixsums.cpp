#include "engine/codec/prefixsums.h"

#include "engine/base/instructions.h"

#include <span>

#if QRB_HAS_WIDE
#include <immintrin.h>
#endif

namespace tarvo::engine::codec {

namespace {

template <typename T>
void sumPlain(std::span<T> codes, T sum) {
    for (T& code : codes) {
        sum = static_cast<T>(sum + static_cast<T>((code >> 1) ^ static_cast<T>(0 - (code & 1))));
        code = sum;
    }
}

#if QRB_HAS_WIDE

// 32 bytes of codes of one width.
template <std::size_t Width>
struct Vector;

template <>
struct Vector<2> {
    QRB_WIDE static __m256i add(__m256i a, __m256i b) { return _mm256_add_epi16(a, b); }
    QRB_WIDE static __m256i difference(__m256i zigzag) {
        const __m256i sign = _mm256_and_si256(zigzag, _mm256_set1_epi16(1));
        return _mm256_xor_si256(_mm256_srli_epi16(zigzag, 1),
                                _mm256_sub_epi16(_mm256_setzero_si256(), sign));
    }
    // The last code of each half in all places of the half.
    QRB_WIDE static __m256i lastOfHalf(__m256i x) {
        return _mm256_shuffle_epi8(x, _mm256_set1_epi16(0x0f0e));
    }
    QRB_WIDE static __m256i sumHalves(__m256i x) {
        x = add(x, _mm256_slli_si256(x, 2));
        x = add(x, _mm256_slli_si256(x, 4));
        return add(x, _mm256_slli_si256(x, 8));
    }
};

template <>
struct Vector<4> {
    QRB_WIDE static __m256i add(__m256i a, __m256i b) { return _mm256_add_epi32(a, b); }
    QRB_WIDE static __m256i difference(__m256i zigzag) {
        const __m256i sign = _mm256_and_si256(zigzag, _mm256_set1_epi32(1));
        return _mm256_xor_si256(_mm256_srli_epi32(zigzag, 1),
                                _mm256_sub_epi32(_mm256_setzero_si256(), sign));
    }
    QRB_WIDE static __m256i lastOfHalf(__m256i x) { return _mm256_shuffle_epi32(x, 0xff); }
    QRB_WIDE static __m256i sumHalves(__m256i x) {
        x = add(x, _mm256_slli_si256(x, 4));
        return add(x, _mm256_slli_si256(x, 8));
    }
};

template <>
struct Vector<8> {
    QRB_WIDE static __m256i add(__m256i a, __m256i b) { return _mm256_add_epi64(a, b); }
    QRB_WIDE static __m256i difference(__m256i zigzag) {
        const __m256i sign = _mm256_and_si256(zigzag, _mm256_set1_epi64x(1));
        return _mm256_xor_si256(_mm256_srli_epi64(zigzag, 1),
                                _mm256_sub_epi64(_mm256_setzero_si256(), sign));
    }
    QRB_WIDE static __m256i lastOfHalf(__m256i x) { return _mm256_unpackhi_epi64(x, x); }
    QRB_WIDE static __m256i sumHalves(__m256i x) { return add(x, _mm256_slli_si256(x, 8)); }
};

template <typename T>
QRB_WIDE void sumWide(std::span<T> codes) {
    using Lanes = Vector<sizeof(T)>;
    constexpr std::size_t step = 32 / sizeof(T);
    const std::size_t whole = codes.size() / step * step;
    __m256i before = _mm256_setzero_si256();  // the last sum, in all places
    for (std::size_t i = 0; i < whole; i += step) {
        auto* const place = reinterpret_cast<__m256i*>(codes.data() + i);
        __m256i x = Lanes::sumHalves(Lanes::difference(_mm256_loadu_si256(place)));
        x = Lanes::add(x, Lanes::lastOfHalf(_mm256_permute2x128_si256(x, x, 0x08)));
        x = Lanes::add(x, before);
        _mm256_storeu_si256(place, x);
        before = Lanes::lastOfHalf(_mm256_permute2x128_si256(x, x, 0x11));
    }
    sumPlain(codes.subspan(whole), whole > 0 ? codes[whole - 1] : T(0));
}

#endif

}  // namespace

void sumDifferences(schema::Column& codes) {
    codes.visit([]<typename T>(std::span<T> typed) {
#if QRB_HAS_WIDE
        if constexpr (sizeof(T) > 1)
            if (wideInstructions().load(std::memory_order_relaxed))
                return sumWide(typed);
#endif
        sumPlain(typed, T(0));
    });
}

}  // namespace tarvo::engine::codec
