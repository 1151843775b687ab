#include "engine/codec/bitpack.h"

#include <algorithm>
#include <bit>

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
            runs[r] = {low, static_cast<unsigned>(std::bit_width(static_cast<T>(high - low))), 0};
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

std::vector<PackedRun> readRuns(ByteReader& reader, unsigned width, std::size_t count) {
    // The directory holds two bytes a run at least: a count that the block can't have is refused
    // before memory is taken for it.
    if (runCount(count) > reader.left() / 2)
        reader.fail("fewer runs than " + std::to_string(count) + " values take");
    std::vector<PackedRun> runs(runCount(count));
    std::uint64_t base = 0;
    std::size_t bytes = 0;
    for (std::size_t r = 0; r < runs.size(); ++r) {
        const unsigned bits = reader.number<std::uint8_t>();
        if (bits > width * 8)
            reader.fail("a run of " + std::to_string(bits) + " bits in codes of " +
                        std::to_string(width) + " bytes");
        base += unzigzag(reader.varint());
        if (width < 8 && base >> (width * 8) != 0)
            reader.fail("a base that codes of " + std::to_string(width) + " bytes can't hold");
        runs[r] = {base, bits, bytes};
        bytes += packedBytes(std::min(runLength, count - r * runLength), bits);
    }
    if (bytes != reader.left())
        reader.fail(std::to_string(reader.left()) + " packed bytes where there should be " +
                    std::to_string(bytes));
    return runs;
}

}  // namespace tarvo::engine::codec
