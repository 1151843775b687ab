// The fields that the point formats 0 to 5 have in common.
#pragma once

#include "exchange/bytes.h"
#include "exchange/laz/integermodel.h"
#include "exchange/laz/median.h"

#include <array>
#include <cstdint>
#include <cstdlib>

namespace tarvo::exchange::laz {

struct Point10 {
    static constexpr unsigned size = 20;

    static Point10 read(const std::uint8_t* bytes) {
        Point10 point;
        point.x = get<std::int32_t>(bytes);
        point.y = get<std::int32_t>(bytes + 4);
        point.z = get<std::int32_t>(bytes + 8);
        point.intensity = get<std::uint16_t>(bytes + 12);
        point.returns = bytes[14];
        point.classification = bytes[15];
        point.angle = bytes[16];
        point.user = bytes[17];
        point.source = get<std::uint16_t>(bytes + 18);
        return point;
    }
    void write(std::uint8_t* to) const {
        put(to, x);
        put(to + 4, y);
        put(to + 8, z);
        put(to + 12, intensity);
        to[14] = returns;
        to[15] = classification;
        to[16] = angle;
        to[17] = user;
        put(to + 18, source);
    }
    unsigned number() const { return returns & 7; }
    unsigned count() const { return (returns >> 3) & 7; }

    std::int32_t x = 0, y = 0, z = 0;
    std::uint16_t intensity = 0;
    std::uint8_t returns = 0;  // number, count, direction of scan, edge of flight line
    std::uint8_t classification = 0;
    std::uint8_t angle = 0;
    std::uint8_t user = 0;
    std::uint16_t source = 0;
};

class Point10Model {
public:
    void begin(const Point10& first) {
        m_last = first;
        m_medians = {};
        m_intensities = {};
        m_heights = {};
        m_changes.begin();
        m_returns.reset();
        m_classes.reset();
        m_angles.reset();
        m_users.reset();
        m_intensity.reset();
        m_source.reset();
        m_dx.reset();
        m_dy.reset();
        m_z.reset();
    }

    template <typename Coder>
    void code(Coder& coder, Point10& now) {
        unsigned changes = 0;
        if constexpr (Coder::encodes) {
            changes = changesOf(now);
        } else {
            now = m_last;
        }
        changes = coder.symbol(m_changes, changes);
        if (changes & returnsChange) {
            now.returns =
                static_cast<std::uint8_t>(coder.symbol(m_returns[m_last.returns], now.returns));
        }
        const unsigned kind = kinds[now.count()][now.number()];
        if (changes & intensityChanges) {
            m_intensities[kind] = static_cast<std::uint16_t>(
                m_intensity.code(coder, m_intensities[kind], now.intensity, std::min(kind, 3u)));
        }
        now.intensity = m_intensities[kind];
        if (changes & classChanges) {
            now.classification = static_cast<std::uint8_t>(
                coder.symbol(m_classes[m_last.classification], now.classification));
        }
        if (changes & angleChanges) {
            const unsigned direction = (now.returns >> 6) & 1;
            now.angle = static_cast<std::uint8_t>(
                m_last.angle + coder.symbol(m_angles[direction],
                                            static_cast<std::uint8_t>(now.angle - m_last.angle)));
        }
        if (changes & userChanges) {
            now.user = static_cast<std::uint8_t>(coder.symbol(m_users[m_last.user], now.user));
        }
        if (changes & sourceChanges) {
            now.source =
                static_cast<std::uint16_t>(m_source.code(coder, m_last.source, now.source, 0));
        }
        codePosition(coder, now, kind);
        m_last = now;
    }

private:
    enum Changes : unsigned {
        sourceChanges = 1,
        userChanges = 2,
        angleChanges = 4,
        classChanges = 8,
        intensityChanges = 16,
        returnsChange = 32
    };

    // By count and number of returns.
    static constexpr std::uint8_t kinds[8][8] = {
        {15, 14, 13, 12, 11, 10, 9, 8},  {14, 0, 1, 3, 6, 10, 10, 9},
        {13, 1, 2, 4, 7, 11, 11, 10},    {12, 3, 4, 5, 8, 12, 12, 11},
        {11, 6, 7, 8, 9, 13, 13, 12},    {10, 10, 11, 12, 13, 14, 14, 13},
        {9, 10, 11, 12, 13, 14, 15, 14}, {8, 9, 10, 11, 12, 13, 14, 15}};

    unsigned changesOf(const Point10& now) const {
        unsigned changes = 0;
        changes |= now.returns != m_last.returns ? returnsChange : 0u;
        changes |= now.intensity != m_intensities[kinds[now.count()][now.number()]]
                       ? intensityChanges
                       : 0u;
        changes |= now.classification != m_last.classification ? classChanges : 0u;
        changes |= now.angle != m_last.angle ? angleChanges : 0u;
        changes |= now.user != m_last.user ? userChanges : 0u;
        changes |= now.source != m_last.source ? sourceChanges : 0u;
        return changes;
    }

    template <typename Coder>
    void codePosition(Coder& coder, Point10& now, unsigned kind) {
        const unsigned single = now.count() == 1 ? 1 : 0;
        auto& [medianX, medianY] = m_medians[kind];
        const std::int32_t dx = m_dx.code(coder, medianX.get(), minus(now.x, m_last.x), single);
        now.x = plus(m_last.x, dx);
        medianX.add(dx);
        const unsigned digitsX = m_dx.lastDigits();
        const std::int32_t dy = m_dy.code(coder, medianY.get(), minus(now.y, m_last.y),
                                          single + std::min(digitsX & ~1u, 20u));
        now.y = plus(m_last.y, dy);
        medianY.add(dy);
        const unsigned digits = (digitsX + m_dy.lastDigits()) / 2;
        const auto away =
            static_cast<unsigned>(std::abs(static_cast<int>(now.count() - now.number())));
        m_heights[away] = now.z =
            m_z.code(coder, m_heights[away], now.z, single + std::min(digits & ~1u, 18u));
    }

    struct Medians {
        Median x, y;
    };

    Point10 m_last;
    std::array<Medians, 16> m_medians;
    std::array<std::uint16_t, 16> m_intensities{};
    std::array<std::int32_t, 8> m_heights{};
    SymbolModel<64> m_changes;
    SymbolModels<256, 256> m_returns;
    SymbolModels<256, 256> m_classes;
    SymbolModels<256, 2> m_angles;
    SymbolModels<256, 256> m_users;
    IntegerModel<16, 4> m_intensity;
    IntegerModel<16, 1> m_source;
    IntegerModel<32, 2> m_dx;
    IntegerModel<32, 22> m_dy;
    IntegerModel<32, 20> m_z;
};

}  // namespace tarvo::exchange::laz
