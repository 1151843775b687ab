// A picture of pixels, and its form as a PNG file.
#pragma once

#include "drawing/colour.h"

#include <cstddef>
#include <cstdint>
#include <vector>

namespace tarvo::drawing {

// Rows from the top, transparent at first.
class Image {
public:
    Image(unsigned width, unsigned height)
        : m_width(width),
          m_height(height),
          m_pixels(std::size_t(width) * height, Colour{0, 0, 0, 0}) {}

    unsigned width() const { return m_width; }
    unsigned height() const { return m_height; }
    Colour& at(unsigned x, unsigned y) { return m_pixels[std::size_t(y) * m_width + x]; }
    const Colour& at(unsigned x, unsigned y) const {
        return m_pixels[std::size_t(y) * m_width + x];
    }
    // Red, green, blue and alpha of each pixel, a byte each.
    const Colour* pixels() const { return m_pixels.data(); }

private:
    unsigned m_width;
    unsigned m_height;
    std::vector<Colour> m_pixels;
};

// The bytes of a PNG file, the same for the same picture wherever one version of the compression
// makes them. Throws std::bad_alloc, and std::runtime_error where the picture can't be written.
std::vector<std::uint8_t> pngOf(const Image& image);

}  // namespace tarvo::drawing
