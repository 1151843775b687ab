#include "exchange/laz/decoder.h"

namespace tarvo::exchange::laz {

void Decoder::begin(std::span<const std::uint8_t> bytes, ByteSource* source) {
    *this = {};
    m_begin = m_at = bytes.data();
    m_end = m_at + bytes.size();
    m_source = source;
    for (int i = 0; i < 4; ++i) {
        m_value = m_value << 8 | nextByte();
    }
    if (m_value >= m_length) {
        m_value = 0;
        fail();
    }
}

std::uint8_t Decoder::byteOfNextBytes() {
    if (m_source) {
        const std::span<const std::uint8_t> bytes = m_source->more();
        if (!bytes.empty()) {
            m_before += static_cast<std::uint64_t>(m_at - m_begin);
            m_begin = m_at = bytes.data();
            m_end = m_at + bytes.size();
            return *m_at++;
        }
    }
    fail();
    return 0;
}

}  // namespace tarvo::exchange::laz
