// From places in space to pixels, and back.
#pragma once

#include "drawing/geometry.h"

#include <optional>

namespace tarvo::drawing {

// Where the eye looks from. The last one looks down from the south-west, so that the three axes
// are seen alike.
enum class Side { Top, Bottom, Front, Back, Left, Right, Corner };

// A place on the screen: pixels from the upper left corner to the right and downwards, pixel (0, 0)
// reaching from 0 to 1, and how far in front of the eye's plane through the middle it lies, in
// units of space (negative: nearer to the eye).
struct Projected {
    double x = 0;
    double y = 0;
    double depth = 0;
};

// Looks at a middle, along a direction, parallel or in perspective. Both show the same extent at
// the depth of the middle.
class Camera {
public:
    // From above on nothing.
    Camera() = default;

    // Pixels, at least 1 each.
    void setScreen(unsigned width, unsigned height);
    unsigned width() const { return m_width; }
    unsigned height() const { return m_height; }

    void setPerspective(bool on) { m_perspective = on; }
    bool isPerspective() const { return m_perspective; }

    void look(Side side);
    // Degrees that the eye goes round the vertical axis, to the right, and up; it goes no further
    // than to where it looks straight down or up.
    void orbit(double right, double up);
    // Degrees from north, clockwise, and above the horizon (90: looks straight down).
    double heading() const { return m_heading; }
    double elevation() const { return m_elevation; }

    // Shows the whole box with a margin, as large as fits.
    void show(const Box& box);
    // Moves what is seen by pixels.
    void pan(double right, double down);
    // Makes what is seen larger by a factor, around a place on the screen that stays where it is.
    // depth: of what is seen there.
    void zoom(double factor, double x, double y, double depth = 0);

    const Vector& middle() const { return m_middle; }
    void setMiddle(const Vector& middle) { m_middle = middle; }
    // Units of space that the screen is high at the depth of the middle; larger than 0.
    double extent() const { return m_extent; }
    double unitsPerPixel() const { return m_extent / m_height; }
    // From the middle to the eye, in perspective.
    double distance() const;

    // Unit vectors: to the right, up, and towards the eye.
    const Vector& right() const { return m_right; }
    const Vector& up() const { return m_up; }
    const Vector& back() const { return m_back; }

    // None for what lies behind the eye or too near to it.
    std::optional<Projected> project(const Vector& place) const;
    // The place that is seen there at this depth.
    Vector unproject(double x, double y, double depth = 0) const;
    // Whether a part of the box may be seen.
    bool mayShow(const Box& box) const;
    // How many pixels are as long as the unit of space where the box is nearest to the eye;
    // infinite where the eye is within it.
    double pixelsPerUnit(const Box& box) const;

private:
    void turn();

    unsigned m_width = 1;
    unsigned m_height = 1;
    bool m_perspective = false;
    double m_heading = 0;
    double m_elevation = 90;
    Vector m_middle{};
    double m_extent = 1;
    Vector m_right{1, 0, 0};
    Vector m_up{0, 1, 0};
    Vector m_back{0, 0, 1};
};

}  // namespace tarvo::drawing
