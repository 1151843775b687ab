// The cloud seen from above: the first two elements of the primary attribute to the right and
// upwards, to scale.
#pragma once

#include "drawing/image.h"
#include "engine/report/facts.h"

#include <cstdint>
#include <optional>

namespace tarvo::engine::report {

// What the colours mean.
enum class Colouring {
    TrueColour,  // those of "tarvo.rgba"
    Height,      // the third element, from low to high
    Count        // points per pixel, from low to high, logarithmic
};

struct Picture {
    drawing::Image image;
    Colouring colouring;
    double
        low;  // what the ends of the colour ramp stand for; what lies beyond has the end's colour
    double high;
};

// None where the primary attribute has no second element, or there are no points. From every
// step-th leaf.
std::optional<Picture> drawPicture(session::Session& session, const Facts& facts,
                                   std::uint64_t step);

}  // namespace tarvo::engine::report
