// GPS times as 64-bit patterns, in up to four sequences that take turns.
#pragma once

#include "exchange/laz/integermodel.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>

namespace tarvo::exchange::laz {

// tellsUnchanged: whether the models have a symbol for "the same time again"; where another field
// tells that, code is called for times that differ only.
template <bool tellsUnchanged>
class GpsTime {
public:
    void begin(std::uint64_t first) {
        m_sequences = {};
        m_sequences[0].time = first;
        m_current = m_newest = 0;
        m_hasBegun = false;
    }

    template <typename Coder>
    std::uint64_t code(Coder& coder, std::uint64_t time) {
        if (!m_hasBegun) {
            m_hasBegun = true;
            m_steady.begin();
            m_still.begin();
            m_integer.reset();
        }
        if (!codeWithin(coder, time) && !codeWithin(coder, time)) {
            coder.fail();  // a switch of sequences behind a switch
        }
        return m_sequences[m_current].time;
    }

private:
    struct Sequence {
        std::uint64_t time = 0;
        std::int32_t step = 0;
        unsigned outliers = 0;  // in a row
    };

    // Symbols as they are with tellsUnchanged; without it those behind "unchanged" move up.
    static constexpr unsigned missing = tellsUnchanged ? 0 : 1;
    enum Still : unsigned { stillUnchanged, stillStep, stillNew, stillSwitch };
    enum Steady : unsigned {
        steadyOutlier = 0,
        steadyMost = 500,
        steadyLeast = 510,
        steadyUnchanged,
        steadyNew,
        steadySwitch
    };

    // False after a switch to another sequence, with which the time is to be coded.
    template <typename Coder>
    bool codeWithin(Coder& coder, std::uint64_t time) {
        return m_sequences[m_current].step == 0 ? codeStill(coder, time) : codeSteady(coder, time);
    }

    template <typename Coder>
    bool codeStill(Coder& coder, std::uint64_t time) {
        Sequence& sequence = m_sequences[m_current];
        const auto difference = static_cast<std::int64_t>(time - sequence.time);
        unsigned symbol = stillStep;
        if constexpr (Coder::encodes) {
            symbol = tellsUnchanged && difference == 0 ? stillUnchanged
                     : fits32(difference)              ? stillStep
                                                       : stillNew + switchFor(time);
        }
        symbol = coder.symbol(m_still, symbol - missing) + missing;
        if (symbol == stillStep) {
            sequence.step = m_integer.code(coder, 0, static_cast<std::int32_t>(difference), 0);
            sequence.time += static_cast<std::uint64_t>(std::int64_t{sequence.step});
            sequence.outliers = 0;
        } else if (symbol == stillNew) {
            beginSequence(coder, time);
        } else if (symbol >= stillSwitch) {
            m_current = (m_current + symbol - stillNew) & 3;
            return false;
        }
        return true;
    }

    template <typename Coder>
    bool codeSteady(Coder& coder, std::uint64_t time) {
        Sequence& sequence = m_sequences[m_current];
        const auto difference = static_cast<std::int64_t>(time - sequence.time);
        unsigned symbol = 0;
        if constexpr (Coder::encodes) {
            symbol = tellsUnchanged && difference == 0 ? steadyUnchanged
                     : fits32(difference)
                         ? multiple(static_cast<std::int32_t>(difference), sequence.step)
                         : steadyNew + switchFor(time);
        }
        // "Unchanged" has the symbols behind it one lower where it is missing.
        const unsigned missingHere = symbol > steadyUnchanged ? missing : 0;
        symbol = coder.symbol(m_steady, symbol - missingHere);
        symbol += symbol >= steadyUnchanged ? missing : 0;
        if (symbol <= steadyLeast) {
            codeMultiple(coder, symbol, static_cast<std::int32_t>(difference));
        } else if (symbol == steadyNew) {
            beginSequence(coder, time);
        } else if (symbol >= steadySwitch) {
            m_current = (m_current + symbol - steadyNew) & 3;
            return false;
        }
        return true;
    }

    // How many steps a difference is: 0 to 500, or 500 - n for -1 to -10.
    static unsigned multiple(std::int32_t difference, std::int32_t step) {
        const float ratio = static_cast<float>(difference) / static_cast<float>(step);
        const long steps = std::lround(std::clamp(ratio, -10.0f, 500.0f));
        return static_cast<unsigned>(steps >= 0 ? steps : steadyMost - steps);
    }

    template <typename Coder>
    void codeMultiple(Coder& coder, unsigned symbol, std::int32_t difference) {
        Sequence& sequence = m_sequences[m_current];
        const std::int32_t steps = symbol <= steadyMost ? static_cast<std::int32_t>(symbol)
                                                        : static_cast<std::int32_t>(steadyMost) -
                                                              static_cast<std::int32_t>(symbol);
        const unsigned context = symbol == steadyOutlier ? 7
                                 : symbol == 1           ? 1
                                 : symbol < 10           ? 2
                                 : symbol < steadyMost   ? 3
                                 : symbol == steadyMost  ? 4
                                 : symbol < steadyLeast  ? 5
                                                         : 6;
        const auto predicted = static_cast<std::int32_t>(static_cast<std::uint32_t>(steps) *
                                                         static_cast<std::uint32_t>(sequence.step));
        difference = m_integer.code(coder, predicted, difference, context);
        sequence.time += static_cast<std::uint64_t>(std::int64_t{difference});
        if (symbol == 1) {
            sequence.outliers = 0;
        } else if (symbol == steadyOutlier || symbol == steadyMost || symbol == steadyLeast) {
            // Only several of them in a row tell another step.
            if (++sequence.outliers > 3) {
                sequence.step = difference;
                sequence.outliers = 0;
            }
        }
    }

    template <typename Coder>
    void beginSequence(Coder& coder, std::uint64_t time) {
        const std::int32_t high =
            m_integer.code(coder, static_cast<std::int32_t>(m_sequences[m_current].time >> 32),
                           static_cast<std::int32_t>(time >> 32), 8);
        const std::uint32_t low = coder.bits(32, static_cast<std::uint32_t>(time));
        m_current = m_newest = (m_newest + 1) & 3;
        m_sequences[m_current] = {};
        m_sequences[m_current].time =
            static_cast<std::uint64_t>(static_cast<std::uint32_t>(high)) << 32 | low;
    }

    // How many sequences further a time is near; 0: nowhere.
    unsigned switchFor(std::uint64_t time) const {
        for (unsigned i = 1; i < 4; ++i) {
            const std::uint64_t there = m_sequences[(m_current + i) & 3].time;
            if (fits32(static_cast<std::int64_t>(time - there))) {
                return i;
            }
        }
        return 0;
    }

    std::array<Sequence, 4> m_sequences;
    unsigned m_current = 0;
    unsigned m_newest = 0;
    bool m_hasBegun = false;
    SymbolModel<516 - missing> m_steady;  // of a sequence with a step
    SymbolModel<6 - missing> m_still;     // of one without
    IntegerModel<32, 9> m_integer;
};

}  // namespace tarvo::exchange::laz
