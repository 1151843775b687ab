// What the colours of points mean.
#pragma once

#include "drawing/canvas.h"
#include "qrb/pointcloud.h"
#include "view/nodetree.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace tarvo::view {

enum class ColourBy {
    Height,      // the third element of the place, on a ramp
    TrueColour,  // the points' own
    Class,       // a value of an attribute that has named ones, from a palette
    Number,      // any other value, on a ramp
    Level,       // of the node that stores the point, on a ramp
    Transaction  // that changed this node last, from a palette
};

struct ColourChoice {
    ColourBy by = ColourBy::Height;
    std::string attribute;  // of Class and Number
    std::uint32_t element = 0;
    std::optional<drawing::Range> range;  // of a ramp; none: what the statistics of all points say

    friend bool operator==(const ColourChoice&, const ColourChoice&) = default;
};

// As it is written: "height", "rgb", "level", "transaction", "NAME" or "NAME[I]".
std::string colourText(const qrb::Pointcloud& database, const ColourChoice& choice);
// Throws Failure for what the database has not, and qrb::Error.
ColourChoice readColour(const qrb::Pointcloud& database, const std::string& text);
// Every choice that the database allows, the best first: true colours where points differ in them,
// else height. Throws qrb::Error.
std::vector<ColourChoice> colourChoices(const qrb::Pointcloud& database);

struct LegendEntry {
    drawing::Colour colour;
    std::string text;
};

class Colouring {
public:
    // Throws Failure for a choice that the database has not, and qrb::Error.
    Colouring(const qrb::Pointcloud& database, const NodeTree& tree, const ColourChoice& choice);

    const ColourChoice& choice() const { return m_choice; }
    // Elements whose values shade() takes as doubles, at most 3.
    const std::vector<std::string>& elements() const { return m_elements; }
    // What a pixel keeps of a point. values: one for each of elements().
    drawing::Shade shade(const double* values, const ViewNode& node) const;
    drawing::Colour colour(const drawing::Shade& shade) const;

    // Whether colours stand for numbers from low to high; range() and unit() are those.
    bool isRamp() const;
    const drawing::Range& range() const { return m_range; }
    const std::string& unit() const { return m_unit; }
    // Of a palette: what its colours stand for, between the smallest and the largest value that
    // points have; empty where colours are the points' own.
    const std::vector<LegendEntry>& legend() const { return m_legend; }

private:
    void setRange(const qrb::Pointcloud& database, const std::string& element);

    ColourChoice m_choice;
    std::vector<std::string> m_elements;
    drawing::Range m_range;
    std::string m_unit;
    double m_invalid;         // NaN: none
    double m_brightness = 1;  // factor of true colours
    std::vector<LegendEntry> m_legend;
};

// Of points whose value is none.
constexpr drawing::Colour colourOfNothing{150, 150, 150};

}  // namespace tarvo::view
