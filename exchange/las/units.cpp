#include "exchange/las/units.h"

#include "core/utf8.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <numbers>

namespace tarvo::exchange::las {

namespace {

struct Unit {
    int code;
    const char* symbol;
    double factor;         // to metres or radians
    bool isUsual = false;  // writers cut its factor off after some digits
};

constexpr double searsInches = 39.370147;   // of a metre
constexpr double benoitInches = 39.370113;  // 1895 B
constexpr double indianInches = 39.370142;
constexpr double surveyInches = 39.37;

// Codes, names and factors of the EPSG geodetic parameter registry (IOGP, epsg.org), table "Unit of
// Measure": what has a symbol in common use has that, the others their names.
constexpr Unit lengths[] = {
    {9001, "m", 1, true},
    {9002, "ft", 0.3048, true},
    {9003, "ftUS", 12 / surveyInches, true},
    {9036, "km", 1000, true},
    {9096, "yd", 0.9144, true},
    {1033, "cm", 0.01, true},
    {1025, "mm", 0.001, true},
    {9005, "Clarke's foot", 0.3047972654},
    {9014, "fathom", 1.8288},
    {9030, "nautical mile", 1852},
    {9031, "German legal metre", 1.0000135965},
    {9033, "US survey chain", 792 / surveyInches},
    {9034, "US survey link", 7.92 / surveyInches},
    {9035, "US survey mile", 63360 / surveyInches},
    {9037, "Clarke's yard", 0.9143917962},
    {9038, "Clarke's chain", 20.1166195164},
    {9039, "Clarke's link", 0.201166195164},
    {9040, "British yard (Sears 1922)", 36 / searsInches},
    {9041, "British foot (Sears 1922)", 12 / searsInches},
    {9042, "British chain (Sears 1922)", 792 / searsInches},
    {9043, "British link (Sears 1922)", 7.92 / searsInches},
    {9050, "British yard (Benoit 1895 A)", 0.9143992},
    {9051, "British foot (Benoit 1895 A)", 0.9143992 / 3},
    {9052, "British chain (Benoit 1895 A)", 20.1167824},
    {9053, "British link (Benoit 1895 A)", 0.201167824},
    {9060, "British yard (Benoit 1895 B)", 36 / benoitInches},
    {9061, "British foot (Benoit 1895 B)", 12 / benoitInches},
    {9062, "British chain (Benoit 1895 B)", 792 / benoitInches},
    {9063, "British link (Benoit 1895 B)", 7.92 / benoitInches},
    {9070, "British foot (1865)", 0.9144025 / 3},
    {9080, "Indian foot", 12 / indianInches},
    {9081, "Indian foot (1937)", 0.30479841},
    {9082, "Indian foot (1962)", 0.3047996},
    {9083, "Indian foot (1975)", 0.3047995},
    {9084, "Indian yard", 36 / indianInches},
    {9085, "Indian yard (1937)", 0.91439523},
    {9086, "Indian yard (1962)", 0.9143988},
    {9087, "Indian yard (1975)", 0.9143985},
    {9093, "mi", 1609.344},
    {9094, "Gold Coast foot", 6378300.0 / 20926201},
    {9095, "British foot (1936)", 0.3048007491},
    {9097, "chain", 20.1168},
    {9098, "link", 0.201168},
    {9099, "British yard (Sears 1922 truncated)", 0.914398},
    {9300, "British foot (Sears 1922 truncated)", 0.914398 / 3},
    {9301, "British chain (Sears 1922 truncated)", 20.116756},
    {9302, "British link (Sears 1922 truncated)", 0.20116756},
};
constexpr Unit angles[] = {
    {9102, "deg", std::numbers::pi / 180, true},
    {9122, "deg", std::numbers::pi / 180, true},
    {9101, "rad", 1, true},
    {9105, "gon", std::numbers::pi / 200, true},
    {9106, "gon", std::numbers::pi / 200, true},
    {9103, "arcmin", std::numbers::pi / 10800},
    {9104, "arcsec", std::numbers::pi / 648000},
};
constexpr std::size_t longestSymbol = 40;
// Relative distance that tells the closest of the rare units apart.
constexpr double sameFactor = 1e-9;

// The unit that has the factor, else the usual one within a relative distance, else the name.
template <std::size_t count>
std::string unitOf(const Unit (&units)[count], double factor, double distance,
                   std::string_view name) {
    if (!(factor > 0) || !std::isfinite(factor)) {
        return {};
    }
    for (const double reach : {sameFactor, distance}) {
        for (const Unit& unit : units) {
            if ((unit.isUsual || reach == sameFactor) &&
                std::abs(factor - unit.factor) <= reach * unit.factor) {
                return unit.symbol;
            }
        }
    }
    return shortText(name, longestSymbol);
}

template <std::size_t count>
std::string symbolOf(const Unit (&units)[count], int code) {
    const auto* const found = std::find_if(std::begin(units), std::end(units),
                                           [code](const Unit& unit) { return unit.code == code; });
    return found == std::end(units) ? "" : found->symbol;
}

}  // namespace

// The foot and the US survey foot are two millionths apart, with rare feet a millionth beside them;
// writers keep six digits of a degree at least.
std::string lengthUnit(double metres, std::string_view name) {
    return unitOf(lengths, metres, 5e-7, name);
}

std::string angleUnit(double radians, std::string_view name) {
    return unitOf(angles, radians, 1e-4, name);
}

std::string lengthUnitOfCode(int code) {
    return symbolOf(lengths, code);
}

std::string angleUnitOfCode(int code) {
    return symbolOf(angles, code);
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

void noteUnread(std::string& unread, const std::string& words) {
    constexpr std::size_t enough = 200;
    if (unread.size() < enough && unread.find(words) == std::string::npos) {
        unread += (unread.empty() ? "" : "; ") + words;
    }
}

}  // namespace tarvo::exchange::las
