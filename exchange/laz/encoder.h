// The arithmetic encoder of one stream, which it collects in memory: a carry may reach back any
// distance.
#pragma once

#include "exchange/laz/models.h"

#include <cstdint>
#include <vector>

namespace tarvo::exchange::laz {

class Encoder {
public:
    static constexpr bool encodes = true;

    void begin();

    template <unsigned most>
    unsigned symbol(SymbolModel<most>& model, unsigned symbol) {
        const std::uint32_t whole = m_length;
        m_length >>= SymbolStatistics::precision;
        const std::uint32_t low = model.start(symbol) * m_length;
        const std::uint32_t high =
            model.isLast(symbol) ? whole : model.start(symbol + 1) * m_length;
        narrow(low, high - low);
        model.count(symbol);
        return symbol;
    }

    unsigned bit(BitModel& model, unsigned bit) {
        const std::uint32_t zeros = model.zeroProbability() * (m_length >> BitModel::precision);
        narrow(bit ? zeros : 0, bit ? m_length - zeros : zeros);
        model.count(bit);
        return bit;
    }

    // The lowest 1 to 32 bits of a value.
    std::uint32_t bits(unsigned count, std::uint32_t value) {
        if (count > 19) {
            bits(16, value & 0xffff);
            bits(count - 16, value >> 16);
        } else {
            m_length >>= count;
            narrow(value * m_length, m_length);
        }
        return value;
    }
    std::uint64_t bits64(std::uint64_t value) {
        bits(32, static_cast<std::uint32_t>(value));
        bits(32, static_cast<std::uint32_t>(value >> 32));
        return value;
    }

    void fail() {}

    // Ends the stream: four bytes more, which make its length known to who decodes it.
    const std::vector<std::uint8_t>& finish();

private:
    static constexpr std::uint32_t leastLength = 1u << 24;

    // To a part of the interval.
    void narrow(std::uint32_t low, std::uint32_t length) {
        const std::uint32_t before = m_base;
        m_base += low;
        m_length = length;
        if (m_base < before) {
            carry();
        }
        while (m_length < leastLength) {
            m_bytes.push_back(static_cast<std::uint8_t>(m_base >> 24));
            m_base <<= 8;
            m_length <<= 8;
        }
    }
    void carry();

    std::uint32_t m_base = 0;
    std::uint32_t m_length = 0xffffffff;
    std::vector<std::uint8_t> m_bytes;
};

}  // namespace tarvo::exchange::laz
