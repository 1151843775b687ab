#include "core/area.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace tarvo::core {

namespace {

constexpr std::size_t mostStrips = 1 << 16;
// An edge stands in so many strips at most, on the average.
constexpr std::size_t mostPerEdge = 16;

bool isBelow(const Vertex& one, const Vertex& other) {
    return one.y < other.y || (one.y == other.y && one.x < other.x);
}

// Each coordinate is half a unit in its last place off, at most.
double slackOf(const Vertex& one, const Vertex& other) {
    const double largest =
        std::max({std::abs(one.x), std::abs(one.y), std::abs(other.x), std::abs(other.y)});
    return 4 * std::numeric_limits<double>::epsilon() * largest *
           (std::abs(other.x - one.x) + std::abs(other.y - one.y));
}

}  // namespace

Area::Area(const std::vector<Polygon>& polygons) {
    bool isFirst = true;
    for (std::size_t i = 0; i < polygons.size(); ++i)
        for (const Ring& ring : polygons[i])
            for (std::size_t k = 0; k < ring.size(); ++k) {
                const Vertex& one = ring[k];
                const Vertex& other = ring[(k + 1) % ring.size()];
                // In one direction, so that neighbours round alike at their common edge.
                const bool isUp = isBelow(one, other);
                m_edges.push_back({isUp ? one : other, isUp ? other : one, slackOf(one, other),
                                   static_cast<std::uint32_t>(i)});
                m_least =
                    isFirst ? one : Vertex{std::min(m_least.x, one.x), std::min(m_least.y, one.y)};
                m_most =
                    isFirst ? one : Vertex{std::max(m_most.x, one.x), std::max(m_most.y, one.y)};
                isFirst = false;
            }
    divide();
}

std::size_t Area::stripOf(double y) const {
    const std::size_t strips = m_begins.size() - 1;
    // Halves, because the whole height may be more than a double holds.
    const double height = m_most.y / 2 - m_least.y / 2;
    if (!(height > 0))
        return 0;
    const double part = (y / 2 - m_least.y / 2) / height;
    return std::min(static_cast<std::size_t>(part * static_cast<double>(strips)), strips - 1);
}

void Area::divide() {
    for (std::size_t strips = std::clamp<std::size_t>(m_edges.size(), 1, mostStrips);;
         strips = (strips + 1) / 2) {
        m_begins.assign(strips + 1, 0);
        std::size_t listed = 0;
        for (const Edge& edge : m_edges)
            listed += stripOf(edge.high.y) - stripOf(edge.low.y) + 1;
        if (strips == 1 || listed <= mostPerEdge * m_edges.size())
            break;
    }
    for (const Edge& edge : m_edges)
        for (std::size_t i = stripOf(edge.low.y); i <= stripOf(edge.high.y); ++i)
            ++m_begins[i + 1];
    for (std::size_t i = 1; i < m_begins.size(); ++i)
        m_begins[i] += m_begins[i - 1];
    m_listed.resize(m_begins.back());
    std::vector<std::size_t> next(m_begins.begin(), m_begins.end() - 1);
    for (std::size_t e = 0; e < m_edges.size(); ++e)
        for (std::size_t i = stripOf(m_edges[e].low.y); i <= stripOf(m_edges[e].high.y); ++i)
            m_listed[next[i]++] = static_cast<std::uint32_t>(e);
}

bool Area::contains(double x, double y) const {
    if (!(x >= m_least.x && x <= m_most.x && y >= m_least.y && y <= m_most.y))
        return false;
    const std::size_t strip = stripOf(y);
    bool isInside = false;
    std::uint32_t polygon = 0;
    for (std::size_t i = m_begins[strip]; i < m_begins[strip + 1]; ++i) {
        const Edge& edge = m_edges[m_listed[i]];
        if (edge.polygon != polygon) {
            if (isInside)
                return true;
            polygon = edge.polygon;
        }
        const Vertex& low = edge.low;
        const Vertex& high = edge.high;
        if (!(y >= low.y && y <= high.y))
            continue;
        // More than 0: the point is left of the edge.
        const double side = (high.x - low.x) * (y - low.y) - (x - low.x) * (high.y - low.y);
        if (std::abs(side) <= edge.slack && x >= std::min(low.x, high.x) &&
            x <= std::max(low.x, high.x))
            return true;
        // Edges hold their lower end, so that a corner counts once.
        if (y < high.y && side > 0)
            isInside = !isInside;
    }
    return isInside;
}

}  // namespace tarvo::core
