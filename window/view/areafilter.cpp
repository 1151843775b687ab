#include "window/view/areafilter.h"

#include "core/valueformat.h"
#include "numbers/numbertext.h"

#include <algorithm>
#include <cmath>
#include <tuple>

namespace tarvo::window {

namespace {

// Numbers as doubles, with the places of the resolution and one more: a corner then lies between
// two grid values, and which side a point is on does not hang on the last bit.
class Writer {
public:
    explicit Writer(const qrb::pointcloud::PointAttribute& attribute)
        : m_name(attribute.name),
          m_places(attribute.resolution > 0
                       ? std::min(core::decimalsOfResolution(attribute.resolution) + 1, 12)
                       : -1) {}

    std::string element(int axis) const { return m_name + '[' + std::to_string(axis) + ']'; }
    double rounded(double value) const {
        const double unit = std::pow(10, m_places);
        return m_places < 0 ? value : std::round(value * unit) / unit;
    }
    // With a point: the language computes numbers without one as integers.
    static std::string text(double value) {
        const std::string text = numbers::numberText(value);
        return text.find_first_of(".e") == std::string::npos ? text + ".0" : text;
    }
    std::string number(double value) const { return text(rounded(value)); }

    std::string rectangle(const PlanePlace& least, const PlanePlace& most) const {
        std::string filter;
        for (int axis = 0; axis < 2; ++axis) {
            const auto i = static_cast<std::size_t>(axis);
            filter += (axis > 0 ? " && " : "") + element(axis) + " >= " + number(least[i]) +
                      " && " + element(axis) + " <= " + number(most[i]);
        }
        return filter;
    }

private:
    std::string m_name;
    int m_places;
};

}  // namespace

std::string rectangleFilter(const qrb::pointcloud::PointAttribute& attribute,
                            const PlanePlace& corner, const PlanePlace& opposite) {
    PlanePlace least;
    PlanePlace most;
    for (std::size_t i = 0; i < 2; ++i)
        std::tie(least[i], most[i]) = std::minmax({corner[i], opposite[i]});
    return Writer(attribute).rectangle(least, most);
}

std::string polygonFilter(const qrb::pointcloud::PointAttribute& attribute,
                          const std::vector<PlanePlace>& corners) {
    const Writer writer(attribute);
    PlanePlace least = corners.front();
    PlanePlace most = corners.front();
    std::string crossings;
    const std::string x = writer.element(0);
    const std::string y = writer.element(1);
    for (std::size_t i = 0; i < corners.size(); ++i) {
        for (std::size_t axis = 0; axis < 2; ++axis) {
            least[axis] = std::min(least[axis], corners[i][axis]);
            most[axis] = std::max(most[axis], corners[i][axis]);
        }
        const auto& from = corners[i];
        const auto& to = corners[(i + 1) % corners.size()];
        const double fromX = writer.rounded(from[0]);
        const double fromY = writer.rounded(from[1]);
        const double rise = writer.rounded(to[1]) - fromY;
        if (rise == 0)
            continue;
        const double slope = (writer.rounded(to[0]) - fromX) / rise;
        // Whether a ray to the right crosses this edge: 1 or 0.
        crossings += (crossings.empty() ? "" : " + ") + ("((" + y + " < " + writer.number(fromY)) +
                     ") != (" + y + " < " + writer.number(to[1]) + ")) * (" + x + " < " +
                     Writer::text(fromX) + " + (" + y + " - " + Writer::text(fromY) + ") * " +
                     Writer::text(slope) + ")";
    }
    const std::string around = writer.rectangle(least, most);
    return crossings.empty() ? around : around + " && (" + crossings + ") % 2 == 1";
}

}  // namespace tarvo::window
