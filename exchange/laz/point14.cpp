#include "exchange/laz/point14.h"

namespace tarvo::exchange::laz {

void Point14Model::begin(const Point14& first) {
    for (const std::unique_ptr<Channel>& channel : m_channels) {
        if (channel) {
            channel->isUsed = false;
        }
    }
    m_current = first.channel;
    channel(m_current).begin(first);
}

void Point14Model::Channel::begin(const Point14& point) {
    isUsed = true;
    last = point;
    timeWasNew = false;
    medians = {};
    heights.fill(point.z);
    intensities.fill(point.intensity);
    changes.reset();
    channel.reset();
    counts.reset();
    numbers.reset();
    otherNumber.reset();
    dx.reset();
    dy.reset();
    z.reset();
    classes.reset();
    flags.reset();
    intensity.reset();
    angle.reset();
    users.reset();
    source.reset();
    time.begin(point.time);
}

unsigned Point14Model::Channel::changesOf(const Point14& now) const {
    unsigned found = 0;
    found |= now.source != last.source ? sourceChanges : 0u;
    found |= now.time != last.time ? timeChanges : 0u;
    found |= now.angle != last.angle ? angleChanges : 0u;
    found |= now.count != last.count ? countChanges : 0u;
    const unsigned step = (now.number - last.number) & 15u;
    return found | (step == 0 ? 0u : step == 1 ? 1u : step == 15 ? 2u : 3u);
}

}  // namespace tarvo::exchange::laz
