#include "engine/report/picture.h"

#include "drawing/canvas.h"
#include "engine/report/leafreader.h"

#include <algorithm>
#include <array>
#include <cmath>
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

// Where the points come to lie on a canvas that keeps their proportions.
class Frame {
public:
    Frame(double right, double up)
        : m_longer(std::max(right, up)), m_width(side(scaled(right))), m_height(side(scaled(up))) {
        m_left = (m_width - 1 - scaled(right)) / 2;
        m_bottom = (m_height - 1 - scaled(up)) / 2;
    }

    unsigned width() const { return m_width; }
    unsigned height() const { return m_height; }
    unsigned x(double right) const { return place(m_left + scaled(right), m_width); }
    unsigned y(double up) const { return m_height - 1 - place(m_bottom + scaled(up), m_height); }

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

// The code that is shown as full brightness.
double brightest(const Facts& facts, std::size_t colours) {
    std::uint64_t present = 0;
    for (std::size_t e = 0; e < 3; ++e)
        if (const schema::ElementStatistics& s = facts.attributes[colours].elements[e]; s.hasValid)
            present = std::max(present, s.maximum);
    return drawing::fullBrightness(
        static_cast<double>(present),
        static_cast<double>(facts.state->attributes[colours].grid.maximumCode()));
}

Picture paint(const drawing::Canvas& canvas, Colouring colouring) {
    if (colouring == Colouring::TrueColour)
        return {canvas.paint(
                    [](const drawing::Pixel& pixel) { return drawing::trueColour(pixel.mean()); }),
                colouring, 0, 0};
    const auto valueOf = [&](const drawing::Pixel& pixel) {
        return colouring == Colouring::Count ? std::log1p(pixel.count) : pixel.mean()[0];
    };
    std::vector<double> values;
    for (const drawing::Pixel& pixel : canvas.pixels())
        if (pixel.count != 0)
            values.push_back(valueOf(pixel));
    const drawing::Range range = drawing::spreadOf(std::move(values));
    return {canvas.paint([&](const drawing::Pixel& pixel) {
                return drawing::rampColour(range.place(valueOf(pixel)));
            }),
            colouring, range.low, range.high};
}

}  // namespace

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

    const Frame frame(right.length(), up.length());
    drawing::Canvas canvas(frame.width(), frame.height(), drawing::Canvas::Keep::Mean);
    std::uint64_t points = 0;
    LeafReader reader(session, facts, columns, step);
    while (const auto leaf = reader.next()) {
        const schema::Column& x = *(*leaf)[0];
        const schema::Column& y = *(*leaf)[1];
        points += x.size();
        for (std::size_t i = 0; i < x.size(); ++i) {
            if (!right.has(x[i]) || !up.has(y[i]))
                continue;
            drawing::Shade point{};
            if (colouring == Colouring::TrueColour) {
                for (std::size_t c = 0; c < 3; ++c)
                    point[c] = static_cast<double>((*(*leaf)[2 + c])[i]) * factor;
            } else if (colouring == Colouring::Height) {
                const std::uint64_t z = (*(*leaf)[2])[i];
                if (!height.has(z))
                    continue;
                point[0] = height.at(z);
            }
            canvas.put(frame.x(right.at(x[i])), frame.y(up.at(y[i])), 0, point);
        }
    }
    canvas.closeGaps(points);
    Picture picture = paint(canvas, colouring);
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
