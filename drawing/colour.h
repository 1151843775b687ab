// Colours that mean something: those of numbers on a ramp, and those of classes.
#pragma once

#include <cstdint>

namespace tarvo::drawing {

struct Colour {
    std::uint8_t red = 0;
    std::uint8_t green = 0;
    std::uint8_t blue = 0;
    std::uint8_t alpha = 255;

    friend bool operator==(const Colour&, const Colour&) = default;
};

// The colour at a place, 0 to 1, on a ramp from dark blue over green to light yellow, along which
// brightness grows evenly, so that it is read in grey and by the colour-blind, too. What lies
// beyond has the end's colour, NaN the low end's.
Colour rampColour(double place);

// The colour of a class. Those of the first sixteen numbers can be told apart by everybody; of the
// numbers that airborne surveys use 2 is brown, 3 to 5 are greens, 6 is red, 9 blue. Further
// numbers repeat them.
constexpr int paletteSize = 16;
Colour paletteColour(std::int64_t number);

// The value that is shown as full brightness of a channel whose largest value is present and whose
// type or range ends at possible: colours of 8 bits often stand in fields of 16.
double fullBrightness(double present, double possible);

}  // namespace tarvo::drawing
