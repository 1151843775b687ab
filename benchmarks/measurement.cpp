#include "benchmarks/measurement.h"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <ctime>
#include <sstream>
#include <stdexcept>

namespace bench {

namespace {

double wallNow() {
    return std::chrono::duration<double>(std::chrono::steady_clock::now().time_since_epoch())
        .count();
}

double cpuNow() {
    timespec time{};
    ::clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &time);
    return static_cast<double>(time.tv_sec) + 1e-9 * static_cast<double>(time.tv_nsec);
}

// The most memory that this process had resident. (The figure of wait4 would count what its parent
// had when it was made.)
double peakMebibytes() {
    std::FILE* const file = std::fopen("/proc/self/status", "r");
    char line[200];
    double kibibytes = 0;
    while (file && std::fgets(line, sizeof line, file))
        if (std::sscanf(line, "VmHWM: %lf", &kibibytes) == 1)
            break;
    if (file)
        std::fclose(file);
    return kibibytes / 1024;
}

double medianOf(const std::vector<Measurement>& measurements, double Measurement::*number) {
    std::vector<double> values;
    for (const Measurement& measurement : measurements)
        values.push_back(measurement.*number);
    std::sort(values.begin(), values.end());
    return values[values.size() / 2];
}

void checkAnswers(const std::vector<Measurement>& measurements) {
    for (const Measurement& measurement : measurements)
        if (measurement.answer != measurements.front().answer)
            throw std::runtime_error("the same work gave " +
                                     std::to_string(measurements.front().answer) + " and " +
                                     std::to_string(measurement.answer));
}

}  // namespace

Stopwatch::Stopwatch() : m_wall(wallNow()), m_cpu(cpuNow()) {}

Measurement Stopwatch::stop(std::uint64_t answer) const {
    return {wallNow() - m_wall, cpuNow() - m_cpu, peakMebibytes(), answer};
}

void tell(const std::string& name, const Measurement& measurement) {
    std::printf("%.9f %.9f %.3f %llu %s\n", measurement.wall, measurement.cpu,
                measurement.mebibytes, static_cast<unsigned long long>(measurement.answer),
                name.c_str());
    std::fflush(stdout);
}

Measurements measurementsOf(const std::string& text) {
    Measurements result;
    std::istringstream lines(text);
    Measurement next;
    std::string name;
    while (lines >> next.wall >> next.cpu >> next.mebibytes >> next.answer &&
           std::getline(lines >> std::ws, name))
        result[name] = next;
    return result;
}

Measurement median(const std::vector<Measurement>& measurements) {
    checkAnswers(measurements);
    return {medianOf(measurements, &Measurement::wall), medianOf(measurements, &Measurement::cpu),
            medianOf(measurements, &Measurement::mebibytes), measurements.front().answer};
}

Measurement fastest(const std::vector<Measurement>& measurements) {
    checkAnswers(measurements);
    return *std::min_element(
        measurements.begin(), measurements.end(),
        [](const Measurement& a, const Measurement& b) { return a.wall < b.wall; });
}

}  // namespace bench
