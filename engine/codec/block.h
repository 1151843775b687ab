// A decoded block as it is kept in memory: the codes of one element for the points of one node, in
// runs of 256. Bit-packed runs stay packed until somebody looks at them, and a block of one code
// stands for as many as there are. What each run lies between is known without a look.
#pragma once

#include "engine/base/bytes.h"
#include "engine/codec/bitpack.h"
#include "engine/schema/column.h"

#include <cstdint>
#include <span>
#include <variant>
#include <vector>

namespace tarvo::engine::codec {

// Immutable: any number of threads may read one.
class Block {
public:
    // The same code for all points. width: 1, 2, 4 or 8 bytes.
    Block(unsigned width, std::size_t count, std::uint64_t code);
    explicit Block(schema::Column column);
    // Of runs as readRuns gives them; their offsets begin at `at` of the bytes and go to their end.
    Block(unsigned width, std::size_t count, std::vector<PackedRun> runs, Bytes bytes,
          std::size_t at);

    unsigned width() const { return m_width; }
    std::size_t size() const { return m_count; }
    // Of memory.
    std::size_t bytes() const;

    // What the codes of a run lie between; there may be none at the borders.
    struct Bounds {
        std::uint64_t low = 0;
        std::uint64_t high = 0;  // inclusive
    };
    Bounds bounds(std::size_t run) const;

    // The codes of a run, in the block itself or put into room, which has place for runLength.
    // T must have the block's width, here and below.
    template <typename T>
    const T* run(std::size_t run, T* room) const;

    template <typename T>
    T code(std::size_t point) const;

    // The codes of the points, which ascend.
    template <typename T>
    void gather(std::span<const std::uint32_t> points, T* out) const;
    // Those of count points from the first.
    template <typename T>
    void read(std::size_t first, std::size_t count, T* out) const;

    schema::Column column() const;

    // Calls function(T{}) with the type of the codes.
    template <typename Function>
    decltype(auto) visit(Function&& function) const {
        switch (m_width) {
            case 1:
                return function(std::uint8_t{});
            case 2:
                return function(std::uint16_t{});
            case 4:
                return function(std::uint32_t{});
            default:
                return function(std::uint64_t{});
        }
    }

private:
    struct Packed {
        std::vector<PackedRun> runs;
        Bytes bytes;  // and readAhead more
        std::size_t at;
    };
    struct Plain {
        schema::Column column;
        std::vector<Bounds> bounds;
    };

    unsigned m_width;
    std::size_t m_count;
    std::variant<std::uint64_t, Packed, Plain> m_codes;
};

}  // namespace tarvo::engine::codec
