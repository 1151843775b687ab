#include "engine/report/picture.h"

#include "engine/report/leafreader.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <tuple>
#include <utility>

namespace tarvo::engine::report {

namespace {

constexpr unsigned longSide = 480;  // pixels
constexpr unsigned shortestSide = 24;
constexpr const char* colourAttribute = "tarvo.rgba";

// From the codes of an element to values above its minimum.
class Axis {
public:
    Axis(const schema::Attribute& attribute, const schema::ElementStatistics& statistics)
        : m_grid(attribute.grid),
          m_statistics(statistics),
          m_float(attribute.grid.kind() == schema::Grid::Kind::Float),
          m_resolution(attribute.record.resolution),
          m_low(attribute.grid.value(statistics.minimum)) {}

    bool isUsable() const {
        return m_statistics.hasValid && std::isfinite(m_low) && std::isfinite(length());
    }
    double low() const { return m_low; }
    double length() const { return at(m_statistics.maximum); }
    bool has(std::uint64_t code) const {
        return !m_grid.isInvalid(code) && code >= m_statistics.minimum &&
               code <= m_statistics.maximum;
    }
    double at(std::uint64_t code) const {
        return m_float ? m_grid.value(code) - m_low
                       : static_cast<double>(code - m_statistics.minimum) * m_resolution;
    }

private:
    const schema::Grid& m_grid;
    schema::ElementStatistics m_statistics;
    bool m_float;
    double m_resolution;
    double m_low;
};

// What the points within a pixel add up to.
struct Pixel {
    double count = 0;
    std::array<double, 3> sum{};  // of the colours, or first of the heights

    void add(const Pixel& other, double weight = 1) {
        count += other.count * weight;
        for (std::size_t i = 0; i < 3; ++i)
            sum[i] += other.sum[i] * weight;
    }
};

class Canvas {
public:
    Canvas(double right, double up) {
        m_longer = std::max(right, up);
        m_width = side(scaled(right));
        m_height = side(scaled(up));
        m_left = (m_width - 1 - scaled(right)) / 2;
        m_bottom = (m_height - 1 - scaled(up)) / 2;
        m_pixels.resize(std::size_t(m_width) * m_height);
    }

    unsigned width() const { return m_width; }
    unsigned height() const { return m_height; }
    Pixel& at(unsigned x, unsigned y) { return m_pixels[std::size_t(y) * m_width + x]; }
    const std::vector<Pixel>& pixels() const { return m_pixels; }
    Pixel& ofPoint(double right, double up) {
        return at(place(m_left + scaled(right), m_width),
                  m_height - 1 - place(m_bottom + scaled(up), m_height));
    }

    // Few points leave gaps: an empty pixel gets what the points around it are on average.
    void closeGaps(std::uint64_t points) {
        const double density = static_cast<double>(points) / static_cast<double>(m_pixels.size());
        const int reach = density > 4 ? 0 : density > 0.5 ? 1 : density > 0.05 ? 2 : 3;
        if (reach == 0)
            return;
        const std::vector<Pixel> drawn = m_pixels;
        const int width = static_cast<int>(m_width);
        const int height = static_cast<int>(m_height);
        for (int y = 0; y < height; ++y)
            for (int x = 0; x < width; ++x) {
                Pixel& pixel = m_pixels[static_cast<std::size_t>(y * width + x)];
                if (pixel.count != 0)
                    continue;
                Pixel around;
                int filled = 0;
                for (int v = std::max(0, y - reach); v <= std::min(height - 1, y + reach); ++v)
                    for (int u = std::max(0, x - reach); u <= std::min(width - 1, x + reach); ++u) {
                        const Pixel& other = drawn[static_cast<std::size_t>(v * width + u)];
                        around.add(other);
                        filled += other.count != 0;
                    }
                if (filled > 0)
                    pixel.add(around, 1.0 / filled);
            }
    }

private:
    // In pixels. A factor for tiny extents could be beyond what a number holds.
    double scaled(double length) const {
        return m_longer > 0 ? length / m_longer * (longSide - 1) : 0;
    }
    static unsigned side(double length) {
        return std::max(shortestSide, static_cast<unsigned>(std::ceil(length)) + 1);
    }
    static unsigned place(double position, unsigned side) {
        return static_cast<unsigned>(std::clamp(position + 0.5, 0.0, side - 1.0));
    }

