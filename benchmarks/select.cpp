// Reads a million points through the layer: what the Python module is measured against. Prints the
// milliseconds of each round, of which the first opens the file.
//   bench_select LIBRARY DATABASE ROUNDS BATCH
#include "qrb/loader.h"
#include "qrb/pointcloud.h"

#include <chrono>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <optional>
#include <vector>

namespace {

using namespace tarvo;
using namespace tarvo::qrb::pointcloud;

std::uint64_t readAll(const qrb::Pointcloud& cloud, std::uint32_t batch) {
    std::vector<double> positions(std::size_t(3) * batch);
    std::vector<std::uint16_t> intensities(batch);
    std::vector<std::uint8_t> classes(batch);
    QuerySelect query = cloud.select("");
    query.bind("tarvo.xyz", DataType::DOUBLE, positions.data(), 24);
    query.bind("tarvo.intensity", DataType::UINT16, intensities.data(), 2);
    query.bind("tarvo.class", DataType::UINT8, classes.data(), 1);
    std::uint64_t total = 0;
    while (const std::uint32_t count = query.next(batch))
        total += count;
    return total;
}

void run(char** arguments) {
    qrb::loadLibrary(arguments[1]);
    const auto batch = static_cast<std::uint32_t>(std::atoi(arguments[4]));
    std::optional<qrb::Context> context;
    std::optional<qrb::Pointcloud> cloud;
    for (int round = 0; round < std::atoi(arguments[3]); ++round) {
        const auto begin = std::chrono::steady_clock::now();
        if (!cloud) {
            context.emplace("OFF", "");
            cloud.emplace(*context);
            cloud->open(arguments[2], OpenSettings(*context));
        }
        const std::uint64_t total = readAll(*cloud, batch);
        const std::chrono::duration<double, std::milli> time =
            std::chrono::steady_clock::now() - begin;
        std::printf("%llu %.3f\n", static_cast<unsigned long long>(total), time.count());
    }
}

}  // namespace

int main(int count, char** arguments) {
    if (count != 5) {
        std::fprintf(stderr, "bench_select LIBRARY DATABASE ROUNDS BATCH\n");
        return 2;
    }
    try {
        run(arguments);
    } catch (const std::exception& error) {
        std::fprintf(stderr, "%s\n", error.what());
        return 1;
    }
    return 0;
}
