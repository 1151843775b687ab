// The median of the five values seen last, nearly: new ones push out the greatest and the smallest.
#pragma once

#include <array>
#include <cstdint>

namespace tarvo::exchange::laz {

class Median {
public:
    std::int32_t get() const { return m_values[2]; }
    void add(std::int32_t value) {
        const std::int32_t before = m_values[2];
        if (m_dropsGreatest) {
            unsigned i = 4;
            for (; i > 0 && m_values[i - 1] > value; --i) {
                m_values[i] = m_values[i - 1];
            }
            m_values[i] = value;
            m_dropsGreatest = value < before;
        } else {
            unsigned i = 0;
            for (; i < 4 && m_values[i + 1] < value; ++i) {
                m_values[i] = m_values[i + 1];
            }
            m_values[i] = value;
            m_dropsGreatest = value <= before;
        }
    }

private:
    std::array<std::int32_t, 5> m_values{};  // ascending
    bool m_dropsGreatest = true;
};

}  // namespace tarvo::exchange::laz
