#include "simulation/solids.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace tarvo::simulation {

void ConvexBody::addPlane(const Vector& normal, double distance) {
    m_planes.push_back({normal, distance});
}

ConvexBody ConvexBody::box(const Vector& centre, double halfX, double halfY, double top,
                           double angle) {
    ConvexBody body;
    const Vector u{std::cos(angle), std::sin(angle), 0};
    const Vector v{-u.y, u.x, 0};
    for (const double sign : {1.0, -1.0}) {
        body.addPlane(sign * u, sign * dot(u, centre) + halfX);
        body.addPlane(sign * v, sign * dot(v, centre) + halfY);
    }
    body.addPlane({0, 0, 1}, top);
    body.addPlane({0, 0, -1}, -centre.z);
    return body;
}

std::optional<Hit> ConvexBody::intersect(const Ray& ray) const {
    double enter = 0;
    double leave = std::numeric_limits<double>::infinity();
    double cosine = 1;
    for (const Plane& plane : m_planes) {
        const double towards = dot(plane.normal, ray.direction);
        const double distance = plane.distance - dot(plane.normal, ray.origin);
        if (towards < 0) {
            if (const double at = distance / towards; at > enter) {
                enter = at;
                cosine = -towards;
            }
        } else if (towards > 0) {
            leave = std::min(leave, distance / towards);
        } else if (distance < 0) {
            return std::nullopt;
        }
        if (enter > leave) {
            return std::nullopt;
        }
    }
    return enter > 0 ? std::optional<Hit>({enter, cosine}) : std::nullopt;
}

std::optional<Hit> Pole::intersect(const Ray& ray) const {
    const Vector o = ray.origin - foot;
    const Vector& d = ray.direction;
    const double a = d.x * d.x + d.y * d.y;
    const double b = o.x * d.x + o.y * d.y;
    const double root = b * b - a * (o.x * o.x + o.y * o.y - radius * radius);
    if (root < 0 || a < 1e-12) {
        return std::nullopt;
    }
    const double at = (-b - std::sqrt(root)) / a;
    const double z = o.z + at * d.z;
    if (at <= 0 || z < 0 || z > height) {
        return std::nullopt;
    }
    return Hit{at, std::sqrt(root) / radius};
}

std::optional<std::array<double, 2>> Crown::chord(const Ray& ray) const {
    const Vector o{(ray.origin.x - centre.x) / half.x, (ray.origin.y - centre.y) / half.y,
                   (ray.origin.z - centre.z) / half.z};
    const Vector d{ray.direction.x / half.x, ray.direction.y / half.y, ray.direction.z / half.z};
    const double a = dot(d, d);
    const double b = dot(o, d);
    const double root = b * b - a * (dot(o, o) - 1);
    if (root <= 0 || b >= 0) {
        return std::nullopt;
    }
    const double way = std::sqrt(root);
    return std::array<double, 2>{(-b - way) / a, (-b + way) / a};
}

std::optional<Hit> WirePiece::intersect(const Ray& ray) const {
    // The closest points of two lines.
    const Vector along = to - from;
    const Vector gap = ray.origin - from;
    const double b = dot(ray.direction, along);
    const double c = dot(along, along);
    const double d = dot(ray.direction, gap);
    const double e = dot(along, gap);
    const double denominator = c - b * b;
    if (denominator < 1e-9) {
        return std::nullopt;
    }
    const double range = (b * e - c * d) / denominator;
    const double part = (e - b * d) / denominator;
    if (range <= 0 || part < 0 || part > 1) {
        return std::nullopt;
    }
    const Vector between = gap + (range * ray.direction - part * along);
    if (dot(between, between) > radius * radius) {
        return std::nullopt;
    }
    return Hit{range, std::sqrt(std::max(0.0, 1 - b * b / c))};
}

}  // namespace tarvo::simulation
