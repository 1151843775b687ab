#include "drawing/camera.h"

#include <cmath>

namespace tarvo::drawing {

namespace {

constexpr double pi = 3.14159265358979323846;
// Of half of the vertical field of view, 45 degrees in all.
constexpr double slope = 0.41421356237309503;
// Of the distance to the middle: what is nearer to the eye is not shown.
constexpr double nearest = 1e-3;
constexpr double margin = 1.06;
constexpr double smallestExtent = 1e-9;
constexpr double largestExtent = 1e150;

}  // namespace

void Camera::setScreen(unsigned width, unsigned height) {
    m_width = std::max(width, 1U);
    m_height = std::max(height, 1U);
}

void Camera::look(Side side) {
    m_heading = 0;
    m_elevation = 0;
    switch (side) {
        case Side::Top:
            m_elevation = 90;
            break;
        case Side::Bottom:
            m_elevation = -90;
            break;
        case Side::Front:
            break;
        case Side::Back:
            m_heading = 180;
            break;
        case Side::Left:
            m_heading = 90;
            break;
        case Side::Right:
            m_heading = 270;
            break;
        case Side::Corner:
            m_heading = 45;
            m_elevation = 35.264389682754654;
            break;
    }
    turn();
}

void Camera::orbit(double right, double up) {
    m_heading = std::fmod(m_heading - right, 360);
    if (m_heading < 0)
        m_heading += 360;
    m_elevation = std::clamp(m_elevation + up, -90.0, 90.0);
    turn();
}

void Camera::turn() {
    // Quarters exactly, so that pictures from the sides are the same on every machine.
    const auto sine = [](double degrees) {
        if (std::fmod(degrees, 90) != 0)
            return std::sin(degrees / 180 * pi);
        constexpr double quarters[] = {0, 1, 0, -1};
        return quarters[(static_cast<int>(degrees / 90) % 4 + 4) % 4];
    };
    const double s = sine(m_heading);
    const double c = sine(m_heading + 90);
    const double rise = sine(m_elevation);
    const double flat = sine(m_elevation + 90);
    m_right = {c, -s, 0};
    m_back = {-s * flat, -c * flat, rise};
    m_up = cross(m_back, m_right);
}

void Camera::show(const Box& box) {
    if (box.isEmpty())
        return;
    m_middle = box.centre();
    double right = 0;
    double up = 0;
    double back = 0;
    for (unsigned corner = 0; corner < 8; ++corner) {
        const Vector way = box.corner(corner) - m_middle;
        right = std::max(right, std::abs(dot(way, m_right)));
        up = std::max(up, std::abs(dot(way, m_up)));
        back = std::max(back, std::abs(dot(way, m_back)));
    }
    const double needed = 2 * std::max(up, right * m_height / m_width);
    // What is nearer to the eye looks larger.
    m_extent = std::clamp((needed + (m_perspective ? 2 * slope * back : 0)) * margin,
                          smallestExtent, largestExtent);
    if (needed == 0 && back == 0)
        m_extent = 1;
}

void Camera::pan(double right, double down) {
    m_middle = m_middle + m_right * (-right * unitsPerPixel()) + m_up * (down * unitsPerPixel());
}

void Camera::zoom(double factor, double x, double y, double depth) {
    const double wanted = m_extent / factor;
    if (!(wanted >= smallestExtent && wanted <= largestExtent))
        return;
    const Vector before = unproject(x, y, depth);
    if (m_perspective) {
        // The eye comes nearer to what is under the cursor.
        m_middle = before + (m_middle - before) * (1 / factor);
        m_extent = wanted;
        return;
    }
    m_extent = wanted;
    m_middle = m_middle + (before - unproject(x, y, depth));
}

double Camera::distance() const {
    return m_extent / (2 * slope);
}

std::optional<Projected> Camera::project(const Vector& place) const {
    const Vector way = place - m_middle;
    const double towards = dot(way, m_back);
    double scale = m_height / m_extent;
    if (m_perspective) {
        const double away = distance() - towards;
        if (away < distance() * nearest)
            return std::nullopt;
        scale *= distance() / away;
    }
    return Projected{m_width * 0.5 + dot(way, m_right) * scale,
                     m_height * 0.5 - dot(way, m_up) * scale, -towards};
}

Vector Camera::unproject(double x, double y, double depth) const {
    double units = unitsPerPixel();
    if (m_perspective)
        units *= (distance() + depth) / distance();
    return m_middle + m_right * ((x - m_width * 0.5) * units) +
           m_up * ((m_height * 0.5 - y) * units) - m_back * depth;
}

bool Camera::mayShow(const Box& box) const {
    if (box.isEmpty())
        return false;
    // Outside of one of the planes that bound what is seen with all corners.
    unsigned left = 0;
    unsigned right = 0;
    unsigned above = 0;
    unsigned below = 0;
    unsigned behind = 0;
    for (unsigned corner = 0; corner < 8; ++corner) {
        const Vector way = box.corner(corner) - m_middle;
        const double away = distance() - dot(way, m_back);
        // Half of what the screen shows at that depth; of what is behind the eye the planes cross.
        const double high = m_perspective ? away * slope : m_extent / 2;
        const double wide = high * m_width / m_height;
        const double u = dot(way, m_right);
        const double v = dot(way, m_up);
        left += u < -wide;
        right += u > wide;
        above += v > high;
        below += v < -high;
        behind += m_perspective && away < distance() * nearest;
    }
    return left < 8 && right < 8 && above < 8 && below < 8 && behind < 8;
}

double Camera::pixelsPerUnit(const Box& box) const {
    const double scale = m_height / m_extent;
    if (!m_perspective)
        return scale;
    double away = std::numeric_limits<double>::infinity();
    for (unsigned corner = 0; corner < 8; ++corner)
        away = std::min(away, distance() - dot(box.corner(corner) - m_middle, m_back));
    return away <= 0 ? std::numeric_limits<double>::infinity() : scale * distance() / away;
}

}  // namespace tarvo::drawing
