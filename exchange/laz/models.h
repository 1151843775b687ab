// Adaptive probabilities of bits and symbols. Both sides of the coding keep them alike: each is
// told the symbols in the same order and renews its probabilities at the same moments.
#pragma once

#include <algorithm>
#include <array>
#include <bit>
#include <cstdint>
#include <memory>

namespace tarvo::exchange::laz {

class BitModel {
public:
    static constexpr unsigned precision = 13;  // bits of a probability

    void reset() { *this = {}; }
    std::uint32_t zeroProbability() const { return m_zeroProbability; }
    void count(unsigned bit) {
        m_zeros += 1 - bit;
        if (--m_left == 0) {
            renew();
        }
    }

private:
    void renew();

    std::uint32_t m_zeros = 1;
    std::uint32_t m_total = 2;
    std::uint32_t m_zeroProbability = 1u << (precision - 1);
    std::uint32_t m_cycle = 4;
    std::uint32_t m_left = 4;
};

// What the models of all sizes do alike, on the arrays of one of them.
struct SymbolStatistics {
    static constexpr unsigned precision = 15;

    // What is looked at together lies together.
    struct Interval {
        std::uint16_t start;
        std::uint16_t count;
    };

    std::uint32_t symbols;
    std::uint32_t total;
    std::uint32_t cycle;
    std::uint32_t left;
    std::uint32_t tableShift;

    void begin(unsigned symbolCount, Interval* intervals, std::uint16_t* table);
    void renew(Interval* intervals, std::uint16_t* table);
    void makeTable(const Interval* intervals, std::uint16_t* table) const;
};

// Of at most `most` symbols. It has no state before begin.
template <unsigned most>
class SymbolModel {
public:
    // Fresh, all symbols alike probable.
    void begin(unsigned symbols = most) {
        m_statistics.begin(symbols, m_intervals.data(), m_table.data());
    }

    // Where a symbol's interval begins, in parts of 2^15.
    std::uint32_t start(unsigned symbol) const { return m_intervals[symbol].start; }
    bool isLast(unsigned symbol) const { return symbol + 1 == m_statistics.symbols; }
    // The symbol in whose interval a part (below 2^15) lies.
    unsigned find(std::uint32_t part) const {
        const std::uint16_t* const slot = m_table.data() + (part >> m_statistics.tableShift);
        unsigned low = slot[0];
        unsigned high = slot[1] + 1u;
        while (high > low + 1) {
            const unsigned middle = (low + high) / 2;
            if (m_intervals[middle].start > part) {
                high = middle;
            } else {
                low = middle;
            }
        }
        return low;
    }
    void count(unsigned symbol) {
        ++m_intervals[symbol].count;
        if (--m_statistics.left == 0) {
            m_statistics.renew(m_intervals.data(), m_table.data());
        }
    }

private:
    SymbolStatistics m_statistics;
    std::array<SymbolStatistics::Interval, most> m_intervals;
    // Between which symbols to search, a slot for each symbol and more up to a power of two.
    std::array<std::uint16_t, std::bit_ceil(most) + 1> m_table;
};

// Models of which most are never met: each begins when it is asked for the first time since reset.
template <unsigned most, unsigned count>
class SymbolModels {
public:
    SymbolModels() : m_models(new Model[count]) {}

    void reset() { m_hasBegun = {}; }
    SymbolModel<most>& operator[](unsigned i) { return at(i, most); }
    SymbolModel<most>& at(unsigned i, unsigned symbols) {
        if (!m_hasBegun[i]) {
            m_hasBegun[i] = true;
            m_models[i].begin(symbols);
        }
        return m_models[i];
    }

private:
    using Model = SymbolModel<most>;
    std::unique_ptr<Model[]> m_models;
    std::array<bool, count> m_hasBegun{};
};

}  // namespace tarvo::exchange::laz
