// The bodies of the simulated scene and where a laser beam meets them. Lengths in metres.
#pragma once

#include <array>
#include <cstdint>
#include <numbers>
#include <optional>
#include <vector>

namespace tarvo::simulation {

inline constexpr double pi = std::numbers::pi;

struct Vector {
    double x = 0;
    double y = 0;
    double z = 0;
};
inline Vector operator+(const Vector& a, const Vector& b) {
    return {a.x + b.x, a.y + b.y, a.z + b.z};
}
inline Vector operator-(const Vector& a, const Vector& b) {
    return {a.x - b.x, a.y - b.y, a.z - b.z};
}
inline Vector operator*(double f, const Vector& a) {
    return {f * a.x, f * a.y, f * a.z};
}
inline double dot(const Vector& a, const Vector& b) {
    return a.x * b.x + a.y * b.y + a.z * b.z;
}

// A half line; the direction has length 1, so distances along it are ranges.
struct Ray {
    Vector origin;
    Vector direction;
};

// Point classes (the numbers of the LAS format).
enum Class : std::uint8_t { unclassified = 1, ground = 2, vegetation = 5, building = 6, wire = 14 };

struct Hit {
    double range = 0;
    double cosine = 1;  // of the angle of incidence
};

// The part of space behind all its planes (normal * p <= distance), with outward normals.
class ConvexBody {
public:
    void addPlane(const Vector& normal, double distance);
    // A box turned about the vertical axis; centre of its ground plan, half sizes, from z to top.
    static ConvexBody box(const Vector& centre, double halfX, double halfY, double top,
                          double angle);
    std::optional<Hit> intersect(const Ray& ray) const;

private:
    struct Plane {
        Vector normal;
        double distance;
    };
    std::vector<Plane> m_planes;
};

// An upright cylinder without ends.
struct Pole {
    Vector foot;
    double radius = 0;
    double height = 0;
    std::optional<Hit> intersect(const Ray& ray) const;
};

// The crown of a tree: beams enter it and meet leaves on their way through.
struct Crown {
    Vector centre;
    Vector half;          // half axes
    double freePath = 1;  // mean way to the next leaf
    // Where the beam is inside; nothing if it passes by.
    std::optional<std::array<double, 2>> chord(const Ray& ray) const;
};

// A straight piece of a wire; its diameter is below that of the beam.
struct WirePiece {
    Vector from;
    Vector to;
    double radius = 0;
    std::optional<Hit> intersect(const Ray& ray) const;
};

}  // namespace tarvo::simulation
