#include "drawing/canvas.h"

#include <algorithm>

namespace tarvo::drawing {

void Canvas::closeGaps(std::uint64_t points) {
    const double density = static_cast<double>(points) / static_cast<double>(m_pixels.size());
    const unsigned reach = density > 4 ? 0 : density > 0.5 ? 1 : density > 0.05 ? 2 : 3;
    if (reach == 0)
        return;
    const std::vector<Pixel> drawn = m_pixels;
    for (unsigned y = 0; y < m_height; ++y)
        for (unsigned x = 0; x < m_width; ++x)
            if (Pixel& pixel = m_pixels[std::size_t(y) * m_width + x]; pixel.count == 0)
                fill(pixel, drawn, x, y, reach);
}

void Canvas::fill(Pixel& pixel, const std::vector<Pixel>& drawn, unsigned x, unsigned y,
                  unsigned reach) const {
    Pixel around;
    int filled = 0;
    for (unsigned v = y - std::min(y, reach); v <= std::min(m_height - 1, y + reach); ++v)
        for (unsigned u = x - std::min(x, reach); u <= std::min(m_width - 1, x + reach); ++u) {
            const Pixel& other = drawn[std::size_t(v) * m_width + u];
            if (other.count == 0)
                continue;
            ++filled;
            if (m_keep == Keep::Nearest) {
                if (filled == 1 || other.depth < around.depth)
                    around = other;
                continue;
            }
            around.count += other.count;
            for (std::size_t i = 0; i < 3; ++i)
                around.sum[i] += other.sum[i];
        }
    if (filled == 0)
        return;
    pixel = around;
    if (m_keep == Keep::Mean) {
        pixel.count /= filled;
        for (double& sum : pixel.sum)
            sum /= filled;
    }
}

Image Canvas::paint(const std::function<Colour(const Pixel&)>& colour) const {
    Image image(m_width, m_height);
    for (unsigned y = 0; y < m_height; ++y)
        for (unsigned x = 0; x < m_width; ++x)
            if (const Pixel& pixel = at(x, y); pixel.count != 0)
                image.at(x, y) = colour(pixel);
    return image;
}

Colour trueColour(const Shade& shade) {
    const auto channel = [&](std::size_t i) {
        return static_cast<std::uint8_t>(std::clamp(shade[i] + 0.5, 0.0, 255.0));
    };
    return {channel(0), channel(1), channel(2)};
}

Range spreadOf(std::vector<double> values) {
    if (values.empty())
        return {};
    std::sort(values.begin(), values.end());
    const std::size_t margin = values.size() / 50;
    return {values[margin], values[values.size() - 1 - margin]};
}

}  // namespace tarvo::drawing
