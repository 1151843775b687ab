// A reference to bytes that the container keeps: part of a blob, its length and its checksum.
#pragma once

#include <cstdint>

namespace tarvo::engine {

struct BlobRef {
    std::uint64_t blob = 0;  // 0: refers to nothing
    std::uint64_t offset = 0;
    std::uint32_t length = 0;
    std::uint64_t checksum = 0;

    explicit operator bool() const { return blob != 0; }
    bool operator==(const BlobRef&) const = default;
};

}  // namespace tarvo::engine
