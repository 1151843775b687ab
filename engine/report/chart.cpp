#include "engine/report/chart.h"

#include <algorithm>

namespace tarvo::engine::report {

namespace {

constexpr drawing::Colour barColour{62, 128, 200};
constexpr drawing::Colour axisColour{128, 128, 128};
constexpr unsigned chartWidth = 256;
constexpr unsigned chartHeight = 64;

}  // namespace

drawing::Image drawBars(const Histogram& histogram) {
    drawing::Image image(chartWidth, chartHeight + 1);
    for (unsigned x = 0; x < chartWidth; ++x)
        image.at(x, chartHeight) = axisColour;
    std::uint64_t most = 1;
    for (const Bin& bin : histogram.bins)
        most = std::max(most, bin.count);
    const auto bins = static_cast<unsigned>(histogram.bins.size());
    for (unsigned i = 0; i < bins; ++i) {
        const std::uint64_t count = histogram.bins[i].count;
        // What occurs at all can be seen.
        const unsigned height =
            count == 0
                ? 0
                : std::max(1u, static_cast<unsigned>(static_cast<double>(count) /
                                                     static_cast<double>(most) * chartHeight));
        // A gap between bars that are wide enough for one.
        const unsigned end = (i + 1) * chartWidth / bins - (chartWidth / bins > 3 ? 1 : 0);
        for (unsigned x = i * chartWidth / bins; x < end; ++x)
            for (unsigned y = chartHeight - height; y < chartHeight; ++y)
                image.at(x, y) = barColour;
    }
    return image;
}

drawing::Image drawBarPixel() {
    drawing::Image image(1, 1);
    image.at(0, 0) = barColour;
    return image;
}

}  // namespace tarvo::engine::report
