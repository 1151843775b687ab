#include "simulation/scanner.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace tarvo::simulation {

namespace {

// Degrees.
constexpr double fanBegin = 30;
constexpr double fanEnd = 130;
constexpr double degree = pi / 180;
// Measures are multiples of these, as the database stores them.
constexpr double angleGrid = 1e-6;     // degrees
constexpr double rangeGrid = 0.00025;  // metres
constexpr double shotsPerSecond = 250000;
constexpr std::uint64_t shotsBetweenChecks = 4096;  // a few milliseconds

constexpr double maximumRange = 120;
constexpr std::size_t groundSteps = 1024;
constexpr double groundStep = maximumRange / groundSteps;
constexpr std::size_t maximumEchoes = 5;
constexpr double rangeNoise = 0.003;
// Echoes nearer than the pulse is long can't be told apart.
constexpr double pulseLength = 0.6;
// More than the coarse turn is ever wrong by, so that a turn is enough.
constexpr double shotsToSpare = 1.02;

double onGrid(double value, double grid) {
    return std::nearbyint(value / grid) * grid;
}

// Of a white diffuse target, which gives the weakest echo that is detected 1 km away.
double whiteAmplitude(double range) {
    return 60 - 20 * std::log10(std::max(range, 1.0));
}

}  // namespace

Points::Points(std::size_t capacity)
    : xyz(3 * capacity),
      range(capacity),
      theta(capacity),
      phi(capacity),
      reflectance(capacity),
      amplitude(capacity),
      deviation(capacity),
      targetIndex(capacity),
      targetCount(capacity),
      pointClass(capacity),
      timestamp(capacity),
      line(capacity) {}

Scanner::Scanner(const Scene& scene, std::uint64_t seed, std::uint64_t pointCount,
                 std::function<void()> check)
    : m_scene(scene),
      m_seed(seed),
      m_check(std::move(check)),
      m_random(seed),
      m_ground(groundSteps + 2) {
    // A coarse turn tells how many echoes a shot gives.
    setStep(100);
    const std::uint64_t coarseShots = std::uint64_t{m_pattern.lines} * m_fan.size();
    m_left = maximumEchoes * coarseShots;
    std::uint64_t echoes = 0;
    while (m_shot < coarseShots) {
        nextShot();
        echoes += m_echoes.size();
    }
    const double perShot = static_cast<double>(echoes) / static_cast<double>(coarseShots);
    const double shots = shotsToSpare * std::max(1.0, static_cast<double>(pointCount) / perShot);
    setStep(static_cast<std::uint32_t>(
        std::clamp(std::ceil(std::sqrt(shots * (fanEnd - fanBegin) / 360)), 8.0, 1e6)));
    m_shot = 0;
    m_left = pointCount;
    m_echoes.clear();
}

void Scanner::setStep(std::uint32_t beams) {
    m_pattern.thetaStep = (fanEnd - fanBegin) / beams;
    m_pattern.lines =
        static_cast<std::uint32_t>(std::ceil(360 / m_pattern.thetaStep * (1 - 1e-12)));
    m_pattern.phiStep = 360.0 / m_pattern.lines;
    m_fan.clear();
    for (std::uint32_t i = 0; i < beams; ++i) {
        const double theta = onGrid(fanBegin + (i + 0.5) * m_pattern.thetaStep, angleGrid);
        m_fan.push_back({theta, std::sin(theta * degree), std::cos(theta * degree)});
    }
    m_pattern.firstTheta = m_fan.front().theta;
    m_pattern.lastTheta = m_fan.back().theta;
}

Vector Scanner::direction() const {
    const Beam& beam = m_fan[m_beam];
    return {beam.sine * m_cosAzimuth, beam.sine * m_sinAzimuth, beam.cosine};
}

void Scanner::beginLine() {
    // Lines are independent of each other, so that a line is the same in every scan of its step.
    m_random = Random(m_seed * 0x2545f4914f6cdd1du + m_line + 1);
    m_phi = onGrid(m_line % m_pattern.lines * m_pattern.phiStep, angleGrid);
    m_cosAzimuth = std::cos(m_phi * degree);
    m_sinAzimuth = std::sin(m_phi * degree);
    m_scene.visible(m_phi * degree, m_objects);
    for (std::size_t i = 0; i < m_ground.size(); ++i) {
        const double distance = static_cast<double>(i) * groundStep;
        m_ground[i] = m_scene.groundHeight(distance * m_cosAzimuth, distance * m_sinAzimuth);
    }
}

void Scanner::groundEcho(const Ray& ray, Echo& nearest) const {
    const double sine = m_fan[m_beam].sine;
    if (ray.direction.z > 0.05) {
        return;
    }
    const double slope = ray.direction.z / sine;  // height per horizontal distance
    // The relief lies between these heights, which bounds where the beam can meet it.
    std::size_t i = 0;
    if (slope < 0) {
        i = static_cast<std::size_t>(
            std::clamp(-0.7 / slope / groundStep, 0.0, static_cast<double>(groundSteps)));
    }
    double above = slope * static_cast<double>(i) * groundStep - m_ground[i];
    for (; i < groundSteps; ++i) {
        const double next = slope * static_cast<double>(i + 1) * groundStep - m_ground[i + 1];
        if (next <= 0) {
            const double part = above <= 0 ? 0 : above / (above - next);
            const double range = (static_cast<double>(i) + part) * groundStep / sine;
            if (range < nearest.range) {
                const double rise = (m_ground[i + 1] - m_ground[i]) / groundStep;
                const double cosine = (rise * sine - ray.direction.z) / std::sqrt(1 + rise * rise);
                nearest = {range, std::max(0.02, cosine), 0.25, ground, 0};
            }
            return;
        }
        above = next;
    }
}

