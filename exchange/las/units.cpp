#include "exchange/las/units.h"

#include "core/utf8.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace tarvo::exchange::las {

namespace {

struct Unit {
    int code;  // EPSG
    const char* symbol;
    double factor;  // to metres or radians
};

constexpr Unit lengths[] = {
    {9001, "m", 1},       {9002, "ft", 0.3048}, {9003, "ftUS", 1200.0 / 3937}, {9036, "km", 1000},
    {9096, "yd", 0.9144}, {1033, "cm", 0.01},   {1025, "mm", 0.001},
};
constexpr Unit angles[] = {
    {9102, "deg", std::numbers::pi / 180},
    {9122, "deg", std::numbers::pi / 180},
    {9101, "rad", 1},
    {9105, "gon", std::numbers::pi / 200},
};
constexpr std::size_t longestSymbol = 32;

// The unit with a factor within a relative distance, else the name.
template <std::size_t count>
std::string unitOf(const Unit (&units)[count], double factor, double distance,
                   std::string_view name) {
    for (const Unit& unit : units) {
        if (std::abs(factor - unit.factor) <= distance * unit.factor) {
            return unit.symbol;
        }
    }
    return shortText(name, longestSymbol);
}

}  // namespace

// The two feet are two millionths apart; writers keep six digits of a degree at least.
std::string lengthUnit(double metres, std::string_view name) {
    return unitOf(lengths, metres, 9e-7, name);
}

std::string angleUnit(double radians, std::string_view name) {
    return unitOf(angles, radians, 1e-4, name);
}

std::string unitOfCode(int code) {
    for (const Unit& unit : lengths) {
        if (unit.code == code) {
            return unit.symbol;
        }
    }
    for (const Unit& unit : angles) {
        if (unit.code == code) {
            return unit.symbol;
        }
    }
    return {};
}

std::string shortText(std::string_view text, std::size_t length) {
    std::string result = core::validUtf8(text);
    std::erase_if(result, [](unsigned char c) { return c < 0x20 || c == 0x7f; });
    if (result.size() > length) {
        std::size_t end = length;
        while (end > 0 && (static_cast<unsigned char>(result[end]) & 0xc0) == 0x80) {
            --end;
        }
        result.resize(end);
    }
    return result;
}

}  // namespace tarvo::exchange::las
