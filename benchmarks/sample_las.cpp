// Writes the simulated scan of "qrbtool sample" as a LAS file: version 1.4 with points of format 6,
// 30 bytes each.
//
//   bench_sample_las POINTS TARGET.las
#include "simulation/scanner.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <exception>
#include <fstream>
#include <stdexcept>
#include <string>
#include <vector>

namespace {

namespace simulation = tarvo::simulation;

constexpr std::size_t headSize = 375;
constexpr std::size_t recordSize = 30;
constexpr double scale = 0.001;       // metres
constexpr double angleStep = 0.006;   // degrees, as the format has them
constexpr double decibelStep = 0.01;  // of the reflectance, as intensity
constexpr double darkest = -50;       // decibels

template <typename T>
void put(std::vector<char>& to, std::size_t at, T value) {
    std::memcpy(to.data() + at, &value, sizeof value);
}

class Writer {
public:
    explicit Writer(const std::string& file) : m_out(file, std::ios::binary), m_file(file) {
        writeHead();
    }
    void add(const simulation::Points& points, std::size_t count) {
        std::vector<char> records(count * recordSize);
        for (std::size_t i = 0; i < count; ++i)
            addPoint(records, i * recordSize, points, i);
        m_count += count;
        m_out.write(records.data(), static_cast<std::streamsize>(records.size()));
    }
    void finish() {
        m_out.seekp(0);
        writeHead();
        m_out.close();
        if (!m_out)
            throw std::runtime_error("can't write " + m_file);
    }

private:
    void addPoint(std::vector<char>& records, std::size_t at, const simulation::Points& points,
                  std::size_t i) {
        for (std::size_t axis = 0; axis < 3; ++axis) {
            const auto steps =
                static_cast<std::int32_t>(std::lround(points.xyz[3 * i + axis] / scale));
            m_low[axis] = std::min(m_low[axis], steps);
            m_high[axis] = std::max(m_high[axis], steps);
            put(records, at + 4 * axis, steps);
        }
        const double light = (points.reflectance[i] - darkest) / decibelStep;
        put(records, at + 12, static_cast<std::uint16_t>(std::clamp(light, 0.0, 65535.0)));
        put(records, at + 14,
            static_cast<std::uint8_t>(points.targetIndex[i] | points.targetCount[i] << 4));
        put(records, at + 16, points.pointClass[i]);
        put(records, at + 18,
            static_cast<std::int16_t>(std::lround((90 - points.theta[i]) / angleStep)));
        put(records, at + 20, std::uint16_t{1});
        put(records, at + 22, points.timestamp[i]);
        ++m_returns[std::min<std::size_t>(points.targetIndex[i], 15) - 1];
    }

    void writeHead() {
        std::vector<char> head(headSize);
        std::memcpy(head.data(), "LASF", 4);
        put(head, 24, std::uint8_t{1});
        put(head, 25, std::uint8_t{4});
        put(head, 94, static_cast<std::uint16_t>(headSize));
        put(head, 96, static_cast<std::uint32_t>(headSize));
        put(head, 104, std::uint8_t{6});
        put(head, 105, static_cast<std::uint16_t>(recordSize));
        for (std::size_t axis = 0; axis < 3; ++axis) {
            put(head, 131 + 8 * axis, scale);
            put(head, 179 + 16 * axis, m_high[axis] * scale);
            put(head, 187 + 16 * axis, m_low[axis] * scale);
        }
        put(head, 247, m_count);
        for (std::size_t i = 0; i < 15; ++i)
            put(head, 255 + 8 * i, m_returns[i]);
        m_out.write(head.data(), static_cast<std::streamsize>(head.size()));
    }

    std::ofstream m_out;
    std::string m_file;
    std::uint64_t m_count = 0;
    std::uint64_t m_returns[15] = {};
    std::int32_t m_low[3] = {INT32_MAX, INT32_MAX, INT32_MAX};
    std::int32_t m_high[3] = {INT32_MIN, INT32_MIN, INT32_MIN};
};

void run(std::uint64_t count, const std::string& file) {
    constexpr std::uint64_t seed = 1;
    constexpr std::size_t batch = 65536;
    const simulation::Scene scene(seed);
    simulation::Scanner scanner(scene, seed, count);
    simulation::Points points(batch);
    Writer writer(file);
    for (std::uint64_t done = 0; done < count;) {
        const std::size_t next = scanner.next(
            points, static_cast<std::size_t>(std::min<std::uint64_t>(batch, count - done)));
        writer.add(points, next);
        done += next;
    }
    writer.finish();
}

}  // namespace

int main(int argc, char** argv) {
    if (argc != 3) {
        std::fputs("usage: bench_sample_las POINTS TARGET.las\n", stderr);
        return 2;
    }
    try {
        run(std::stoull(argv[1]), argv[2]);
        return 0;
    } catch (const std::exception& error) {
        std::fprintf(stderr, "bench_sample_las: %s\n", error.what());
        return 1;
    }
}
