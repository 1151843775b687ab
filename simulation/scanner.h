// A terrestrial laser scanner at the origin: it turns about the vertical axis and sends a fan of
// beams at every step, a shot every 4 microseconds.
#pragma once

#include "simulation/scene.h"

#include <cstdint>
#include <functional>
#include <vector>

namespace tarvo::simulation {

// Columns of points, one value per point (coordinates: three), in the terms of the catalogue's
// attributes. Angles in degrees.
struct Points {
    std::vector<double> xyz;
    std::vector<double> range;
    std::vector<double> theta;       // from the zenith
    std::vector<double> phi;         // from the x axis, counter-clockwise
    std::vector<float> reflectance;  // dB
    std::vector<float> amplitude;    // dB
    std::vector<std::int16_t> deviation;
    std::vector<std::uint8_t> targetIndex;
    std::vector<std::uint8_t> targetCount;
    std::vector<std::uint8_t> pointClass;
    std::vector<double> timestamp;  // seconds since the first shot
    std::vector<std::uint32_t> line;

    explicit Points(std::size_t capacity);
    std::size_t capacity() const { return range.size(); }
};

// Where the shots of a turn go. Degrees.
struct Pattern {
    double firstTheta = 0;  // of each line
    double lastTheta = 0;
    double thetaStep = 0;
    double phiStep = 0;       // from 0, a line each
    std::uint32_t lines = 0;  // of a whole turn
};

class Scanner {
public:
    // Chooses the angular step so that a turn gives the points, and not many more. The scene must
    // outlive it.
    // check: is called many times a second, here and by next(), and may throw to end the scan;
    // empty: nobody is asked.
    Scanner(const Scene& scene, std::uint64_t seed, std::uint64_t pointCount,
            std::function<void()> check = {});

    const Pattern& pattern() const { return m_pattern; }
    // The next points, at most capacity and at most count; 0 when all pointCount were given. The
    // last shot has no more targets than are asked for.
    std::size_t next(Points& points, std::size_t count);

private:
    struct Echo {
        double range = 0;
        double cosine = 1;
        double reflectance = 0;  // of a surface: 0 to 1; of what was measured: dB
        Class pointClass = unclassified;
        int deviation = 0;
    };
    void beginLine();
    void nextShot();
    void meetSurfaces();
    void measure();
    void addSoftEchoes(const Ray& ray, const Object& object, double solidRange);
    void writeEchoes(Points& points, std::size_t& written, std::size_t count);
    void groundEcho(const Ray& ray, Echo& nearest) const;
    void setStep(std::uint32_t beams);
    Vector direction() const;  // of the last shot

    const Scene& m_scene;
    const std::uint64_t m_seed;
    const std::function<void()> m_check;
    Pattern m_pattern;
    struct Beam {
        double theta;  // degrees
        double sine;
        double cosine;
    };
    std::vector<Beam> m_fan;
    Random m_random;
    std::uint32_t m_line = 0;
    std::uint32_t m_beam = 0;
    std::uint64_t m_shot = 0;  // shots so far
    std::uint64_t m_left = 0;  // points that are still to be measured
    double m_time = 0;         // of the last shot
    double m_phi = 0;          // degrees
    double m_cosAzimuth = 1;
    double m_sinAzimuth = 0;
    std::vector<double> m_ground;  // height along the line, at equal horizontal distances
    std::vector<const Object*> m_objects;
    std::vector<Echo> m_echoes;  // of the last shot, nearest first
    std::size_t m_written = 0;   // of these
};

}  // namespace tarvo::simulation
