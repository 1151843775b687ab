// A small scene around a scanner at the origin: gentle relief, a house and a garage, trees, poles
// with a power line, a parked car. The same for the same seed.
#pragma once

#include "simulation/random.h"
#include "simulation/solids.h"

#include <cstdint>
#include <vector>

namespace tarvo::simulation {

// What stands at a place; seen from the scanner it fills a span of azimuths.
struct Object {
    enum class Kind { Body, Pole, Crown, Wire };
    Kind kind = Kind::Body;
    std::size_t index = 0;  // into the vector of its kind
    Class pointClass = unclassified;
    double reflectance = 0.5;  // 0 to 1
    double azimuth = 0;        // of its middle, radians
    double span = 0;           // to either side, radians
};

class Scene {
public:
    explicit Scene(std::uint64_t seed);

    // Height of the ground, relative to the scanner.
    double groundHeight(double x, double y) const;
    // The objects that a vertical plane of this azimuth (radians) may meet.
    void visible(double azimuth, std::vector<const Object*>& objects) const;

    const std::vector<ConvexBody>& bodies() const { return m_bodies; }
    const std::vector<Pole>& poles() const { return m_poles; }
    const std::vector<Crown>& crowns() const { return m_crowns; }
    const std::vector<WirePiece>& wires() const { return m_wires; }

private:
    void addObject(Object::Kind kind, std::size_t index, Class pointClass, double reflectance,
                   const Vector& middle, double radius);
    void addHouse();
    void addCar();
    void addTrees(Random& random);
    void addPowerLine();

    double m_phase[4];
    std::vector<ConvexBody> m_bodies;
    std::vector<Pole> m_poles;
    std::vector<Crown> m_crowns;
    std::vector<WirePiece> m_wires;
    std::vector<Object> m_objects;
};

}  // namespace tarvo::simulation
