// Prints the range of heights of a database, and how many points lie in each tenth of it. C++20,
// through the layer, which loads the library at run time: CMake's qrb::layer, or pkg-config
// qrb-layer.
//
//   heights FILE [FILTER]

#include <qrb/error.h>
#include <qrb/loader.h>
#include <qrb/pointcloud.h>

#include <algorithm>
#include <array>
#include <cstdio>
#include <exception>
#include <string>
#include <vector>

namespace {

namespace qrb = tarvo::qrb;
using qrb::pointcloud::DataType;

void printHeights(const std::string& fileName, const std::string& filter) {
    const qrb::Context context("OFF", "");
    qrb::pointcloud::OpenSettings settings(context);
    settings.readOnly = true;
    qrb::Pointcloud cloud(context);
    cloud.open(fileName, settings);

    // The index knows the range without reading points.
    const auto statistics = cloud.stat();
    const std::uint32_t root = statistics.root().id;
    if (root == 0) {
        std::puts("no points");
        return;
    }
    std::array<double, 3> lowest{}, highest{};
    statistics.minimum(root, "tarvo.xyz", DataType::DOUBLE, lowest.data(), true);
    statistics.maximum(root, "tarvo.xyz", DataType::DOUBLE, highest.data(), true);
    const double low = lowest[2], range = highest[2] - lowest[2];
    std::printf("%.3f to %.3f\n", low, low + range);

    std::vector<double> heights(10000);
    std::array<unsigned long, 10> tenths{};
    auto points = cloud.select(filter);
    points.bind("tarvo.xyz[2]", DataType::DOUBLE, heights.data(), sizeof(double));
    while (const std::uint32_t count = points.next(heights.size())) {
        for (std::uint32_t i = 0; i < count; ++i) {
            const double place = range > 0 ? (heights[i] - low) / range : 0;
            ++tenths[std::clamp(static_cast<int>(10 * place), 0, 9)];
        }
    }
    for (std::size_t i = 0; i < tenths.size(); ++i)
        std::printf("%10.3f %10lu\n", low + range * static_cast<double>(i) / 10, tenths[i]);
}

}  // namespace

int main(int argc, char** argv) {
    if (argc < 2 || argc > 3) {
        std::fputs("heights FILE [FILTER]\n", stderr);
        return 2;
    }
    try {
        qrb::loadLibrary("");  // the default one
        printHeights(argv[1], argc == 3 ? argv[2] : "");
        return 0;
    } catch (const qrb::Error& error) {
        std::fprintf(stderr, "heights: %s\n%s\n", error.what(), error.details());
    } catch (const std::exception& error) {
        std::fprintf(stderr, "heights: %s\n", error.what());
    }
    return 1;
}
