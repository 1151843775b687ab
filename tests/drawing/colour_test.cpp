// What people can tell apart, reckoned in OKLab (Ottosson 2020) and with the simulation of colour
// vision deficiencies of Machado, Oliveira and Fernandes (2009).
#include "drawing/colour.h"

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <limits>

namespace {

using namespace tarvo::drawing;
using Triple = std::array<double, 3>;
using Matrix = std::array<Triple, 3>;

constexpr Matrix vision[] = {{{{1, 0, 0}, {0, 1, 0}, {0, 0, 1}}},
                             {{{0.152286, 1.052583, -0.204868},
                               {0.114503, 0.786281, 0.099216},
                               {-0.003882, -0.048116, 1.051998}}},
                             {{{0.367322, 0.860646, -0.227968},
                               {0.280085, 0.672501, 0.047413},
                               {-0.011820, 0.042940, 0.968881}}},
                             {{{1.255528, -0.076749, -0.178779},
                               {-0.078411, 0.930809, 0.147602},
                               {0.004733, 0.691367, 0.303900}}}};

Triple times(const Matrix& matrix, const Triple& vector) {
    Triple result{};
    for (std::size_t row = 0; row < 3; ++row)
        for (std::size_t i = 0; i < 3; ++i)
            result[row] += matrix[row][i] * vector[i];
    return result;
}

Triple seenAs(const Colour& colour, const Matrix& eyes) {
    const auto linear = [](std::uint8_t channel) {
        const double value = channel / 255.0;
        return value <= 0.04045 ? value / 12.92 : std::pow((value + 0.055) / 1.055, 2.4);
    };
    Triple light = times(eyes, {linear(colour.red), linear(colour.green), linear(colour.blue)});
    for (double& value : light)
        value = std::min(1.0, std::max(0.0, value));
    Triple cones = times({{{0.4122214708, 0.5363325363, 0.0514459929},
                           {0.2119034982, 0.6806995451, 0.1073969566},
                           {0.0883024619, 0.2817188376, 0.6299787005}}},
                         light);
    for (double& value : cones)
        value = std::cbrt(value);
    return times({{{0.2104542553, 0.7936177850, -0.0040720468},
                   {1.9779984951, -2.4285922050, 0.4505937099},
                   {0.0259040371, 0.7827717662, -0.8086757660}}},
                 cones);
}

double distance(const Triple& a, const Triple& b) {
    return std::hypot(a[0] - b[0], a[1] - b[1], a[2] - b[2]);
}

TEST(Ramp, GrowsBrighterInEvenStepsForEverybody) {
    constexpr int steps = 32;
    for (const Matrix& eyes : vision) {
        Triple before = seenAs(rampColour(0), eyes);
        for (int i = 1; i <= steps; ++i) {
            const Triple here = seenAs(rampColour(i / double(steps)), eyes);
            EXPECT_GT(here[0], before[0]) << i;
            if (&eyes == &vision[0]) {
                EXPECT_GT(distance(here, before), 0.015) << i;
                EXPECT_LT(distance(here, before), 0.032) << i;
            }
            before = here;
        }
    }
    EXPECT_EQ(rampColour(-5), rampColour(0));
    EXPECT_EQ(rampColour(5), rampColour(1));
    EXPECT_EQ(rampColour(std::numeric_limits<double>::quiet_NaN()), rampColour(0));
}

TEST(Palette, KeepsItsColoursApartForEverybody) {
    for (const Matrix& eyes : vision)
        for (int a = 0; a < paletteSize; ++a)
            for (int b = 0; b < a; ++b)
                EXPECT_GT(distance(seenAs(paletteColour(a), eyes), seenAs(paletteColour(b), eyes)),
                          0.07)
                    << a << " and " << b;
    EXPECT_EQ(paletteColour(-1), paletteColour(15));
    EXPECT_EQ(paletteColour(std::numeric_limits<std::int64_t>::min()), paletteColour(0));
}

TEST(Brightness, IsThatOfTheBitsThatAreUsed) {
    EXPECT_EQ(fullBrightness(255, 65535), 255);
    EXPECT_EQ(fullBrightness(256, 65535), 65535);
    EXPECT_EQ(fullBrightness(40, 255), 255);
    EXPECT_EQ(fullBrightness(0, 0), 1);
}

}  // namespace
