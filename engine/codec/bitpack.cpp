#include "engine/codec/bitpack.h"

#include <algorithm>
#include <array>
#include <bit>
#include <utility>

namespace tarvo::engine::codec {

namespace {

std::size_t runCount(std::size_t count) {
    return (count + runLength - 1) / runLength;
}

std::size_t packedBytes(std::size_t count, unsigned bits) {
    return (count * bits + 7) / 8;
}

std::size_t varintBytes(std::uint64_t value) {
    return (static_cast<std::size_t>(std::bit_width(value | 1)) + 6) / 7;
}

std::uint64_t zigzag(std::uint64_t difference) {
    return (difference << 1) ^ (0 - (difference >> 63));
}

std::uint64_t unzigzag(std::uint64_t value) {
    return (value >> 1) ^ (0 - (value & 1));
}

template <typename T>
void packRun(const T* codes, std::size_t count, T base, unsigned bits, std::uint8_t* out) {
    std::uint64_t word = 0;
    unsigned filled = 0;
    for (std::size_t i = 0; i < count; ++i) {
        const std::uint64_t offset = static_cast<T>(codes[i] - base);
        word |= offset << filled;
        if (filled + bits >= 64) {
            std::memcpy(out, &word, 8);
            out += 8;
            word = filled == 0 ? 0 : offset >> (64 - filled);
            filled = filled + bits - 64;
        } else {
            filled += bits;
        }
    }
    std::memcpy(out, &word, (filled + 7) / 8);
}

// One of eight offsets; eight of them end at a byte's end, so that all shifts are constants.
template <typename T, unsigned Bits, std::size_t Index>
T unpackOne(const std::uint8_t* in, T base) {
    constexpr std::size_t at = Index * Bits / 8;
    constexpr unsigned shift = Index * Bits % 8;
    std::uint64_t word;
    std::memcpy(&word, in + at, 8);
    word >>= shift;
    if constexpr (shift + Bits > 64)
        word |= static_cast<std::uint64_t>(in[at + 8]) << (64 - shift);
    if constexpr (Bits < 64)
        word &= (1ull << Bits) - 1;
    return static_cast<T>(base + static_cast<T>(word));
}

// Writes a whole run; reads up to 16 bytes behind it.
template <typename T, unsigned Bits>
void unpackRun(const std::uint8_t* in, T base, T* out) {
    if constexpr (Bits == 0) {
        std::fill_n(out, runLength, base);
    } else {
        for (std::size_t i = 0; i < runLength; i += 8, in += Bits)
            [&]<std::size_t... Index>(std::index_sequence<Index...>) {
                ((out[i + Index] = unpackOne<T, Bits, Index>(in, base)), ...);
            }
        (std::make_index_sequence<8>());
    }
}

constexpr std::size_t readAhead = 16;

template <typename T>
using Unpack = void (*)(const std::uint8_t*, T, T*);

template <typename T>
constexpr auto unpackers = []<std::size_t... Bits>(std::index_sequence<Bits...>) {
    return std::array<Unpack<T>, sizeof...(Bits)>{unpackRun<T, Bits>...};
}
(std::make_index_sequence<sizeof(T) * 8 + 1>());

template <typename T>
void unpackAll(ByteReader& reader, std::span<T> codes, const std::vector<PackedRun>& runs) {
    std::uint8_t padded[runLength * 8 + readAhead] = {};
    T partial[runLength];
    for (std::size_t r = 0; r < runs.size(); ++r) {
        const std::size_t count = std::min(runLength, codes.size() - r * runLength);
        const std::size_t ahead = reader.left();
        const ByteSpan packed = reader.take(packedBytes(count, runs[r].bits));
        const std::uint8_t* in = packed.data();
        if (ahead < runLength * sizeof(T) + readAhead) {
            std::memcpy(padded, packed.data(), packed.size());
            in = padded;
        }
        T* const out = codes.data() + r * runLength;
        const Unpack<T> unpack = unpackers<T>[runs[r].bits];
        if (count == runLength) {
            unpack(in, static_cast<T>(runs[r].base), out);
        } else {
            unpack(in, static_cast<T>(runs[r].base), partial);
            std::copy_n(partial, count, out);
        }
    }
}

}  // namespace

std::size_t measureRuns(const schema::Column& column, std::vector<PackedRun>& runs) {
    runs.resize(runCount(column.size()));
    std::size_t bytes = 0;
    std::uint64_t before = 0;
    column.visit([&]<typename T>(std::span<const T> codes) {
        for (std::size_t r = 0; r < runs.size(); ++r) {
            const auto run =
                codes.subspan(r * runLength, std::min(runLength, codes.size() - r * runLength));
            T low = run[0];
            T high = run[0];
            for (const T code : run) {
                low = code < low ? code : low;
                high = code > high ? code : high;
            }
            runs[r] = {low, static_cast<unsigned>(std::bit_width(static_cast<T>(high - low)))};
            bytes += 1 + varintBytes(zigzag(low - before)) + packedBytes(run.size(), runs[r].bits);
            before = low;
        }
    });
    return bytes;
}

void packRuns(const schema::Column& column, const std::vector<PackedRun>& runs, Bytes& out) {
    ByteWriter writer(out);
    std::uint64_t before = 0;
    std::size_t bytes = 0;
    for (std::size_t r = 0; r < runs.size(); ++r) {
        out.push_back(static_cast<std::uint8_t>(runs[r].bits));
        writer.varint(zigzag(runs[r].base - before));
        before = runs[r].base;
        bytes += packedBytes(std::min(runLength, column.size() - r * runLength), runs[r].bits);
    }
    std::size_t at = out.size();
    out.resize(at + bytes);
    column.visit([&]<typename T>(std::span<const T> codes) {
        for (std::size_t r = 0; r < runs.size(); ++r) {
            const std::size_t count = std::min(runLength, codes.size() - r * runLength);
            if (runs[r].bits != 0)
                packRun(codes.data() + r * runLength, count, static_cast<T>(runs[r].base),
                        runs[r].bits, out.data() + at);
            at += packedBytes(count, runs[r].bits);
        }
    });
}

schema::Column unpackRuns(ByteReader& reader, unsigned width, std::size_t count,
                          std::vector<PackedRun>& runs) {
    // The directory holds two bytes a run at least: a count that the block can't have is refused
    // before memory is taken for it.
    if (runCount(count) > reader.left() / 2)
        reader.fail("fewer runs than " + std::to_string(count) + " values take");
    runs.resize(runCount(count));
    std::uint64_t base = 0;
    std::size_t bytes = 0;
    for (std::size_t r = 0; r < runs.size(); ++r) {
        runs[r].bits = reader.number<std::uint8_t>();
        if (runs[r].bits > width * 8)
            reader.fail("a run of " + std::to_string(runs[r].bits) + " bits in codes of " +
                        std::to_string(width) + " bytes");
        base += unzigzag(reader.varint());
        if (width < 8 && base >> (width * 8) != 0)
            reader.fail("a base that codes of " + std::to_string(width) + " bytes can't hold");
        runs[r].base = base;
        bytes += packedBytes(std::min(runLength, count - r * runLength), runs[r].bits);
    }
    if (bytes != reader.left())
        reader.fail(std::to_string(reader.left()) + " packed bytes where there should be " +
                    std::to_string(bytes));
    schema::Column column(width, count);
    column.visit([&]<typename T>(std::span<T> codes) { unpackAll<T>(reader, codes, runs); });
    return column;
}

}  // namespace tarvo::engine::codec
