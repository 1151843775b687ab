// The fields that the point formats 6 to 10 have in common, each in a stream of its own, with
// models per scanner channel.
#pragma once

#include "exchange/bytes.h"
#include "exchange/laz/gpstime.h"
#include "exchange/laz/integermodel.h"
#include "exchange/laz/layer.h"
#include "exchange/laz/median.h"

#include <array>
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <span>

namespace tarvo::exchange::laz {

struct Point14 {
    static constexpr unsigned size = 30;

    static Point14 read(const std::uint8_t* bytes) {
        Point14 point;
        point.x = get<std::int32_t>(bytes);
        point.y = get<std::int32_t>(bytes + 4);
        point.z = get<std::int32_t>(bytes + 8);
        point.intensity = get<std::uint16_t>(bytes + 12);
        point.number = bytes[14] & 15;
        point.count = bytes[14] >> 4;
        point.channel = (bytes[15] >> 4) & 3;
        point.flags = static_cast<std::uint8_t>((bytes[15] & 15) | (bytes[15] >> 6) << 4);
        point.classification = bytes[16];
        point.user = bytes[17];
        point.angle = get<std::int16_t>(bytes + 18);
        point.source = get<std::uint16_t>(bytes + 20);
        point.time = get<std::uint64_t>(bytes + 22);
        return point;
    }
    void write(std::uint8_t* to) const {
        put(to, x);
        put(to + 4, y);
        put(to + 8, z);
        put(to + 12, intensity);
        to[14] = static_cast<std::uint8_t>(number | count << 4);
        to[15] = static_cast<std::uint8_t>((flags & 15) | channel << 4 | (flags >> 4) << 6);
        to[16] = classification;
        to[17] = user;
        put(to + 18, angle);
        put(to + 20, source);
        put(to + 22, time);
    }

    std::int32_t x = 0, y = 0, z = 0;
    std::uint16_t intensity = 0;
    std::uint8_t number = 0;  // of the return, 0 to 15
    std::uint8_t count = 0;   // of returns
    std::uint8_t channel = 0;
    std::uint8_t flags = 0;  // four of classification, direction of scan, edge of flight line
    std::uint8_t classification = 0;
    std::uint8_t user = 0;
    std::int16_t angle = 0;
    std::uint16_t source = 0;
    std::uint64_t time = 0;  // bit pattern
};

class Point14Model {
public:
    enum Layers : unsigned {
        positionLayer,  // with channel and returns
        heightLayer,
        classLayer,
        flagsLayer,
        intensityLayer,
        angleLayer,
        userLayer,
        sourceLayer,
        timeLayer,
        layerCount
    };

    void begin(const Point14& first);

    // Returns whether the point is of another channel than the one before.
    template <typename Coder>
    bool code(std::span<Layer<Coder>> layers, Point14& now);

private:
    enum Changes : unsigned {
        numberChanges = 3,  // 1: one more, 2: one less, 3: otherwise
        countChanges = 4,
        angleChanges = 8,
        timeChanges = 16,
        sourceChanges = 32,
        channelChanges = 64
    };

    struct Medians {
        Median x, y;
    };

    // The models of a channel and what they predict from.
    struct Channel {
        void begin(const Point14& point);
        unsigned changesOf(const Point14& now) const;
        template <typename Coder>
        void codeReturns(Coder& coder, unsigned changes, Point14& now);
        template <typename Coder>
        void codePosition(std::span<Layer<Coder>> layers, bool timeIsNew, Point14& now);
        template <typename Coder>
        void codeOthers(std::span<Layer<Coder>> layers, unsigned changes, Point14& now);

        bool isUsed = false;
        Point14 last;
        bool timeWasNew = false;
        std::array<Medians, 12> medians;
        std::array<std::int32_t, 8> heights;
        std::array<std::uint16_t, 8> intensities;
        SymbolModels<128, 8> changes;
        SymbolModels<3, 1> channel;
        SymbolModels<16, 16> counts, numbers;
        SymbolModels<13, 1> otherNumber;
        IntegerModel<32, 2> dx;
        IntegerModel<32, 22> dy;
        IntegerModel<32, 20> z;
        SymbolModels<256, 64> classes;
        SymbolModels<64, 64> flags;
        IntegerModel<16, 4> intensity;
        IntegerModel<16, 2> angle;
        SymbolModels<256, 64> users;
        IntegerModel<16, 1> source;
        GpsTime<false> time;
    };

