// Areas in x and y that polygons enclose.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace tarvo::core {

struct Vertex {
    double x = 0;
    double y = 0;
};

// Corners in either direction; the last edge leads from the last corner to the first.
using Ring = std::vector<Vertex>;
// Outline and holes: what an odd number of rings encloses is inside (even-odd rule), so that a ring
// that crosses itself is no fault.
using Polygon = std::vector<Ring>;

// What one polygon at least encloses. A point on an edge, that of a hole too, is inside, also
// where it lies there in decimal digits, and beside it by the rounding of doubles; two polygons
// with an edge in common leave no gap there.
class Area {
public:
    // Corners must be finite, and there must be one at least.
    explicit Area(const std::vector<Polygon>& polygons);

    bool contains(double x, double y) const;
    // The smallest and largest x and y.
    const Vertex& least() const { return m_least; }
    const Vertex& most() const { return m_most; }

private:
    struct Edge {
        Vertex low;  // y no larger than that of high
        Vertex high;
        double slack;  // how far from 0 the rounding of coordinates moves what is 0 on the edge
        std::uint32_t polygon;
    };
    std::size_t stripOf(double y) const;
    void divide();

    std::vector<Edge> m_edges;
    Vertex m_least;
    Vertex m_most;
    // Edges that reach into each of the strips of equal height, polygon by polygon: from
    // m_begins[strip] to m_begins[strip + 1].
    std::vector<std::size_t> m_begins;
    std::vector<std::uint32_t> m_listed;
};

}  // namespace tarvo::core
