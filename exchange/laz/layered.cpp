#include "exchange/laz/layered.h"

#include "exchange/bytes.h"

namespace tarvo::exchange::laz {

void LayeredRecords::begin(const std::uint8_t* first) {
    const Point14 point = Point14::read(first);
    m_point.begin(point);
    if (m_layout.colour) {
        m_colours.begin(point.channel, readColour(first));
    }
    if (m_layout.wavePacket) {
        m_wavePackets.begin(point.channel, WavePacket::read(first + m_layout.wavePacket));
    }
    if (m_layout.extraCount) {
        m_extra.begin(point.channel, {first + m_layout.extra, first + m_layout.recordLength});
    }
}

LayeredRecords::ColourValues LayeredRecords::readColour(const std::uint8_t* record) const {
    ColourValues values;
    values.colour = Colour::read(record + m_layout.colour);
    if (m_layout.infrared) {
        values.infrared = get<std::uint16_t>(record + m_layout.infrared);
    }
    return values;
}

}  // namespace tarvo::exchange::laz
