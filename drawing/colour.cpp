#include "drawing/colour.h"

#include <algorithm>
#include <cmath>
#include <iterator>

namespace tarvo::drawing {

Colour rampColour(double place) {
    // Steps of equal length in the colour space OKLab, through hues from 295 to 105 degrees.
    constexpr double stops[][3] = {
        {64, 29, 121},   {59, 48, 139},  {48, 67, 155},  {23, 85, 166},   {4, 100, 165},
        {7, 113, 162},   {8, 128, 163},  {12, 144, 164}, {0, 160, 166},   {7, 174, 165},
        {1, 188, 161},   {31, 200, 153}, {94, 211, 143}, {138, 220, 132}, {177, 228, 123},
        {214, 235, 117}, {250, 241, 117}};
    constexpr std::size_t last = std::size(stops) - 1;
    const double at = place > 0 ? std::min(place, 1.0) * last : 0;
    const std::size_t low = std::min(static_cast<std::size_t>(at), last - 1);
    const auto channel = [&](std::size_t i) {
        const double part = at - static_cast<double>(low);
        return static_cast<std::uint8_t>(stops[low][i] +
                                         (stops[low + 1][i] - stops[low][i]) * part + 0.5);
    };
    return {channel(0), channel(1), channel(2)};
}

Colour paletteColour(std::int64_t number) {
    // Chosen so that each two keep a distance of 0.07 in OKLab, also as people without one of the
    // three kinds of cones see them.
    static constexpr Colour colours[paletteSize] = {
        {118, 118, 118}, {200, 200, 200}, {144, 107, 63},  {138, 218, 68},
        {60, 161, 111},  {20, 73, 20},    {233, 21, 20},   {224, 60, 179},
        {33, 189, 154},  {23, 83, 221},   {110, 50, 160},  {71, 49, 74},
        {224, 244, 58},  {226, 143, 33},  {150, 145, 255}, {255, 202, 148}};
    return colours[(number % paletteSize + paletteSize) % paletteSize];
}

double fullBrightness(double present, double possible) {
    return present <= 255 && possible > 255 ? 255 : std::max(possible, 1.0);
}

}  // namespace tarvo::drawing
