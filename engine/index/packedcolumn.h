// The codes of one element for the points of a run, in as few bytes as their range needs. A code
// that all points have costs nothing, nor do codes that count up.
#pragma once

#include "engine/schema/column.h"

#include <cstdint>
#include <cstring>
#include <span>
#include <type_traits>
#include <utility>
#include <vector>

namespace tarvo::engine::index {

class PackedColumn {
public:
    // width: of a code, 1, 2, 4 or 8 bytes.
    explicit PackedColumn(unsigned width) : m_width(width) {}

    unsigned width() const { return m_width; }
    std::size_t size() const { return m_count; }
    // Of memory, once it is shrunk.
    std::size_t bytes() const { return m_count * m_bytes; }
    // What the codes lie between, those that were dropped too. There must have been one.
    std::uint64_t minimum() const { return m_minimum; }
    std::uint64_t maximum() const { return m_maximum; }
    // Whether all codes are the minimum.
    bool isConstant() const { return !m_counts && m_minimum == m_maximum; }
    std::uint64_t operator[](std::size_t index) const;

    // Throws std::bad_alloc and then changes nothing.
    template <typename T>
    void append(std::span<const T> codes);
    void append(const schema::Column& codes);
    void appendConstant(std::uint64_t code, std::size_t count);
    // first, first + 1, ...
    void appendCounting(std::uint64_t first, std::size_t count);
    // Drops the last codes; how they are packed stays.
    void truncate(std::size_t count) { m_count = count; }
    // Gives memory back that is not needed without further codes.
    void shrink();

    // The codes of the rows, at the place in a column of the same width.
    void gather(std::span<const std::uint32_t> rows, schema::Column& out, std::size_t at) const;
    // The codes from `begin` on.
    void unpack(std::size_t begin, std::span<std::uint64_t> out) const;

    // Into and out of a temporary file of this process; read gives what is left.
    void write(std::vector<std::uint8_t>& out) const;
    std::span<const std::uint8_t> read(std::span<const std::uint8_t> in);

private:
    // Of each code in the data, which ends with room for a whole number.
    static constexpr std::size_t padding = 8;
    template <unsigned bytes>
    static std::uint64_t load(const std::uint8_t* from) {
        if constexpr (bytes == 0)
            return 0;
        using Whole = std::conditional_t<
            bytes == 1, std::uint8_t,
            std::conditional_t<bytes == 2, std::uint16_t,
                               std::conditional_t<bytes <= 4, std::uint32_t, std::uint64_t>>>;
        Whole code;
        std::memcpy(&code, from, sizeof code);
        if constexpr (bytes == 3 || (bytes > 4 && bytes < 8))
            code &= (Whole(1) << (8 * bytes % 64)) - 1;
        return code;
    }
    template <typename Function>
    static decltype(auto) withBytes(unsigned bytes, Function&& function);

    void makeRoomFor(std::uint64_t low, std::uint64_t high);
    void repack(std::uint64_t base, unsigned bytes);
    template <typename CodeAt>
    void store(std::size_t count, CodeAt codeAt);
    void grow(std::size_t count);

    unsigned m_width;
    unsigned m_bytes = 0;   // of a code in the data
    bool m_counts = false;  // base + index: there is no data
    std::size_t m_count = 0;
    std::uint64_t m_base = 0;
    std::uint64_t m_minimum = 0;
    std::uint64_t m_maximum = 0;
    std::vector<std::uint8_t> m_data;
};

}  // namespace tarvo::engine::index
