// What is measured of a piece of work, and how it comes from the process that did it to the one
// that prints the tables.
#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <vector>

namespace bench {

struct Measurement {
    double wall = 0;           // seconds
    double cpu = 0;            // seconds of all threads, system time included
    double mebibytes = 0;      // most resident memory of the process so far
    std::uint64_t answer = 0;  // points counted, read or changed; bytes of a file
};

// By name.
using Measurements = std::map<std::string, Measurement>;

// Wall and CPU time of this process since construction.
class Stopwatch {
public:
    Stopwatch();
    Measurement stop(std::uint64_t answer) const;

private:
    double m_wall;
    double m_cpu;
};

// Does a task that returns its answer, once.
template <typename Task>
Measurement measured(Task&& task) {
    const Stopwatch watch;
    const std::uint64_t answer = task();
    return watch.stop(answer);
}

// The fastest of several times, after one that doesn't count: the best that can be asked of work
// that is done again.
template <typename Task>
Measurement repeated(Task&& task) {
    constexpr int most = 9;
    constexpr double enough = 1;  // second
    task();
    Measurement best = measured(task);
    double total = best.wall;
    for (int i = 1; i < most && total < enough; ++i) {
        const Measurement next = measured(task);
        total += next.wall;
        best = next.wall < best.wall ? next : best;
    }
    return best;
}

// For the standard output of a process that measures: a line.
void tell(const std::string& name, const Measurement& measurement);
// What such lines told.
Measurements measurementsOf(const std::string& text);

// Each number is the median of its kind; answers must agree. Throws std::runtime_error.
Measurement median(const std::vector<Measurement>& measurements);
// The fastest; the same holds for answers.
Measurement fastest(const std::vector<Measurement>& measurements);

}  // namespace bench
