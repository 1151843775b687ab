// A small picture and its form within HTML.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace tarvo::engine::report {

struct Colour {
    std::uint8_t red = 0;
    std::uint8_t green = 0;
    std::uint8_t blue = 0;
    std::uint8_t alpha = 255;
};

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
    const Colour* pixels() const { return m_pixels.data(); }

private:
    unsigned m_width;
    unsigned m_height;
    std::vector<Colour> m_pixels;
};

// "data:image/png;base64,...": the picture as part of the text.
std::string dataUri(const Image& image);

}  // namespace tarvo::engine::report
