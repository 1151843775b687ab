// Records of the point formats 6 to 10: each field in a stream of its own.
#pragma once

#include "exchange/bytes.h"
#include "exchange/laz/channelvalues.h"
#include "exchange/laz/colour.h"
#include "exchange/laz/extrabytes.h"
#include "exchange/laz/layout.h"
#include "exchange/laz/point14.h"
#include "exchange/laz/pointwise.h"
#include "exchange/laz/wavepacket.h"

#include <span>
#include <vector>

namespace tarvo::exchange::laz {

class LayeredRecords {
public:
    explicit LayeredRecords(const Layout& layout) : m_layout(layout) {}

    // The streams of a chunk, in their order: the point's, colour, infrared, wave packet, one for
    // each extra byte.
    static std::size_t layerCount(const Layout& layout) {
        return Point14Model::layerCount + (layout.colour ? 1u : 0u) + (layout.infrared ? 1u : 0u) +
               (layout.wavePacket ? 1u : 0u) + layout.extraCount;
    }

    // Begins a chunk behind its first record.
    void begin(const std::uint8_t* first);
    template <typename Coder>
    void code(std::span<Layer<Coder>> layers, RecordBytes<Coder>* record);

private:
    struct ColourModels {
        void begin() {
            colour.begin();
            infrared.begin();
        }
        ColourModel colour;
        InfraredModel infrared;
    };
    struct ColourValues {
        Colour colour;
        std::uint16_t infrared = 0;
    };

    template <typename Coder>
    void codeColour(Layer<Coder>*& layer, unsigned channel, RecordBytes<Coder>* record);
    template <typename Coder>
    void codeWavePacket(Layer<Coder>& layer, unsigned channel, RecordBytes<Coder>* bytes);
    template <typename Coder>
    void codeExtra(Layer<Coder>* layers, unsigned channel, RecordBytes<Coder>* bytes);

    bool predictsFromOwn() const { return m_layout.itemVersion == 4; }
    ColourValues readColour(const std::uint8_t* record) const;

    Layout m_layout;
    Point14Model m_point;
    ChannelValues<ColourModels, ColourValues> m_colours;
    ChannelValues<WavePacketModel, WavePacket> m_wavePackets;
    ChannelValues<ExtraByteModels, std::vector<std::uint8_t>> m_extra;
};

template <typename Coder>
void LayeredRecords::code(std::span<Layer<Coder>> layers, RecordBytes<Coder>* record) {
    Point14 point;
    if constexpr (Coder::encodes) {
        point = Point14::read(record);
    }
    const bool isOtherChannel = m_point.code(layers, point);
    if constexpr (!Coder::encodes) {
        point.write(record);
    }
    // Version 3 knows the channel of a point that changed it, and takes 0 for all others.
    const unsigned channel = isOtherChannel || m_layout.itemVersion == 4 ? point.channel : 0;
    Layer<Coder>* layer = layers.data() + Point14Model::layerCount;
    if (m_layout.colour) {
        codeColour(layer, channel, record);
    }
    if (m_layout.wavePacket) {
        codeWavePacket(*layer++, channel, record + m_layout.wavePacket);
    }
    if (m_layout.extraCount) {
        codeExtra(layer, channel, record + m_layout.extra);
    }
}

template <typename Coder>
void LayeredRecords::codeColour(Layer<Coder>*& layer, unsigned channel,
                                RecordBytes<Coder>* record) {
    const auto [models, last] = m_colours.at(channel, predictsFromOwn());
    ColourValues now = last;
    if constexpr (Coder::encodes) {
        now = readColour(record);
    }
    if (layer->isThere) {
        layer->hasChanged |= models.colour.code(layer->coder, last.colour, now.colour);
    }
    ++layer;
    if (m_layout.infrared) {
        if (layer->isThere) {
            layer->hasChanged |= models.infrared.code(layer->coder, last.infrared, now.infrared);
        }
        ++layer;
    }
    last = now;
    if constexpr (!Coder::encodes) {
        now.colour.write(record + m_layout.colour);
        if (m_layout.infrared) {
            put(record + m_layout.infrared, now.infrared);
        }
    }
}

template <typename Coder>
void LayeredRecords::codeWavePacket(Layer<Coder>& layer, unsigned channel,
                                    RecordBytes<Coder>* bytes) {
    const auto [models, last] = m_wavePackets.at(channel, predictsFromOwn());
    WavePacket now = last;
    if constexpr (Coder::encodes) {
        now = WavePacket::read(bytes);
    }
    if (layer.isThere) {
        layer.hasChanged |= models.code(layer.coder, last, now);
    }
    last = now;
    if constexpr (!Coder::encodes) {
        now.write(bytes);
    }
}

template <typename Coder>
void LayeredRecords::codeExtra(Layer<Coder>* layers, unsigned channel, RecordBytes<Coder>* bytes) {
    const auto [models, last] = m_extra.at(channel, predictsFromOwn());
    for (unsigned i = 0; i < m_layout.extraCount; ++i) {
        Layer<Coder>& layer = layers[i];
        if (layer.isThere) {
            const std::uint8_t now =
                models.code(layer.coder, i, last[i], Coder::encodes ? bytes[i] : 0);
            layer.hasChanged |= now != last[i];
            last[i] = now;
        }
        if constexpr (!Coder::encodes) {
            bytes[i] = last[i];
        }
    }
}

}  // namespace tarvo::exchange::laz