    double m_longer;
    unsigned m_width;
    unsigned m_height;
    double m_left;  // margins, where a side would be too short
    double m_bottom;
    std::vector<Pixel> m_pixels;
};

// The index of the colour attribute when points differ in colour, else -1.
int findColours(const Facts& facts) {
    const int found = facts.state->attributes.find(colourAttribute);
    if (found < 0)
        return -1;
    const auto index = static_cast<std::size_t>(found);
    const schema::Attribute& attribute = facts.state->attributes[index];
    if (attribute.record.length < 3 || attribute.grid.kind() == schema::Grid::Kind::Float)
        return -1;
    for (std::size_t e = 0; e < 3; ++e) {
        const schema::ElementStatistics& s = facts.attributes[index].elements[e];
        if (s.hasValid && s.minimum < s.maximum)
            return found;
    }
    return -1;
}

// The code that is shown as full brightness. Colours of 8 bits often stand in fields of 16.
double brightest(const Facts& facts, std::size_t colours) {
    std::uint64_t present = 0;
    for (std::size_t e = 0; e < 3; ++e)
        if (const schema::ElementStatistics& s = facts.attributes[colours].elements[e]; s.hasValid)
            present = std::max(present, s.maximum);
    const std::uint64_t possible = facts.state->attributes[colours].grid.maximumCode();
    return static_cast<double>(
        present <= 255 && possible > 255 ? 255 : std::max<std::uint64_t>(possible, 1));
}

// The range that the colours are spread over: without the outermost 2 per cent of the pixels,
// which would leave hardly any colour to the rest.
std::pair<double, double> spread(std::vector<double> values) {
    if (values.empty())
        return {0, 0};
    std::sort(values.begin(), values.end());
    const std::size_t margin = values.size() / 50;
    return {values[margin], values[values.size() - 1 - margin]};
}

void paint(Picture& picture, Canvas& canvas) {
    const auto valueOf = [&](const Pixel& pixel) {
        return picture.colouring == Colouring::Count ? std::log1p(pixel.count)
                                                     : pixel.sum[0] / pixel.count;
    };
    if (picture.colouring != Colouring::TrueColour) {
        std::vector<double> values;
        for (const Pixel& pixel : canvas.pixels())
            if (pixel.count != 0)
                values.push_back(valueOf(pixel));
        std::tie(picture.low, picture.high) = spread(std::move(values));
    }
    for (unsigned y = 0; y < canvas.height(); ++y)
        for (unsigned x = 0; x < canvas.width(); ++x) {
            const Pixel& pixel = canvas.at(x, y);
            if (pixel.count == 0)
                continue;
            if (picture.colouring == Colouring::TrueColour) {
                const auto channel = [&](std::size_t i) {
                    return static_cast<std::uint8_t>(
                        std::clamp(pixel.sum[i] / pixel.count + 0.5, 0.0, 255.0));
                };
                picture.image.at(x, y) = {channel(0), channel(1), channel(2)};
            } else {
                const double range = picture.high - picture.low;
                picture.image.at(x, y) =
                    rampColour(range > 0 ? (valueOf(pixel) - picture.low) / range : 0.5);
            }
        }
}

}  // namespace

Colour rampColour(double place) {
    // Blue, green, yellow, red: dark and bright enough for a dark and for a bright background.
    constexpr double stops[][3] = {{58, 76, 192},  {38, 140, 196}, {46, 173, 120},
                                   {150, 190, 60}, {228, 164, 44}, {206, 62, 40}};
    constexpr std::size_t last = std::size(stops) - 1;
    const double at = std::clamp(place, 0.0, 1.0) * last;
    const std::size_t low = std::min(static_cast<std::size_t>(at), last - 1);
    const auto channel = [&](std::size_t i) {
        return static_cast<std::uint8_t>(std::lround(
            std::lerp(stops[low][i], stops[low + 1][i], at - static_cast<double>(low))));
    };
    return {channel(0), channel(1), channel(2)};
}

std::optional<Picture> drawPicture(session::Session& session, const Facts& facts,
                                   std::uint64_t step) {
    const schema::Attribute& primary = facts.state->primary();
    const std::vector<schema::ElementStatistics>& extent = facts.attributes[0].elements;
    if (facts.state->pointCount == 0 || primary.record.length < 2)
        return std::nullopt;
    const Axis right(primary, extent[0]);
    const Axis up(primary, extent[1]);
    if (!right.isUsable() || !up.isUsable())
        return std::nullopt;

    std::vector<ColumnRef> columns{{0, 0}, {0, 1}};
    Colouring colouring = Colouring::Count;
    double factor = 1;
    if (const int colours = findColours(facts); colours >= 0) {
        colouring = Colouring::TrueColour;
        const auto index = static_cast<std::size_t>(colours);
        for (std::uint32_t e = 0; e < 3; ++e)
            columns.push_back({index, e});
        factor = 255 / brightest(facts, index);
    } else if (primary.record.length > 2 && Axis(primary, extent[2]).isUsable()) {
        colouring = Colouring::Height;
        columns.push_back({0, 2});
    }
    const Axis height(primary, extent[std::min<std::size_t>(2, extent.size() - 1)]);

    Canvas canvas(right.length(), up.length());
    std::uint64_t points = 0;
    LeafReader reader(session, facts, columns, step);
    while (const auto leaf = reader.next()) {
        const schema::Column& x = *(*leaf)[0];
        const schema::Column& y = *(*leaf)[1];
        points += x.size();
        for (std::size_t i = 0; i < x.size(); ++i) {
            if (!right.has(x[i]) || !up.has(y[i]))
                continue;
            Pixel point{1, {}};
            if (colouring == Colouring::TrueColour) {
                for (std::size_t c = 0; c < 3; ++c)
                    point.sum[c] = static_cast<double>((*(*leaf)[2 + c])[i]) * factor;
            } else if (colouring == Colouring::Height) {
                const std::uint64_t z = (*(*leaf)[2])[i];
                if (!height.has(z))
                    continue;
                point.sum[0] = height.at(z);
            }
            canvas.ofPoint(right.at(x[i]), up.at(y[i])).add(point);
        }
    }
    canvas.closeGaps(points);
    Picture picture{Image(canvas.width(), canvas.height()), colouring, 0, 0};
    paint(picture, canvas);
    if (colouring == Colouring::Height) {
        picture.low += height.low();
        picture.high += height.low();
    } else if (colouring == Colouring::Count) {
        picture.low = std::expm1(picture.low);
        picture.high = std::expm1(picture.high);
    }
    return picture;
}

}  // namespace tarvo::engine::report
