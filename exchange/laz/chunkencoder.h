// One chunk out of points.
#pragma once

#include "exchange/laz/layout.h"

#include <cstdint>
#include <memory>
#include <vector>

namespace tarvo::exchange::laz {

// It keeps its models' memory from chunk to chunk. Threads have one each.
class ChunkEncoder {
public:
    // Layered items are written in the layout's version.
    explicit ChunkEncoder(const Layout& layout);
    ~ChunkEncoder();

    // The chunk of count (at least 1) records of the layout's length.
    std::vector<std::uint8_t> encode(const std::uint8_t* records, std::uint32_t count);

private:
    struct Records;

    Layout m_layout;
    std::unique_ptr<Records> m_records;
};

}  // namespace tarvo::exchange::laz
