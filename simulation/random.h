// Random numbers that are the same everywhere (the standard's distributions are not).
#pragma once

#include <bit>
#include <cmath>
#include <cstdint>

namespace tarvo::simulation {

// xoshiro256++ by Blackman and Vigna (public domain), seeded by splitmix64.
class Random {
public:
    explicit Random(std::uint64_t seed) {
        for (std::uint64_t& word : m_state) {
            seed += 0x9e3779b97f4a7c15u;
            std::uint64_t z = seed;
            z = (z ^ (z >> 30)) * 0xbf58476d1ce4e5b9u;
            z = (z ^ (z >> 27)) * 0x94d049bb133111ebu;
            word = z ^ (z >> 31);
        }
    }

    std::uint64_t next() {
        const std::uint64_t result = std::rotl(m_state[0] + m_state[3], 23) + m_state[0];
        const std::uint64_t t = m_state[1] << 17;
        m_state[2] ^= m_state[0];
        m_state[3] ^= m_state[1];
        m_state[1] ^= m_state[2];
        m_state[0] ^= m_state[3];
        m_state[2] ^= t;
        m_state[3] = std::rotl(m_state[3], 45);
        return result;
    }
    // 0 (included) to 1 (not included).
    double uniform() { return static_cast<double>(next() >> 11) * 0x1p-53; }
    double uniform(double low, double high) { return low + (high - low) * uniform(); }
    // About normal, mean 0, standard deviation 1: the sum of four 16-bit numbers.
    double normal() {
        const std::uint64_t r = next();
        const double sum = static_cast<double>((r & 0xffff) + ((r >> 16) & 0xffff) +
                                               ((r >> 32) & 0xffff) + (r >> 48));
        return (sum / 65536 - 2) * 1.7320508075688772;
    }
    // The way to the next event of a stream with this mean distance.
    double exponential(double mean) { return -mean * std::log(1 - uniform()); }

private:
    std::uint64_t m_state[4];
};

}  // namespace tarvo::simulation
