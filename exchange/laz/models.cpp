#include "exchange/laz/models.h"

namespace tarvo::exchange::laz {

namespace {

constexpr std::uint32_t mostBits = 1u << BitModel::precision;
constexpr std::uint32_t mostSymbols = 1u << SymbolStatistics::precision;
constexpr std::uint32_t half = 1u << 31;

}  // namespace

void BitModel::renew() {
    m_total += m_cycle;
    if (m_total > mostBits) {
        m_total = (m_total + 1) >> 1;
        m_zeros = (m_zeros + 1) >> 1;
        m_total += m_zeros == m_total ? 1 : 0;
    }
    m_zeroProbability = (m_zeros * (half / m_total)) >> (31 - precision);
    m_cycle = std::min((5 * m_cycle) >> 2, 64u);
    m_left = m_cycle;
}

void SymbolStatistics::begin(unsigned symbolCount, Interval* intervals, std::uint16_t* table) {
    symbols = symbolCount;
    std::fill_n(intervals, symbols, Interval{0, 1});
    total = 0;
    cycle = symbols;
    unsigned bits = 1;
    while (symbols > 1u << bits) {
        ++bits;
    }
    tableShift = precision - bits;
    renew(intervals, table);
    cycle = left = (symbols + 6) >> 1;
}

void SymbolStatistics::renew(Interval* intervals, std::uint16_t* table) {
    total += cycle;
    if (total > mostSymbols) {
        total = 0;
        for (unsigned i = 0; i < symbols; ++i) {
            intervals[i].count = static_cast<std::uint16_t>((intervals[i].count + 1) >> 1);
            total += intervals[i].count;
        }
    }
    const std::uint32_t scale = half / total;
    std::uint32_t sum = 0;
    for (unsigned i = 0; i < symbols; ++i) {
        intervals[i].start = static_cast<std::uint16_t>((scale * sum) >> 16);
        sum += intervals[i].count;
    }
    makeTable(intervals, table);
    cycle = std::min((5 * cycle) >> 2, (symbols + 6) << 3);
    left = cycle;
}

void SymbolStatistics::makeTable(const Interval* intervals, std::uint16_t* table) const {
    const unsigned slots = 1u << (precision - tableShift);
    unsigned slot = 0;
    table[slot++] = 0;
    for (unsigned i = 1; i < symbols; ++i) {
        for (const unsigned last = intervals[i].start >> tableShift; slot <= last; ++slot) {
            table[slot] = static_cast<std::uint16_t>(i - 1);
        }
    }
    for (; slot <= slots; ++slot) {
        table[slot] = static_cast<std::uint16_t>(symbols - 1);
    }
}

}  // namespace tarvo::exchange::laz
