// The arithmetic decoder of one stream. It has the functions of the Encoder, whose values it
// ignores and returns what the stream holds, so that a codec is written once for both directions.
#pragma once

#include "exchange/laz/models.h"

#include <cstdint>
#include <span>

namespace tarvo::exchange::laz {

// The bytes of a stream that is not in memory as a whole.
class ByteSource {
public:
    virtual ~ByteSource() = default;
    // The next ones, which stay until the next call; none at the end.
    virtual std::span<const std::uint8_t> more() = 0;
};

class Decoder {
public:
    static constexpr bool encodes = false;

    // Begins a stream; the bytes must outlive the decoding, source, if any, has those behind them.
    void begin(std::span<const std::uint8_t> bytes, ByteSource* source = nullptr);

    template <unsigned most>
    unsigned symbol(SymbolModel<most>& model, unsigned = 0) {
        const std::uint32_t whole = m_length;
        m_length >>= SymbolStatistics::precision;
        // What rounding left over belongs to the last symbol.
        const unsigned symbol = model.find(std::min(m_value / m_length, 32767u));
        const std::uint32_t low = model.start(symbol) * m_length;
        const std::uint32_t high =
            model.isLast(symbol) ? whole : model.start(symbol + 1) * m_length;
        m_value -= low;
        m_length = high - low;
        renormalise();
        model.count(symbol);
        return symbol;
    }

    unsigned bit(BitModel& model, unsigned = 0) {
        const std::uint32_t zeros = model.zeroProbability() * (m_length >> BitModel::precision);
        const unsigned bit = m_value >= zeros ? 1 : 0;
        m_value -= bit ? zeros : 0;
        m_length = bit ? m_length - zeros : zeros;
        renormalise();
        model.count(bit);
        return bit;
    }

    // 1 to 32 bits that no model predicts.
    std::uint32_t bits(unsigned count, std::uint32_t = 0) {
        if (count > 19) {
            const std::uint32_t low = bits(16);
            return bits(count - 16) << 16 | low;
        }
        m_length >>= count;
        const std::uint32_t value = m_value / m_length;
        m_value -= value * m_length;
        if (value >> count) {
            fail();
        }
        renormalise();
        return value;
    }
    std::uint64_t bits64(std::uint64_t = 0) {
        const std::uint64_t low = bits(32);
        return static_cast<std::uint64_t>(bits(32)) << 32 | low;
    }

    // Something was decoded that no encoder writes: what comes now is of no use.
    void fail() { m_isSound = false; }
    // Not so far, and the stream did not end too soon.
    bool isSound() const { return m_isSound; }
    // Bytes taken so far; a stream is as long as what its symbols took.
    std::uint64_t position() const { return m_before + static_cast<std::uint64_t>(m_at - m_begin); }

private:
    static constexpr std::uint32_t leastLength = 1u << 24;

    void renormalise() {
        while (m_length < leastLength) {
            m_value = m_value << 8 | nextByte();
            m_length <<= 8;
        }
    }
    std::uint8_t nextByte() { return m_at != m_end ? *m_at++ : byteOfNextBytes(); }
    std::uint8_t byteOfNextBytes();

    std::uint32_t m_value = 0;
    std::uint32_t m_length = 0xffffffff;
    const std::uint8_t* m_at = nullptr;
    const std::uint8_t* m_end = nullptr;
    const std::uint8_t* m_begin = nullptr;
    std::uint64_t m_before = 0;  // bytes of the stream before m_begin
    ByteSource* m_source = nullptr;
    bool m_isSound = true;
};

}  // namespace tarvo::exchange::laz
