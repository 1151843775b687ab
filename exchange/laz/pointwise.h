// Records of the point formats 0 to 5: point after point in one stream.
#pragma once

#include "exchange/bytes.h"
#include "exchange/laz/colour.h"
#include "exchange/laz/extrabytes.h"
#include "exchange/laz/gpstime.h"
#include "exchange/laz/layout.h"
#include "exchange/laz/point10.h"
#include "exchange/laz/wavepacket.h"

#include <type_traits>
#include <vector>

namespace tarvo::exchange::laz {

// Read by an encoder, written by a decoder.
template <typename Coder>
using RecordBytes = std::conditional_t<Coder::encodes, const std::uint8_t, std::uint8_t>;

class PointwiseRecords {
public:
    explicit PointwiseRecords(const Layout& layout) : m_layout(layout) {}

    // Begins a chunk behind its first record.
    void begin(const std::uint8_t* first);
    template <typename Coder>
    void code(Coder& coder, RecordBytes<Coder>* record);

private:
    Layout m_layout;
    Point10Model m_point;
    GpsTime<true> m_time;
    ColourModel m_colourModel;
    Colour m_colour;
    WavePacketModel m_wavePacketModel;
    WavePacket m_wavePacket;
    ExtraByteModels m_extraModels;
    std::vector<std::uint8_t> m_extra;
};

inline void PointwiseRecords::begin(const std::uint8_t* first) {
    m_point.begin(Point10::read(first));
    if (m_layout.time) {
        m_time.begin(get<std::uint64_t>(first + m_layout.time));
    }
    if (m_layout.colour) {
        m_colourModel.begin();
        m_colour = Colour::read(first + m_layout.colour);
    }
    if (m_layout.wavePacket) {
        m_wavePacketModel.begin();
        m_wavePacket = WavePacket::read(first + m_layout.wavePacket);
    }
    m_extraModels.begin();
    m_extra.assign(first + m_layout.extra, first + m_layout.recordLength);
}

template <typename Coder>
void PointwiseRecords::code(Coder& coder, RecordBytes<Coder>* record) {
    // An item of the record by its model, which predicts it from the last one.
    const auto codeItem = [&]<typename Value>(Value& last, unsigned place, auto& model) {
        Value now;
        if constexpr (Coder::encodes) {
            now = Value::read(record + place);
        }
        model.code(coder, last, now);
        last = now;
        if constexpr (!Coder::encodes) {
            now.write(record + place);
        }
    };
    Point10 point;
    if constexpr (Coder::encodes) {
        point = Point10::read(record);
    }
    m_point.code(coder, point);
    if constexpr (!Coder::encodes) {
        point.write(record);
    }
    if (m_layout.time) {
        std::uint64_t time = 0;
        if constexpr (Coder::encodes) {
            time = get<std::uint64_t>(record + m_layout.time);
        }
        time = m_time.code(coder, time);
        if constexpr (!Coder::encodes) {
            put(record + m_layout.time, time);
        }
    }
    if (m_layout.colour) {
        codeItem(m_colour, m_layout.colour, m_colourModel);
    }
    if (m_layout.wavePacket) {
        codeItem(m_wavePacket, m_layout.wavePacket, m_wavePacketModel);
    }
    for (std::size_t i = 0; i < m_extra.size(); ++i) {
        RecordBytes<Coder>& byte = record[m_layout.extra + i];
        m_extra[i] = m_extraModels.code(coder, i, m_extra[i], Coder::encodes ? byte : 0);
        if constexpr (!Coder::encodes) {
            byte = m_extra[i];
        }
    }
}

}  // namespace tarvo::exchange::laz
