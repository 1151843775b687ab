// Which points of many stay, by where they lie and by how many there are.
#pragma once

#include "core/area.h"
#include "core/thinning.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace tarvo::core {

// A range of coordinates, both ends included; z is infinite where only x and y count.
struct Bounds {
    std::array<double, 3> least = {};
    std::array<double, 3> most = {};
};

// "xmin,ymin,xmax,ymax" or "xmin,ymin,zmin,xmax,ymax,zmax". Throws Failure.
Bounds boundsFromText(const std::string& text);

// What is asked of points, in the order in which it is looked at. Distances have the unit of the
// coordinates.
struct Shape {
    std::optional<Bounds> bounds;
    std::shared_ptr<const Area> area;  // may be null
    std::uint64_t every = 1;           // of what is left, the first point and each n-th after it
    double distance = 0;               // no two nearer than that, see Thinning; 0: any

    bool isEmpty() const { return !needsCoordinates() && every <= 1; }
    bool needsCoordinates() const { return bounds || area || distance > 0; }
    // The filter expression, narrowed to a range that holds bounds and area, so that a database
    // need not read what lies outside; attribute: of the coordinates. A filter that is a search for
    // a node stays as it is.
    std::string narrowed(const std::string& filter, const std::string& attribute) const;
};

// Looks at points in their order, however many batches they come in.
class Shaper {
public:
    // check: called every few thousand points; what it throws ends pick().
    explicit Shaper(Shape shape, std::function<void()> check = {});

    const Shape& shape() const { return m_shape; }
    // Puts into rows which of the points stay, ascending. places: x, y and z point by point; may be
    // null where shape().needsCoordinates() is false.
    void pick(std::uint32_t count, const double* places, std::vector<std::uint32_t>& rows);
    // Back to before the first point.
    void restart();

private:
    bool isWithin(double x, double y, double z) const;

    Shape m_shape;
    std::function<void()> m_check;
    std::optional<Thinning> m_thinning;
    std::uint64_t m_seen = 0;  // points within, modulo shape().every
};

// Copies the rows, ascending, of stride bytes each; to may be from.
void copyRows(std::uint8_t* to, const std::uint8_t* from, std::size_t stride,
              const std::vector<std::uint32_t>& rows);

}  // namespace tarvo::core
