#include "exchange/laz/encoder.h"

namespace tarvo::exchange::laz {

void Encoder::begin() {
    m_base = 0;
    m_length = 0xffffffff;
    m_bytes.clear();
}

void Encoder::carry() {
    std::size_t i = m_bytes.size();
    while (i > 0 && ++m_bytes[--i] == 0) {
    }
}

const std::vector<std::uint8_t>& Encoder::finish() {
    const bool isWide = m_length > 2 * leastLength;
    narrow(isWide ? leastLength : leastLength >> 1, leastLength >> (isWide ? 1 : 9));
    m_bytes.insert(m_bytes.end(), isWide ? 3 : 2, 0);
    return m_bytes;
}

}  // namespace tarvo::exchange::laz
