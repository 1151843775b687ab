// Red, green and blue, byte by byte: what green and blue become is told from how red changes.
#pragma once

#include "exchange/laz/models.h"

#include <algorithm>
#include <array>
#include <cstdint>

namespace tarvo::exchange::laz {

struct Colour {
    static constexpr unsigned size = 6;

    static Colour read(const std::uint8_t* bytes) {
        Colour colour;
        for (unsigned i = 0; i < 6; ++i) {
            colour.bytes[i] = bytes[i];
        }
        return colour;
    }
    void write(std::uint8_t* to) const { std::copy(bytes.begin(), bytes.end(), to); }
    bool isGrey() const {
        return bytes[0] == bytes[2] && bytes[0] == bytes[4] && bytes[1] == bytes[3] &&
               bytes[1] == bytes[5];
    }

    std::array<std::uint8_t, 6> bytes{};  // the low and the high one of red, green and blue
};

class ColourModel {
public:
    void begin() {
        m_changes.begin();
        m_bytes.reset();
    }

    // Codes `now` as what follows `last`. Returns whether more than "unchanged" was coded.
    template <typename Coder>
    bool code(Coder& coder, const Colour& last, Colour& now) {
        unsigned changes = 0;
        if constexpr (Coder::encodes) {
            for (unsigned i = 0; i < 6; ++i) {
                changes |= now.bytes[i] != last.bytes[i] ? 1u << i : 0;
            }
            changes |= now.isGrey() ? 0 : isColoured;
        }
        changes = coder.symbol(m_changes, changes);
        codeByte(coder, 0, changes, last, now, last.bytes[0]);
        codeByte(coder, 1, changes, last, now, last.bytes[1]);
        if (changes & isColoured) {
            codeGreenAndBlue(coder, 0, changes, last, now);
            codeGreenAndBlue(coder, 1, changes, last, now);
        } else {
            now.bytes = {now.bytes[0], now.bytes[1], now.bytes[0],
                         now.bytes[1], now.bytes[0], now.bytes[1]};
        }
        return changes != 0;
    }

private:
    static constexpr unsigned isColoured = 64;

    static std::uint8_t clamped(int value) {
        return static_cast<std::uint8_t>(std::clamp(value, 0, 255));
    }

    template <typename Coder>
    void codeByte(Coder& coder, unsigned i, unsigned changes, const Colour& last, Colour& now,
                  std::uint8_t predicted) {
        if (changes & 1u << i) {
            now.bytes[i] = static_cast<std::uint8_t>(
                predicted +
                coder.symbol(m_bytes[i], static_cast<std::uint8_t>(now.bytes[i] - predicted)));
        } else {
            now.bytes[i] = last.bytes[i];
        }
    }

    // Of their low bytes (0) or of their high ones (1).
    template <typename Coder>
    void codeGreenAndBlue(Coder& coder, unsigned half, unsigned changes, const Colour& last,
                          Colour& now) {
        const unsigned green = 2 + half;
        const unsigned blue = 4 + half;
        int change = now.bytes[half] - last.bytes[half];
        codeByte(coder, green, changes, last, now, clamped(change + last.bytes[green]));
        change = (change + now.bytes[green] - last.bytes[green]) / 2;
        codeByte(coder, blue, changes, last, now, clamped(change + last.bytes[blue]));
    }

    SymbolModel<128> m_changes;
    SymbolModels<256, 6> m_bytes;
};

// Near infrared.
class InfraredModel {
public:
    void begin() {
        m_changes.begin();
        m_bytes.reset();
    }

    template <typename Coder>
    bool code(Coder& coder, std::uint16_t last, std::uint16_t& now) {
        unsigned changes = 0;
        if constexpr (Coder::encodes) {
            changes = ((now ^ last) & 0xff ? 1u : 0u) | ((now ^ last) >> 8 ? 2u : 0u);
        }
        changes = coder.symbol(m_changes, changes);
        unsigned bytes = last;
        for (unsigned i = 0; i < 2; ++i) {
            if (changes & 1u << i) {
                const unsigned shift = 8 * i;
                const unsigned before = (last >> shift) & 0xff;
                const unsigned difference =
                    coder.symbol(m_bytes[i], ((now >> shift) - before) & 0xff);
                bytes = (bytes & ~(0xffu << shift)) | ((before + difference) & 0xff) << shift;
            }
        }
        now = static_cast<std::uint16_t>(bytes);
        return changes != 0;
    }

private:
    SymbolModel<4> m_changes;
    SymbolModels<256, 2> m_bytes;
};

}  // namespace tarvo::exchange::laz
