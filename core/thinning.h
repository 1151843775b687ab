// Points that keep a distance from each other.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace tarvo::core {

// Takes points in their order: each that is no nearer than the distance to one that was taken
// before. Memory is bounded by the points that are taken.
class Thinning {
public:
    static constexpr double leastDistance = 1e-100;  // squares stay numbers
    static constexpr double mostDistance = 1e100;

    // distance: from leastDistance to mostDistance, in the unit of the coordinates.
    explicit Thinning(double distance) : m_distance(distance) { clear(); }

    // Whether the point is taken. One that has no finite place is, and is near to none. Throws
    // Failure if there are more than 2^32 - 2.
    bool take(double x, double y, double z);
    // Back to no points.
    void clear();

private:
    using Place = std::array<double, 3>;

    std::size_t slot(const Place& cell) const;
    bool isFree(const Place& place) const;
    void grow();

    double m_distance;
    std::vector<Place> m_taken;
    // Taken points whose cells share a slot, as a chain: the number of the first in m_heads, of the
    // one after point i in m_next[i].
    std::vector<std::uint32_t> m_next;
    std::vector<std::uint32_t> m_heads;
};

}  // namespace tarvo::core
