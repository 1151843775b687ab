#include "engine/codec/transform.h"

#include "engine/base/instructions.h"
#include "engine/codec/prefixsums.h"

#include <array>
#include <cmath>

namespace tarvo::engine::codec {

namespace {

template <typename T>
T zigzagDifference(T code, T before) {
    const T difference = static_cast<T>(code - before);
    return static_cast<T>(static_cast<T>(difference << 1) ^
                          static_cast<T>(0 - (difference >> (sizeof(T) * 8 - 1))));
}

template <typename T>
void deltaCodes(std::span<const T> codes, std::span<T> out) {
    if (codes.empty())
        return;
    out[0] = zigzagDifference<T>(codes[0], 0);
    for (std::size_t i = 1; i < codes.size(); ++i)
        out[i] = zigzagDifference(codes[i], codes[i - 1]);
}

template <typename T>
void shuffleCodes(std::span<const T> codes, std::uint8_t* out) {
    for (unsigned plane = 0; plane < sizeof(T); ++plane) {
        std::uint8_t* const bytes = out + plane * codes.size();
        for (std::size_t i = 0; i < codes.size(); ++i)
            bytes[i] = static_cast<std::uint8_t>(codes[i] >> (8 * plane));
    }
}

template <typename T>
__attribute__((always_inline)) inline void unshuffleLoop(const std::uint8_t* __restrict in,
                                                         T* __restrict codes, std::size_t count) {
    for (std::size_t i = 0; i < count; ++i) {
        T code = 0;
        for (unsigned plane = 0; plane < sizeof(T); ++plane)
            code = static_cast<T>(
                code | static_cast<T>(static_cast<T>(in[plane * count + i]) << (8 * plane)));
        codes[i] = code;
    }
}

template <typename T>
QRB_WIDE void unshuffleWide(const std::uint8_t* in, T* codes, std::size_t count) {
    unshuffleLoop(in, codes, count);
}

template <typename T>
void unshuffleCodes(const std::uint8_t* in, std::span<T> codes) {
    if (wideInstructions().load(std::memory_order_relaxed))
        unshuffleWide(in, codes.data(), codes.size());
    else
        unshuffleLoop(in, codes.data(), codes.size());
}

constexpr std::size_t sampleWindow = 512;
constexpr std::size_t sampleWindows = 8;
constexpr std::size_t sampleSize = sampleWindow * sampleWindows;

using Histogram = std::array<std::uint16_t, 256>;

// count * log2(count)
const std::array<float, sampleSize + 1>& logTable() {
    static const auto table = [] {
        std::array<float, sampleSize + 1> values{};
        for (std::size_t i = 1; i < values.size(); ++i)
            values[i] = static_cast<float>(i) * std::log2(static_cast<float>(i));
        return values;
    }();
    return table;
}

// Bits that the sampled bytes take at their entropy, but for a term that all histograms share.
float histogramCost(const Histogram& histogram) {
    const auto& table = logTable();
    float cost = 0;
    for (const std::uint16_t count : histogram)
        cost -= table[count];
    return cost;
}

template <typename T>
double deltaRatioFor(std::span<const T> codes) {
    std::array<Histogram, sizeof(T)> plain{};
    std::array<Histogram, sizeof(T)> delta{};
    const std::size_t windows = codes.size() <= sampleSize ? 1 : sampleWindows;
    const std::size_t length = windows == 1 ? codes.size() : sampleWindow;
    const std::size_t stride = windows == 1 ? 0 : (codes.size() - sampleWindow) / (windows - 1);
    for (std::size_t window = 0; window < windows; ++window)
        for (std::size_t i = window * stride; i < window * stride + length; ++i) {
            const T code = codes[i];
            const T difference = zigzagDifference<T>(code, i == 0 ? T(0) : codes[i - 1]);
            for (unsigned plane = 0; plane < sizeof(T); ++plane) {
                ++plain[plane][(code >> (8 * plane)) & 0xff];
                ++delta[plane][(difference >> (8 * plane)) & 0xff];
            }
        }
    const float total = logTable()[windows * length];
    float plainBits = 0;
    float deltaBits = 0;
    for (unsigned plane = 0; plane < sizeof(T); ++plane) {
        plainBits += total + histogramCost(plain[plane]);
        deltaBits += total + histogramCost(delta[plane]);
    }
    return static_cast<double>(deltaBits + 1) / static_cast<double>(plainBits + 1);
}

}  // namespace

void applyTransform(const schema::Column& column, bool delta, bool shuffle,
                    std::span<std::uint8_t> out, schema::Column& work) {
    column.visit([&]<typename T>(std::span<const T> codes) {
        std::span<const T> source = codes;
        if (delta) {
            if (work.width() != column.width() || work.size() != column.size())
                work = schema::Column(column.width(), column.size());
            deltaCodes<T>(codes, work.as<T>());
            source = std::as_const(work).as<T>();
        }
        if (source.empty())
            return;
        if (shuffle)
            shuffleCodes<T>(source, out.data());
        else
            std::memcpy(out.data(), source.data(), source.size_bytes());
    });
}

void revertTransform(std::span<const std::uint8_t> in, bool delta, bool shuffle,
                     schema::Column& column) {
    column.visit([&]<typename T>(std::span<T> codes) {
        if (codes.empty())
            return;
        if (shuffle)
            unshuffleCodes<T>(in.data(), codes);
        else
            std::memcpy(codes.data(), in.data(), codes.size_bytes());
    });
    if (delta)
        sumDifferences(column);
}

double deltaRatio(const schema::Column& column) {
    return column.visit(
        []<typename T>(std::span<const T> codes) { return deltaRatioFor<T>(codes); });
}

}  // namespace tarvo::engine::codec