    Channel& channel(unsigned i) {
        if (!m_channels[i]) {
            m_channels[i] = std::make_unique<Channel>();
        }
        return *m_channels[i];
    }

    std::array<std::unique_ptr<Channel>, 4> m_channels;  // made when first met
    unsigned m_current = 0;
};

template <typename Coder>
bool Point14Model::code(std::span<Layer<Coder>> layers, Point14& now) {
    Coder& coder = layers[positionLayer].coder;
    Channel* from = m_channels[m_current].get();
    const Point14& before = from->last;
    const unsigned kind = (before.number == 1 ? 1u : 0u) +
                          (before.number >= before.count ? 2u : 0u) + (from->timeWasNew ? 4u : 0u);
    unsigned changes = 0;
    if constexpr (Coder::encodes) {
        const bool isNew = now.channel != m_current;
        const bool isKnown = isNew && m_channels[now.channel] && m_channels[now.channel]->isUsed;
        changes = (isKnown ? *m_channels[now.channel] : *from).changesOf(now) |
                  (isNew ? channelChanges : 0u);
    }
    changes = coder.symbol(from->changes[kind], changes);
    const bool isOtherChannel = (changes & channelChanges) != 0;
    if (isOtherChannel) {
        const unsigned step = coder.symbol(from->channel[0], (now.channel - m_current - 1u) & 3);
        m_current = (m_current + 1 + step) & 3;
        Channel& to = channel(m_current);
        if (!to.isUsed) {
            to.begin(from->last);
        }
        from = &to;
    }
    if constexpr (!Coder::encodes) {
        now = from->last;
    }
    now.channel = static_cast<std::uint8_t>(m_current);
    from->codeReturns(coder, changes, now);
    from->codePosition(layers, (changes & timeChanges) != 0, now);
    from->codeOthers(layers, changes, now);
    from->timeWasNew = (changes & timeChanges) != 0;
    from->last = now;
    return isOtherChannel;
}

template <typename Coder>
void Point14Model::Channel::codeReturns(Coder& coder, unsigned changes, Point14& now) {
    if (changes & countChanges) {
        now.count = static_cast<std::uint8_t>(coder.symbol(counts[last.count], now.count));
    }
    switch (changes & numberChanges) {
        case 0:
            now.number = last.number;
            break;
        case 1:
            now.number = (last.number + 1) & 15;
            break;
        case 2:
            now.number = (last.number + 15) & 15;
            break;
        default:
            if (changes & timeChanges) {
                now.number =
                    static_cast<std::uint8_t>(coder.symbol(numbers[last.number], now.number));
            } else {
                const unsigned step =
                    coder.symbol(otherNumber[0], (now.number - last.number - 2u) & 15);
                now.number = static_cast<std::uint8_t>((last.number + 2u + step) & 15);
            }
    }
}

template <typename Coder>
void Point14Model::Channel::codePosition(std::span<Layer<Coder>> layers, bool timeIsNew,
                                         Point14& now) {
    // By count and number of returns.
    static constexpr std::uint8_t kinds[16][16] = {
        {0, 1, 2, 3, 4, 5, 3, 4, 4, 5, 5, 5, 5, 5, 5, 5},
        {1, 0, 1, 3, 3, 3, 3, 3, 3, 3, 3, 3, 3, 3, 3, 3},
        {2, 1, 2, 4, 4, 4, 4, 4, 4, 4, 4, 3, 3, 3, 3, 3},
        {3, 3, 4, 5, 4, 4, 4, 4, 4, 4, 4, 4, 4, 4, 4, 4},
        {4, 3, 4, 4, 5, 4, 4, 4, 4, 4, 4, 4, 4, 4, 4, 4},
        {5, 3, 4, 4, 4, 5, 4, 4, 4, 4, 4, 4, 4, 4, 4, 4},
        {3, 3, 4, 4, 4, 4, 5, 4, 4, 4, 4, 4, 4, 4, 4, 4},
        {4, 3, 4, 4, 4, 4, 4, 5, 4, 4, 4, 4, 4, 4, 4, 4},
        {4, 3, 4, 4, 4, 4, 4, 4, 5, 4, 4, 4, 4, 4, 4, 4},
        {5, 3, 4, 4, 4, 4, 4, 4, 4, 5, 4, 4, 4, 4, 4, 4},
        {5, 3, 4, 4, 4, 4, 4, 4, 4, 4, 5, 4, 4, 4, 4, 4},
        {5, 3, 3, 4, 4, 4, 4, 4, 4, 4, 4, 5, 5, 4, 4, 4},
        {5, 3, 3, 4, 4, 4, 4, 4, 4, 4, 4, 5, 5, 5, 4, 4},
        {5, 3, 3, 4, 4, 4, 4, 4, 4, 4, 4, 4, 5, 5, 5, 4},
        {5, 3, 3, 4, 4, 4, 4, 4, 4, 4, 4, 4, 4, 5, 5, 5},
        {5, 3, 3, 4, 4, 4, 4, 4, 4, 4, 4, 4, 4, 4, 5, 5}};
    Coder& coder = layers[positionLayer].coder;
    const unsigned single = now.count == 1 ? 1 : 0;
    auto& [medianX, medianY] = medians[2 * kinds[now.count][now.number] + (timeIsNew ? 1 : 0)];
    const std::int32_t stepX = dx.code(coder, medianX.get(), minus(now.x, last.x), single);
    now.x = plus(last.x, stepX);
    medianX.add(stepX);
    const unsigned digitsX = dx.lastDigits();
    const std::int32_t stepY =
        dy.code(coder, medianY.get(), minus(now.y, last.y), single + std::min(digitsX & ~1u, 20u));
    now.y = plus(last.y, stepY);
    medianY.add(stepY);

    const unsigned digits = (digitsX + dy.lastDigits()) / 2;
    std::int32_t& height =
        heights[static_cast<unsigned>(std::min(std::abs(now.count - now.number), 7))];
    layers[heightLayer].code(now.z, last.z, [&](Coder& heightCoder) {
        height = z.code(heightCoder, height, now.z, single + std::min(digits & ~1u, 18u));
        return height;
    });
}

template <typename Coder>
void Point14Model::Channel::codeOthers(std::span<Layer<Coder>> layers, unsigned changes,
                                       Point14& now) {
    const unsigned timeIsNew = changes & timeChanges ? 1 : 0;
    const unsigned kind = (now.number == 1 ? 2u : 0u) + (now.number >= now.count ? 1u : 0u);
    layers[classLayer].code(now.classification, last.classification, [&](Coder& coder) {
        const unsigned context = (last.classification & 31u) << 1 | (kind == 3 ? 1 : 0);
        return coder.symbol(classes[context], now.classification);
    });
    layers[flagsLayer].code(now.flags, last.flags, [&](Coder& coder) {
        return coder.symbol(flags[last.flags], now.flags);
    });
    layers[intensityLayer].code(now.intensity, last.intensity, [&](Coder& coder) {
        std::uint16_t& predicted = intensities[2 * kind + timeIsNew];
        predicted =
            static_cast<std::uint16_t>(intensity.code(coder, predicted, now.intensity, kind));
        return predicted;
    });
    if (changes & angleChanges) {
        layers[angleLayer].code(now.angle, last.angle, [&](Coder& coder) {
            return angle.code(coder, last.angle, now.angle, timeIsNew);
        });
    }
    layers[userLayer].code(now.user, last.user, [&](Coder& coder) {
        return coder.symbol(users[last.user >> 2], now.user);
    });
    if (changes & sourceChanges) {
        layers[sourceLayer].code(now.source, last.source, [&](Coder& coder) {
            return source.code(coder, last.source, now.source, 0);
        });
    }
    if (changes & timeChanges) {
        layers[timeLayer].code(now.time, last.time,
                               [&](Coder& coder) { return time.code(coder, now.time); });
    }
}

}  // namespace tarvo::exchange::laz
