#include "core/thinning.h"

#include "core/error.h"

#include <bit>
#include <cmath>
#include <cstddef>
#include <limits>
#include <string>
#include <utility>

namespace tarvo::core {

namespace {

constexpr std::uint32_t none = std::numeric_limits<std::uint32_t>::max();
constexpr std::size_t firstSlots = 1 << 10;
// Edge of a cell in distances: what is near to a point lies in one cell or two along each axis,
// as a rule.
constexpr double cellEdge = 3;

// Rounding is monotonic: a coordinate between two others is never in a cell outside theirs.
double cellOf(double coordinate, double distance) {
    return std::floor(coordinate / (cellEdge * distance));
}

}  // namespace

std::size_t Thinning::slot(const Place& cell) const {
    std::uint64_t hash = 0;
    for (const double number : cell) {
        hash ^= std::bit_cast<std::uint64_t>(number + 0.0);  // -0 is 0
        hash *= 0x9e3779b97f4a7c15;
        hash ^= hash >> 32;
        hash *= 0xbf58476d1ce4e5b9;
        hash ^= hash >> 29;
    }
    return hash & (m_heads.size() - 1);
}

bool Thinning::isFree(const Place& place) const {
    double cells[3][3];
    int counts[3] = {};
    for (int i = 0; i < 3; ++i) {
        const double first = cellOf(place[i] - m_distance, m_distance);
        const double last = cellOf(place[i] + m_distance, m_distance);
        // Three where the quotients were rounded apart.
        for (const double cell : {first, first + 1, last})
            if (counts[i] == 0 || (cell > cells[i][counts[i] - 1] && cell <= last))
                cells[i][counts[i]++] = cell;
    }
    const double limit = m_distance * m_distance;
    for (int i = 0; i < counts[0]; ++i)
        for (int j = 0; j < counts[1]; ++j)
            for (int k = 0; k < counts[2]; ++k) {
                std::uint32_t at = m_heads[slot({cells[0][i], cells[1][j], cells[2][k]})];
                for (; at != none; at = m_next[at]) {
                    const Place& other = m_taken[at];
                    double square = 0;
                    for (int axis = 0; axis < 3; ++axis)
                        square += (other[axis] - place[axis]) * (other[axis] - place[axis]);
                    if (square < limit)
                        return false;
                }
            }
    return true;
}

void Thinning::grow() {
    m_heads.assign(m_heads.size() * 2, none);
    for (std::uint32_t i = 0; i < m_taken.size(); ++i) {
        Place cell = m_taken[i];
        for (double& coordinate : cell)
            coordinate = cellOf(coordinate, m_distance);
        std::uint32_t& head = m_heads[slot(cell)];
        m_next[i] = std::exchange(head, i);
    }
}

bool Thinning::take(double x, double y, double z) {
    if (!std::isfinite(x) || !std::isfinite(y) || !std::isfinite(z))
        return true;
    const Place place = {x, y, z};
    if (!isFree(place))
        return false;
    if (m_taken.size() == none)
        throw Failure("More than " + std::to_string(none) + " points keep the distance.",
                      "Thin out with a larger one.");
    m_taken.push_back(place);
    m_next.push_back(none);
    // Many slots stay empty: most looks at them end there.
    if (m_taken.size() > m_heads.size() / 2) {
        grow();
        return true;
    }
    Place cell = place;
    for (double& coordinate : cell)
        coordinate = cellOf(coordinate, m_distance);
    m_next.back() =
        std::exchange(m_heads[slot(cell)], static_cast<std::uint32_t>(m_taken.size() - 1));
    return true;
}

void Thinning::clear() {
    m_taken.clear();
    m_next.clear();
    m_heads.assign(firstSlots, none);
}

}  // namespace tarvo::core
