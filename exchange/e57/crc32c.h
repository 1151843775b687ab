// CRC-32C (Castagnoli), as pages of E57 files are checked by.
#pragma once

#include <cstddef>
#include <cstdint>

namespace tarvo::exchange::e57 {

std::uint32_t crc32c(const std::uint8_t* bytes, std::size_t size);

}  // namespace tarvo::exchange::e57
