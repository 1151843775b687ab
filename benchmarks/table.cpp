#include "benchmarks/table.h"

#include <algorithm>
#include <cstdio>

namespace bench {

namespace {

// Three digits that count, or a dash for what was not measured.
std::string number(double value) {
    if (value == 0)
        return "-";
    char text[40];
    std::snprintf(text, sizeof text,
                  value < 0.1    ? "%.4f"
                  : value < 10   ? "%.3f"
                  : value < 1000 ? "%.1f"
                                 : "%.0f",
                  value);
    return text;
}

std::string megabytes(double value) {
    char text[40];
    std::snprintf(text, sizeof text, "%.0f", value);
    return value == 0 ? "-" : text;
}

const char* verdict(bool met) {
    return met ? "yes" : "NO";
}

}  // namespace

void printComparisonHead() {
    std::printf("%-38s %-5s %9s %9s %-7s %6s %6s %4s %9s %9s %5s\n", "", "unit", "ours", "DuckDB",
                "", "ratio", "target", "met", "CPU ours", "CPU Duck", "MiB");
}

void printComparison(const Comparison& comparison) {
    const auto& [name, unit, ours, peers, target] = comparison;
    const auto best = std::min_element(
        peers.begin(), peers.end(),
        [](const auto& a, const auto& b) { return a.second.wall < b.second.wall; });
    const bool alone = best == peers.end();
    const double ratio = alone ? 0 : ours.wall / best->second.wall;
    // The way's name without its ending.
    const std::string way = alone ? "" : best->first.substr(0, best->first.find('.'));
    std::printf("%-38s %-5s %9s %9s %-7s %6s %6.2f %4s %9s %9s %5s\n", name.c_str(), unit.name,
                number(ours.wall * unit.factor).c_str(),
                number(alone ? 0 : best->second.wall * unit.factor).c_str(), way.c_str(),
                number(ratio).c_str(), target, alone ? "-" : verdict(ratio <= target),
                number(ours.cpu * unit.factor).c_str(),
                number(alone ? 0 : best->second.cpu * unit.factor).c_str(),
                megabytes(ours.mebibytes).c_str());
    std::fflush(stdout);
}

void printGrowthHead() {
    std::printf("%-38s %-6s %9s %9s %6s %6s %4s %9s %5s %4s\n", "", "unit", "small", "large",
                "ratio", "target", "met", "CPU large", "MiB", "met");
}

void printGrowth(const Growth& growth) {
    const auto& [name, unit, small, large, target] = growth;
    const double ratio = large.wall / small.wall;
    std::printf("%-38s %-6s %9s %9s %6s %6s %4s %9s %5s %4s\n", name.c_str(), unit.name,
                number(small.wall * unit.factor).c_str(), number(large.wall * unit.factor).c_str(),
                number(ratio).c_str(), number(target).c_str(),
                target == 0 ? "-" : verdict(ratio <= target),
                number(large.cpu * unit.factor).c_str(), megabytes(large.mebibytes).c_str(),
                verdict(large.mebibytes <= memoryLimit));
    std::fflush(stdout);
}

void printRate(const std::string& name, const Measurement& small, const Measurement& large,
               double target) {
    const auto rate = [](const Measurement& measurement) {
        return static_cast<double>(measurement.answer) / measurement.wall / 1e6;
    };
    std::printf("%-38s %-6s %9s %9s %6s %6s %4s %9s %5s %4s\n", name.c_str(), "Mpt/s",
                number(rate(small)).c_str(), number(rate(large)).c_str(), "-",
                (">" + number(target)).c_str(), verdict(rate(large) >= target), "-",
                megabytes(large.mebibytes).c_str(), verdict(large.mebibytes <= memoryLimit));
    std::fflush(stdout);
}

}  // namespace bench
