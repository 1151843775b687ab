#include "window/view/plainrenderer.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace tarvo::window {

namespace {

// Points that are drawn while the eye moves.
constexpr std::uint64_t quickPoints = 300'000;

bool isSameView(const drawing::Camera& a, const drawing::Camera& b) {
    return a.width() == b.width() && a.height() == b.height() && a.middle() == b.middle() &&
           a.extent() == b.extent() && a.heading() == b.heading() &&
           a.elevation() == b.elevation() && a.isPerspective() == b.isPerspective();
}

QRgb mixed(const drawing::Colour& colour, const drawing::Colour& ground) {
    const auto mix = [&](int one, int other) {
        return (one * colour.alpha + other * (255 - colour.alpha)) / 255;
    };
    return qRgb(mix(colour.red, ground.red), mix(colour.green, ground.green),
                mix(colour.blue, ground.blue));
}

// A square of pixels for each point; of several the nearest is seen.
class Squares {
public:
    Squares(const DrawingOrder& order, QImage& image, std::vector<float>& depths)
        : m_order(order),
          m_depths(depths),
          m_pixels(reinterpret_cast<QRgb*>(image.bits())),
          m_width(static_cast<int>(order.camera.width())),
          m_height(static_cast<int>(order.camera.height())),
          m_size(static_cast<int>(order.pointSize)) {
        const Depths depths_ = depthsOf(order);
        m_beyond = static_cast<float>(depths_.farthest - depths_.nearest);
    }

    void add(const view::PointBlock& block, std::size_t every) {
        const drawing::Camera& camera = m_order.camera;
        const drawing::Vector way = block.origin - camera.middle();
        const double right = dot(way, camera.right());
        const double up = dot(way, camera.up());
        const double back = dot(way, camera.back());
        const double scale = 1 / camera.unitsPerPixel();
        const double distance = camera.distance();
        for (std::size_t i = 0; i < block.places.size(); i += every) {
            const auto& place = block.places[i];
            const drawing::Vector local{place[0], place[1], place[2]};
            const double towards = back + dot(local, camera.back());
            double pixels = scale;
            if (camera.isPerspective()) {
                const double away = distance - towards;
                if (away < distance * 1e-3)
                    continue;
                pixels *= distance / away;
            }
            const double x = m_width * 0.5 + (right + dot(local, camera.right())) * pixels;
            const double y = m_height * 0.5 - (up + dot(local, camera.up())) * pixels;
            if (!(x > -m_size && y > -m_size && x < m_width + m_size && y < m_height + m_size))
                continue;
            const drawing::Colour& colour = block.colours[i];
            put(x, y, static_cast<float>(-towards) + (colour.alpha < 255 ? m_beyond : 0),
                mixed(colour, m_order.ground));
        }
    }

private:
    void put(double x, double y, float depth, QRgb colour) {
        const int left = static_cast<int>(std::floor(x - (m_size - 1) * 0.5));
        const int top = static_cast<int>(std::floor(y - (m_size - 1) * 0.5));
        for (int row = std::max(top, 0); row < std::min(top + m_size, m_height); ++row)
            for (int column = std::max(left, 0); column < std::min(left + m_size, m_width);
                 ++column) {
                const std::size_t pixel =
                    std::size_t(row) * std::size_t(m_width) + static_cast<std::size_t>(column);
                if (depth < m_depths[pixel]) {
                    m_depths[pixel] = depth;
                    m_pixels[pixel] = colour;
                }
            }
    }

    const DrawingOrder& m_order;
    std::vector<float>& m_depths;
    QRgb* m_pixels;
    int m_width;
    int m_height;
    int m_size;
    float m_beyond = 0;  // what is added to the depth of faded points
};

}  // namespace

bool PlainRenderer::draw(const DrawingOrder& order, QImage& image,
                         const std::function<bool()>& isOutdated) {
    const drawing::Camera& camera = order.camera;
    std::uint64_t points = 0;
    for (const auto& block : order.blocks)
        points += block->places.size();
    const bool isQuick = points > quickPoints && !isSameView(camera, m_camera);
    m_camera = camera;
    const std::size_t every = isQuick ? points / quickPoints + 1 : 1;

    image = QImage(static_cast<int>(camera.width()), static_cast<int>(camera.height()),
                   QImage::Format_RGB32);
    image.fill(qRgb(order.ground.red, order.ground.green, order.ground.blue));
    m_depths.assign(std::size_t(camera.width()) * camera.height(),
                    std::numeric_limits<float>::infinity());
    Squares squares(order, image, m_depths);
    for (const auto& block : order.blocks) {
        if (points > quickPoints && !isQuick && isOutdated()) {
            image = {};
            return false;
        }
        if (camera.mayShow(block->box))
            squares.add(*block, every);
    }
    return !isQuick;
}

}  // namespace tarvo::window
