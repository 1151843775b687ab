// The contexts, one per scanner channel, of what follows a layered point.
#pragma once

#include <array>
#include <memory>

namespace tarvo::exchange::laz {

// In files of item version 3 others than the point's own fields change channels by a rule of their
// own, which writers and readers have agreed on by doing it: whoever goes to a channel that is
// known already predicts from the last value of the channel left, and leaves the new one there.
template <typename Models, typename Value>
class ChannelValues {
public:
    void begin(unsigned channel, const Value& first) {
        m_isUsed = {};
        m_current = channel;
        use(channel, first);
    }

    // Goes to a channel; its models, and the value to predict from and to replace.
    std::pair<Models&, Value&> at(unsigned channel, bool predictsFromOwn) {
        Value* last = &m_channels[m_current]->last;
        if (channel != m_current) {
            if (!m_isUsed[channel]) {
                use(channel, *last);
                last = &m_channels[channel]->last;
            } else if (predictsFromOwn) {
                last = &m_channels[channel]->last;
            }
            m_current = channel;
        }
        return {m_channels[m_current]->models, *last};
    }

private:
    struct Channel {
        Models models;
        Value last;
    };

    void use(unsigned channel, const Value& last) {
        if (!m_channels[channel]) {
            m_channels[channel] = std::make_unique<Channel>();
        }
        m_isUsed[channel] = true;
        m_channels[channel]->models.begin();
        m_channels[channel]->last = last;
    }

    std::array<std::unique_ptr<Channel>, 4> m_channels;
    std::array<bool, 4> m_isUsed{};
    unsigned m_current = 0;
};

}  // namespace tarvo::exchange::laz
