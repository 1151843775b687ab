// Points drawn by the processor: what lies in each pixel, and then its colours.
#pragma once

#include "drawing/image.h"

#include <array>
#include <cstdint>
#include <functional>
#include <vector>

namespace tarvo::drawing {

// What a pixel shows: red, green and blue from 0 to 255, or one value first.
using Shade = std::array<double, 3>;

struct Pixel {
    double count = 0;  // points; 0: empty
    double depth = 0;  // of the one that is shown, where one is
    Shade sum{};       // of the points, or the shade of the one that is shown

    Shade mean() const { return {sum[0] / count, sum[1] / count, sum[2] / count}; }
};

class Canvas {
public:
    enum class Keep {
        Mean,    // of all points in a pixel
        Nearest  // the one with the least depth; of several the one that came first
    };

    // Sides in pixels, at least 1 each. A pixel takes 40 bytes.
    Canvas(unsigned width, unsigned height, Keep keep)
        : m_width(width), m_height(height), m_keep(keep), m_pixels(std::size_t(width) * height) {}

    unsigned width() const { return m_width; }
    unsigned height() const { return m_height; }
    const Pixel& at(unsigned x, unsigned y) const { return m_pixels[std::size_t(y) * m_width + x]; }
    const std::vector<Pixel>& pixels() const { return m_pixels; }

    // A point in a pixel that lies within the canvas.
    void put(unsigned x, unsigned y, double depth, const Shade& shade) {
        Pixel& pixel = m_pixels[std::size_t(y) * m_width + x];
        if (m_keep == Keep::Mean) {
            for (std::size_t i = 0; i < 3; ++i)
                pixel.sum[i] += shade[i];
        } else if (pixel.count == 0 || depth < pixel.depth) {
            pixel.depth = depth;
            pixel.sum = shade;
        }
        ++pixel.count;
    }
    // The colour of a pixel's point, or what its points are on average.
    Shade shadeOf(const Pixel& pixel) const {
        return m_keep == Keep::Mean ? pixel.mean() : pixel.sum;
    }

    // Where points are few they leave gaps: an empty pixel gets what the points around it are on
    // average, or the nearest of them. points: that were drawn.
    void closeGaps(std::uint64_t points);

    // Empty pixels stay transparent.
    Image paint(const std::function<Colour(const Pixel&)>& colour) const;

private:
    void fill(Pixel& pixel, const std::vector<Pixel>& drawn, unsigned x, unsigned y,
              unsigned reach) const;

    unsigned m_width;
    unsigned m_height;
    Keep m_keep;
    std::vector<Pixel> m_pixels;
};

// A shade of three channels as a colour.
Colour trueColour(const Shade& shade);

// The range over which colours are spread: of the values without the outermost 2 per cent, which
// would leave hardly any colour to the rest. 0 and 0 of none.
struct Range {
    double low = 0;
    double high = 0;

    // 0 at the low end, 1 at the high one; a half where they are one.
    double place(double value) const { return high > low ? (value - low) / (high - low) : 0.5; }
    friend bool operator==(const Range&, const Range&) = default;
};
Range spreadOf(std::vector<double> values);

}  // namespace tarvo::drawing
