// Places and boxes in space.
#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <limits>

namespace tarvo::drawing {

// A type of its own, so that its operators are found.
struct Vector : std::array<double, 3> {};

inline Vector operator+(const Vector& a, const Vector& b) {
    return {a[0] + b[0], a[1] + b[1], a[2] + b[2]};
}
inline Vector operator-(const Vector& a, const Vector& b) {
    return {a[0] - b[0], a[1] - b[1], a[2] - b[2]};
}
inline Vector operator*(const Vector& a, double factor) {
    return {a[0] * factor, a[1] * factor, a[2] * factor};
}
inline double dot(const Vector& a, const Vector& b) {
    return a[0] * b[0] + a[1] * b[1] + a[2] * b[2];
}
inline Vector cross(const Vector& a, const Vector& b) {
    return {a[1] * b[2] - a[2] * b[1], a[2] * b[0] - a[0] * b[2], a[0] * b[1] - a[1] * b[0]};
}

struct Box {
    Vector least{std::numeric_limits<double>::infinity(), std::numeric_limits<double>::infinity(),
                 std::numeric_limits<double>::infinity()};
    Vector most{-std::numeric_limits<double>::infinity(), -std::numeric_limits<double>::infinity(),
                -std::numeric_limits<double>::infinity()};

    bool isEmpty() const { return least[0] > most[0] || least[1] > most[1] || least[2] > most[2]; }
    Vector centre() const { return least + (most - least) * 0.5; }
    Vector size() const { return most - least; }
    void add(const Vector& place) {
        for (std::size_t i = 0; i < 3; ++i) {
            least[i] = std::min(least[i], place[i]);
            most[i] = std::max(most[i], place[i]);
        }
    }
    void add(const Box& other) {
        add(other.least);
        add(other.most);
    }
    // 0 to 7: bit i chooses the larger end of axis i.
    Vector corner(unsigned which) const {
        Vector place = least;
        for (unsigned i = 0; i < 3; ++i)
            if (which >> i & 1U)
                place[i] = most[i];
        return place;
    }
};

}  // namespace tarvo::drawing
