// Where the waveform of a point lies, and the point on it.
#pragma once

#include "exchange/bytes.h"
#include "exchange/laz/integermodel.h"

#include <array>
#include <cstdint>

namespace tarvo::exchange::laz {

struct WavePacket {
    static constexpr unsigned size = 29;

    static WavePacket read(const std::uint8_t* bytes) {
        WavePacket packet;
        packet.descriptor = bytes[0];
        packet.offset = get<std::uint64_t>(bytes + 1);
        packet.bytes = get<std::uint32_t>(bytes + 9);
        for (unsigned i = 0; i < 4; ++i) {
            packet.place[i] = get<std::int32_t>(bytes + 13 + 4 * i);
        }
        return packet;
    }
    void write(std::uint8_t* to) const {
        to[0] = descriptor;
        put(to + 1, offset);
        put(to + 9, bytes);
        for (unsigned i = 0; i < 4; ++i) {
            put(to + 13 + 4 * i, place[i]);
        }
    }
    bool operator==(const WavePacket&) const = default;

    std::uint8_t descriptor = 0;
    std::uint64_t offset = 0;
    std::uint32_t bytes = 0;
    std::array<std::int32_t, 4> place{};  // bit patterns: return location, x(t), y(t), z(t)
};

class WavePacketModel {
public:
    void begin() {
        m_descriptor.begin();
        m_offsetKinds.reset();
        m_offset.reset();
        m_bytes.reset();
        m_location.reset();
        m_direction.reset();
        m_lastKind = 0;
        m_lastDifference = 0;
    }

    template <typename Coder>
    bool code(Coder& coder, const WavePacket& last, WavePacket& now) {
        now.descriptor = static_cast<std::uint8_t>(coder.symbol(m_descriptor, now.descriptor));
        codeOffset(coder, last, now);
        now.bytes = static_cast<std::uint32_t>(m_bytes.code(
            coder, static_cast<std::int32_t>(last.bytes), static_cast<std::int32_t>(now.bytes), 0));
        now.place[0] = m_location.code(coder, last.place[0], now.place[0], 0);
        for (unsigned i = 0; i < 3; ++i) {
            now.place[i + 1] = m_direction.code(coder, last.place[i + 1], now.place[i + 1], i);
        }
        return now != last;
    }

private:
    enum Kind : unsigned { same, behind, near, anywhere };

    template <typename Coder>
    void codeOffset(Coder& coder, const WavePacket& last, WavePacket& now) {
        const auto difference = static_cast<std::int64_t>(now.offset - last.offset);
        unsigned kind = same;
        if constexpr (Coder::encodes) {
            kind = !fits32(difference)                                   ? anywhere
                   : difference == 0                                     ? same
                   : difference == static_cast<std::int64_t>(last.bytes) ? behind
                                                                         : near;
        }
        kind = m_lastKind = coder.symbol(m_offsetKinds[m_lastKind], kind);
        switch (kind) {
            case same:
                now.offset = last.offset;
                break;
            case behind:
                now.offset = last.offset + last.bytes;
                break;
            case near:
                m_lastDifference = m_offset.code(coder, m_lastDifference,
                                                 static_cast<std::int32_t>(difference), 0);
                now.offset =
                    last.offset + static_cast<std::uint64_t>(std::int64_t{m_lastDifference});
                break;
            default:
                now.offset = coder.bits64(now.offset);
        }
    }

    SymbolModel<256> m_descriptor;
    SymbolModels<4, 4> m_offsetKinds;
    IntegerModel<32, 1> m_offset;
    IntegerModel<32, 1> m_bytes;
    IntegerModel<32, 1> m_location;
    IntegerModel<32, 3> m_direction;
    unsigned m_lastKind = 0;
    std::int32_t m_lastDifference = 0;
};

}  // namespace tarvo::exchange::laz
