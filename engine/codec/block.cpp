#include "engine/codec/block.h"

#include "engine/base/instructions.h"

#include <algorithm>
#include <cstring>

namespace tarvo::engine::codec {

namespace {

// Below this many codes of a run it is not unpacked for them.
constexpr std::size_t fewCodes = 24;

std::uint64_t largestCode(unsigned width) {
    return width == 8 ? ~0ull : (1ull << (8 * width)) - 1;
}

template <typename T>
T unpackOne(const std::uint8_t* in, const PackedRun& run, std::size_t index) {
    if (run.bits == 0)
        return static_cast<T>(run.base);
    const std::size_t bit = index * run.bits;
    const std::uint8_t* const from = in + run.at + bit / 8;
    const unsigned shift = bit % 8;
    std::uint64_t word;
    std::memcpy(&word, from, sizeof word);
    word >>= shift;
    if (shift + run.bits > 64)
        word |= static_cast<std::uint64_t>(from[8]) << (64 - shift);
    if (run.bits < 64)
        word &= (1ull << run.bits) - 1;
    return static_cast<T>(run.base + word);
}

template <typename T>
__attribute__((always_inline)) inline void boundLoop(const T* codes, std::size_t count,
                                                     Block::Bounds* bounds) {
    for (std::size_t begin = 0; begin < count; begin += runLength) {
        const std::size_t end = std::min(count, begin + runLength);
        T low = codes[begin];
        T high = codes[begin];
        for (std::size_t i = begin; i < end; ++i) {
            low = codes[i] < low ? codes[i] : low;
            high = codes[i] > high ? codes[i] : high;
        }
        *bounds++ = {low, high};
    }
}

template <typename T>
QRB_WIDE void boundWide(const T* codes, std::size_t count, Block::Bounds* bounds) {
    boundLoop(codes, count, bounds);
}

}  // namespace

Block::Block(unsigned width, std::size_t count, std::uint64_t code)
    : m_width(width), m_count(count), m_codes(code) {}

Block::Block(schema::Column column) : m_width(column.width()), m_count(column.size()) {
    Plain plain{std::move(column), {}};
    plain.bounds.resize((m_count + runLength - 1) / runLength);
    std::as_const(plain.column).visit([&]<typename T>(std::span<const T> codes) {
        if (wideInstructions().load(std::memory_order_relaxed))
            boundWide(codes.data(), m_count, plain.bounds.data());
        else
            boundLoop(codes.data(), m_count, plain.bounds.data());
    });
    m_codes = std::move(plain);
}

Block::Block(unsigned width, std::size_t count, std::vector<PackedRun> runs, Bytes bytes,
             std::size_t at)
    : m_width(width), m_count(count) {
    bytes.resize(bytes.size() + readAhead);
    m_codes = Packed{std::move(runs), std::move(bytes), at};
}

std::size_t Block::bytes() const {
    std::size_t bytes = sizeof *this;
    if (const auto* packed = std::get_if<Packed>(&m_codes))
        bytes += packed->bytes.capacity() + packed->runs.size() * sizeof packed->runs[0];
    if (const auto* plain = std::get_if<Plain>(&m_codes))
        bytes += plain->column.bytes() + plain->bounds.size() * sizeof plain->bounds[0];
    return bytes;
}

Block::Bounds Block::bounds(std::size_t run) const {
    if (const auto* packed = std::get_if<Packed>(&m_codes)) {
        const PackedRun& own = packed->runs[run];
        const std::uint64_t most = largestCode(m_width);
        const std::uint64_t span = own.bits == 64 ? ~0ull : (1ull << own.bits) - 1;
        // A run that goes on behind the largest code begins anew with 0.
        if (span > most - own.base)
            return {0, most};
        return {own.base, own.base + span};
    }
    if (const auto* plain = std::get_if<Plain>(&m_codes))
        return plain->bounds[run];
    const std::uint64_t code = std::get<std::uint64_t>(m_codes);
    return {code, code};
}

template <typename T>
const T* Block::run(std::size_t run, T* room) const {
    if (const auto* packed = std::get_if<Packed>(&m_codes)) {
        const PackedRun& own = packed->runs[run];
        const std::uint8_t* in = packed->bytes.data() + packed->at + own.at;
        std::uint8_t padded[runLength * sizeof(T) + readAhead];
        const std::size_t count = std::min(runLength, m_count - run * runLength);
        if (count < runLength) {
            const std::size_t size = (count * own.bits + 7) / 8;
            std::memcpy(padded, in, size);
            std::memset(padded + size, 0, sizeof padded - size);
            in = padded;
        }
        unpackRun(in, static_cast<T>(own.base), own.bits, room);
        return room;
    }
    if (const auto* plain = std::get_if<Plain>(&m_codes))
        return plain->column.as<T>().data() + run * runLength;
    std::fill_n(room, runLength, static_cast<T>(std::get<std::uint64_t>(m_codes)));
    return room;
}

template <typename T>
T Block::code(std::size_t point) const {
    if (const auto* packed = std::get_if<Packed>(&m_codes))
        return unpackOne<T>(packed->bytes.data() + packed->at, packed->runs[point / runLength],
                            point % runLength);
    if (const auto* plain = std::get_if<Plain>(&m_codes))
        return plain->column.as<T>()[point];
    return static_cast<T>(std::get<std::uint64_t>(m_codes));
}

template <typename T>
void Block::gather(std::span<const std::uint32_t> points, T* out) const {
    T room[runLength];
    for (std::size_t i = 0; i < points.size();) {
        const std::size_t own = points[i] / runLength;
        std::size_t end = i + 1;
        while (end < points.size() && points[end] / runLength == own)
            ++end;
        if (end - i < fewCodes) {
            for (; i < end; ++i)
                out[i] = code<T>(points[i]);
        } else {
            const T* const codes = run(own, room);
            for (; i < end; ++i)
                out[i] = codes[points[i] % runLength];
        }
    }
}

template <typename T>
void Block::read(std::size_t first, std::size_t count, T* out) const {
    T room[runLength];
    while (count > 0) {
        const std::size_t begin = first % runLength;
        const std::size_t length = std::min(count, runLength - begin);
        if (length == runLength) {
            const T* const codes = run(first / runLength, out);
            if (codes != out)
                std::copy_n(codes, length, out);
        } else {
            std::copy_n(run(first / runLength, room) + begin, length, out);
        }
        first += length;
        count -= length;
        out += length;
    }
}

schema::Column Block::column() const {
    if (const auto* plain = std::get_if<Plain>(&m_codes))
        return plain->column;
    schema::Column column = schema::Column::unfilled(m_width, m_count);
    column.visit([this]<typename T>(std::span<T> codes) { read(0, m_count, codes.data()); });
    return column;
}

#define QRB_BLOCK_OF(T)                                                    \
    template const T* Block::run(std::size_t, T*) const;                   \
    template T Block::code(std::size_t) const;                             \
    template void Block::gather(std::span<const std::uint32_t>, T*) const; \
    template void Block::read(std::size_t, std::size_t, T*) const;
QRB_BLOCK_OF(std::uint8_t)
QRB_BLOCK_OF(std::uint16_t)
QRB_BLOCK_OF(std::uint32_t)
QRB_BLOCK_OF(std::uint64_t)
#undef QRB_BLOCK_OF

}  // namespace tarvo::engine::codec