void Scanner::addSoftEchoes(const Ray& ray, const Object& object, double solidRange) {
    if (object.kind == Object::Kind::Wire) {
        const auto hit = m_scene.wires()[object.index].intersect(ray);
        if (hit && hit->range < solidRange && m_echoes.size() < maximumEchoes) {
            m_echoes.push_back({hit->range, hit->cosine, object.reflectance, wire, 25});
        }
        return;
    }
    const Crown& crown = m_scene.crowns()[object.index];
    const auto chord = crown.chord(ray);
    if (!chord) {
        return;
    }
    double at = std::max(0.5, (*chord)[0]) + m_random.exponential(crown.freePath);
    while (at < (*chord)[1] && at < solidRange && m_echoes.size() < maximumEchoes) {
        m_echoes.push_back({at, m_random.uniform(0.2, 1), object.reflectance, vegetation,
                            static_cast<int>(m_random.uniform(5, 120))});
        at += pulseLength + m_random.exponential(crown.freePath);
    }
}

void Scanner::nextShot() {
    if (m_check && m_shot % shotsBetweenChecks == 0) {
        m_check();
    }
    m_beam = static_cast<std::uint32_t>(m_shot % m_fan.size());
    m_line = static_cast<std::uint32_t>(m_shot / m_fan.size());
    m_time = static_cast<double>(m_shot) / shotsPerSecond;
    ++m_shot;
    if (m_beam == 0) {
        beginLine();
    }
    meetSurfaces();
    measure();
    m_written = 0;
}

void Scanner::meetSurfaces() {
    m_echoes.clear();
    const Ray ray{{}, direction()};
    Echo solid;
    solid.range = maximumRange;
    groundEcho(ray, solid);
    for (const Object* object : m_objects) {
        std::optional<Hit> hit;
        if (object->kind == Object::Kind::Body) {
            hit = m_scene.bodies()[object->index].intersect(ray);
        } else if (object->kind == Object::Kind::Pole) {
            hit = m_scene.poles()[object->index].intersect(ray);
        }
        if (hit && hit->range < solid.range) {
            solid = {hit->range, std::max(0.02, hit->cosine), object->reflectance,
                     object->pointClass, 0};
        }
    }
    for (const Object* object : m_objects) {
        if (object->kind == Object::Kind::Crown || object->kind == Object::Kind::Wire) {
            addSoftEchoes(ray, *object, solid.range);
        }
    }
    // The more was met on the way, the less light is left for what stands behind.
    const bool reached =
        m_echoes.empty() || m_random.uniform() < 1.0 / static_cast<double>(1 + m_echoes.size());
    if (solid.range < maximumRange && reached && m_echoes.size() < maximumEchoes) {
        solid.deviation = static_cast<int>(m_random.uniform(0, 6) / std::sqrt(solid.cosine));
        m_echoes.push_back(solid);
    }
    if (m_echoes.size() > 1) {
        std::sort(m_echoes.begin(), m_echoes.end(),
                  [](const Echo& a, const Echo& b) { return a.range < b.range; });
    }
}

// Leaves of the surfaces that were met what the receiver detects and tells apart.
void Scanner::measure() {
    const auto surfaces = static_cast<double>(m_echoes.size());
    std::size_t detected = 0;
    for (const Echo& surface : m_echoes) {
        if (detected > 0 && surface.range < m_echoes[detected - 1].range + pulseLength) {
            m_echoes[detected - 1].deviation += 40;
            continue;
        }
        Echo echo = surface;
        echo.range = onGrid(surface.range + rangeNoise * m_random.normal(), rangeGrid);
        // Relative to a white diffuse target, with the texture of the surface.
        echo.reflectance = 10 * std::log10(surface.reflectance * surface.cosine / surfaces) +
                           0.6 * m_random.normal();
        if (echo.reflectance + whiteAmplitude(echo.range) >= 0) {
            m_echoes[detected++] = echo;
        }
    }
    m_echoes.resize(static_cast<std::size_t>(std::min<std::uint64_t>(detected, m_left)));
    m_left -= m_echoes.size();
}

void Scanner::writeEchoes(Points& points, std::size_t& written, std::size_t count) {
    const Vector towards = direction();
    for (; m_written < m_echoes.size() && written < count; ++m_written, ++written) {
        const Echo& echo = m_echoes[m_written];
        points.xyz[3 * written] = echo.range * towards.x;
        points.xyz[3 * written + 1] = echo.range * towards.y;
        points.xyz[3 * written + 2] = echo.range * towards.z;
        points.range[written] = echo.range;
        points.theta[written] = m_fan[m_beam].theta;
        points.phi[written] = m_phi;
        points.reflectance[written] = static_cast<float>(echo.reflectance);
        points.amplitude[written] =
            static_cast<float>(echo.reflectance + whiteAmplitude(echo.range));
        points.deviation[written] = static_cast<std::int16_t>(echo.deviation);
        points.targetIndex[written] = static_cast<std::uint8_t>(m_written + 1);
        points.targetCount[written] = static_cast<std::uint8_t>(m_echoes.size());
        points.pointClass[written] = echo.pointClass;
        points.timestamp[written] = m_time;
        points.line[written] = m_line;
    }
}

std::size_t Scanner::next(Points& points, std::size_t count) {
    count = std::min(count, points.capacity());
    std::size_t written = 0;
    while (written < count) {
        if (m_written == m_echoes.size()) {
            if (m_left == 0) {
                break;
            }
            nextShot();
        }
        writeEchoes(points, written, count);
    }
    return written;
}

}  // namespace tarvo::simulation
