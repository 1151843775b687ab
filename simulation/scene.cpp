#include "simulation/scene.h"

#include <algorithm>
#include <cmath>

namespace tarvo::simulation {

namespace {

constexpr double instrumentHeight = 1.8;

}  // namespace

Scene::Scene(std::uint64_t seed) {
    Random random(seed);
    for (double& phase : m_phase) {
        phase = random.uniform(0, 2 * pi);
    }
    addHouse();
    addCar();
    addTrees(random);
    addPowerLine();
}

double Scene::groundHeight(double x, double y) const {
    const double relief = 0.9 * std::sin(x / 17 + m_phase[0]) * std::cos(y / 23 + m_phase[1]) +
                          0.15 * std::sin(x / 3.7 + m_phase[2]) * std::sin(y / 4.9 + m_phase[3]);
    // Flat below the tripod, so that no hill swallows the scanner.
    const double distance = x * x + y * y;
    return -instrumentHeight + relief * distance / (distance + 60);
}

void Scene::addObject(Object::Kind kind, std::size_t index, Class pointClass, double reflectance,
                      const Vector& middle, double radius) {
    Object object;
    object.kind = kind;
    object.index = index;
    object.pointClass = pointClass;
    object.reflectance = reflectance;
    object.azimuth = std::atan2(middle.y, middle.x);
    const double distance = std::hypot(middle.x, middle.y);
    object.span = distance <= radius ? pi : std::asin(radius / distance);
    m_objects.push_back(object);
}

void Scene::addHouse() {
    const double angle = 0.4;
    const Vector centre{14, 9, -4};
    const double eaves = groundHeight(14, 9) + 3.6;
    // Walls and gable roof are one convex body.
    ConvexBody house = ConvexBody::box(centre, 6, 4.5, 100, angle);
    const Vector across{-std::sin(angle), std::cos(angle), 0};
    const double slope = 0.7;
    for (const double sign : {1.0, -1.0}) {
        const Vector normal{-sign * std::sin(slope) * std::sin(angle),
                            sign * std::sin(slope) * std::cos(angle), std::cos(slope)};
        const Vector edge = centre + sign * 4.5 * across;
        house.addPlane(normal, dot(normal, {edge.x, edge.y, eaves}));
    }
    m_bodies.push_back(house);
    addObject(Object::Kind::Body, m_bodies.size() - 1, building, 0.45, centre, 7.6);

    const Vector garage{3, 16, -4};
    m_bodies.push_back(
        ConvexBody::box(garage, 3, 2.6, groundHeight(garage.x, garage.y) + 2.5, angle));
    addObject(Object::Kind::Body, m_bodies.size() - 1, building, 0.6, garage, 4.1);
}

void Scene::addCar() {
    const Vector place{6.5, -4.5, 0};
    const double floor = groundHeight(place.x, place.y);
    const double angle = -0.9;
    m_bodies.push_back(
        ConvexBody::box({place.x, place.y, floor + 0.25}, 2.1, 0.85, floor + 0.85, angle));
    addObject(Object::Kind::Body, m_bodies.size() - 1, unclassified, 0.3, place, 2.3);
    // The cabin leans inwards.
    ConvexBody cabin =
        ConvexBody::box({place.x, place.y, floor + 0.8}, 1.6, 0.8, floor + 1.45, angle);
    const Vector along{std::cos(angle), std::sin(angle), 0};
    for (const double sign : {1.0, -1.0}) {
        const Vector normal{sign * along.x * 0.8, sign * along.y * 0.8, 0.6};
        const Vector edge = place + sign * 1.6 * along;
        cabin.addPlane(normal, dot(normal, {edge.x, edge.y, floor + 0.85}));
    }
    m_bodies.push_back(cabin);
    addObject(Object::Kind::Body, m_bodies.size() - 1, unclassified, 0.2, place, 2.0);
}

void Scene::addTrees(Random& random) {
    for (int i = 0; i < 12; ++i) {
        // Not where the buildings are.
        const double azimuth = random.uniform(1.9, 5.3);
        const double distance = random.uniform(8, 45);
        const double height = random.uniform(5, 12);
        const double width = height * random.uniform(0.2, 0.32);
        Vector foot{distance * std::cos(azimuth), distance * std::sin(azimuth), 0};
        foot.z = groundHeight(foot.x, foot.y) - 0.1;
        m_poles.push_back({foot, 0.02 * height, 0.6 * height});
        addObject(Object::Kind::Pole, m_poles.size() - 1, vegetation, 0.35, foot, 0.02 * height);
        Crown crown;
        crown.centre = {foot.x, foot.y, foot.z + 0.62 * height};
        crown.half = {width, width * random.uniform(0.85, 1.15), 0.4 * height};
        crown.freePath = random.uniform(0.8, 2.2);
        m_crowns.push_back(crown);
        addObject(Object::Kind::Crown, m_crowns.size() - 1, vegetation, 0.5, crown.centre,
                  std::max(crown.half.x, crown.half.y));
    }
}

void Scene::addPowerLine() {
    constexpr int poleCount = 4;
    constexpr int pieces = 12;
    Vector tops[poleCount];
    for (int i = 0; i < poleCount; ++i) {
        Vector foot{-30.0 + 24 * i, -16.0 + 2 * i, 0};
        foot.z = groundHeight(foot.x, foot.y) - 0.1;
        m_poles.push_back({foot, 0.14, 8.5});
        addObject(Object::Kind::Pole, m_poles.size() - 1, unclassified, 0.3, foot, 0.14);
        tops[i] = foot + Vector{0, 0, 8.3};
    }
    for (int i = 0; i + 1 < poleCount; ++i) {
        for (const double side : {-0.5, 0.5}) {
            const auto at = [&](int k) {
                const double part = static_cast<double>(k) / pieces;
                const double sag = 4 * 0.7 * part * (1 - part);
                return tops[i] + part * (tops[i + 1] - tops[i]) + Vector{0, side, -sag};
            };
            for (int k = 0; k < pieces; ++k) {
                const WirePiece piece{at(k), at(k + 1), 0.02};
                const Vector middle = 0.5 * (piece.from + piece.to);
                const Vector length = piece.to - piece.from;
                m_wires.push_back(piece);
                addObject(Object::Kind::Wire, m_wires.size() - 1, wire, 0.25, middle,
                          0.5 * std::sqrt(dot(length, length)) + 0.02);
            }
        }
    }
}

void Scene::visible(double azimuth, std::vector<const Object*>& objects) const {
    objects.clear();
    for (const Object& object : m_objects) {
        if (std::abs(std::remainder(azimuth - object.azimuth, 2 * pi)) <= object.span + 1e-6) {
            objects.push_back(&object);
        }
    }
}

}  // namespace tarvo::simulation
