#include "core/shape.h"

#include "core/error.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstring>
#include <limits>
#include <system_error>
#include <utility>

namespace tarvo::core {

namespace {

// An area of very many edges takes its time for each point.
constexpr std::uint32_t pointsPerCheck = 1024;
constexpr double infinite = std::numeric_limits<double>::infinity();

std::string digits(double value) {
    char text[32];
    return {text, std::to_chars(text, text + sizeof text, value).ptr};
}

// A little more than the distance of two doubles: what is written in digits is none.
double margin(double value) {
    return std::max(std::abs(value) * 1e-15, 1e-300);
}

template <typename Value>
void copyValues(std::uint8_t* to, const std::uint8_t* from,
                const std::vector<std::uint32_t>& rows) {
    for (std::size_t i = 0; i < rows.size(); ++i)
        std::memmove(to + i * sizeof(Value), from + rows[i] * sizeof(Value), sizeof(Value));
}

[[noreturn]] void refuseBounds(const std::string& text, const std::string& fault) {
    throw Failure("The bounds \"" + text + "\" " + fault + ".",
                  "They are xmin,ymin,xmax,ymax or xmin,ymin,zmin,xmax,ymax,zmax.");
}

}  // namespace

Bounds boundsFromText(const std::string& text) {
    std::vector<double> numbers;
    const char* at = text.data();
    const char* const end = at + text.size();
    const auto skipBlanks = [&] {
        while (at != end && *at == ' ')
            ++at;
    };
    for (bool more = true; more;) {
        double number = 0;
        skipBlanks();
        const auto read = std::from_chars(at, end, number);
        if (read.ec != std::errc() || !std::isfinite(number))
            refuseBounds(text, "have no number at place " + std::to_string(numbers.size() + 1));
        numbers.push_back(number);
        at = read.ptr;
        skipBlanks();
        more = at != end && *at == ',';
        at += more ? 1 : 0;
    }
    if (at != end)
        refuseBounds(text, "have more than a number at place " + std::to_string(numbers.size()));
    if (numbers.size() != 4 && numbers.size() != 6)
        refuseBounds(text, "are " + std::to_string(numbers.size()) + " numbers, not 4 or 6");
    const std::size_t axes = numbers.size() / 2;
    Bounds bounds = {{0, 0, -infinite}, {0, 0, infinite}};
    for (std::size_t i = 0; i < axes; ++i) {
        bounds.least[i] = numbers[i];
        bounds.most[i] = numbers[axes + i];
        if (bounds.least[i] > bounds.most[i])
            refuseBounds(
                text, std::string("have a least ") + "xyz"[i] + " that is larger than the largest");
    }
    return bounds;
}

std::string Shape::narrowed(const std::string& filter, const std::string& attribute) const {
    const std::size_t begin = filter.find_first_not_of(" \t\r\n");
    if ((!bounds && !area) ||
        (begin != std::string::npos && filter.compare(begin, 5, "find ") == 0))
        return filter;
    Bounds range =
        bounds.value_or(Bounds{{-infinite, -infinite, -infinite}, {infinite, infinite, infinite}});
    if (area) {
        range.least[0] = std::max(range.least[0], area->least().x);
        range.least[1] = std::max(range.least[1], area->least().y);
        range.most[0] = std::min(range.most[0], area->most().x);
        range.most[1] = std::min(range.most[1], area->most().y);
    }
    std::string text;
    const auto add = [&](std::size_t axis, const char* comparison, double value) {
        if (std::isfinite(value))
            text += (text.empty() ? "" : " && ") + attribute + "[" + std::to_string(axis) + "] " +
                    comparison + " " + digits(value);
    };
    for (std::size_t i = 0; i < 3; ++i) {
        add(i, ">=", range.least[i] - margin(range.least[i]));
        add(i, "<=", range.most[i] + margin(range.most[i]));
    }
    return begin == std::string::npos ? text : "(" + filter + ") && " + text;
}

Shaper::Shaper(Shape shape, std::function<void()> check)
    : m_shape(std::move(shape)), m_check(std::move(check)) {
    if (m_shape.distance > 0)
        m_thinning.emplace(m_shape.distance);
}

bool Shaper::isWithin(double x, double y, double z) const {
    if (m_shape.bounds) {
        const auto& [least, most] = *m_shape.bounds;
        if (!(x >= least[0] && x <= most[0] && y >= least[1] && y <= most[1]))
            return false;
        const bool hasHeights = std::isfinite(least[2]) || std::isfinite(most[2]);
        if (hasHeights && !(z >= least[2] && z <= most[2]))
            return false;
    }
    return !m_shape.area || m_shape.area->contains(x, y);
}

void Shaper::pick(std::uint32_t count, const double* places, std::vector<std::uint32_t>& rows) {
    rows.clear();
    const bool looksAtPlaces = m_shape.needsCoordinates();
    for (std::uint32_t i = 0; i < count; ++i) {
        if (m_check && i % pointsPerCheck == 0)
            m_check();
        const double* const place = looksAtPlaces ? places + std::size_t{3} * i : nullptr;
        if (looksAtPlaces && !isWithin(place[0], place[1], place[2]))
            continue;
        if (m_shape.every > 1) {
            const bool isPassedOver = m_seen != 0;
            m_seen = m_seen + 1 == m_shape.every ? 0 : m_seen + 1;
            if (isPassedOver)
                continue;
        }
        if (!m_thinning || m_thinning->take(place[0], place[1], place[2]))
            rows.push_back(i);
    }
}

void Shaper::restart() {
    m_seen = 0;
    if (m_thinning)
        m_thinning->clear();
}

void copyRows(std::uint8_t* to, const std::uint8_t* from, std::size_t stride,
              const std::vector<std::uint32_t>& rows) {
    switch (stride) {
        case 1:
            return copyValues<std::uint8_t>(to, from, rows);
        case 2:
            return copyValues<std::uint16_t>(to, from, rows);
        case 4:
            return copyValues<std::uint32_t>(to, from, rows);
        case 8:
            return copyValues<std::uint64_t>(to, from, rows);
        default:
            for (std::size_t i = 0; i < rows.size(); ++i)
                std::memmove(to + i * stride, from + rows[i] * stride, stride);
    }
}

}  // namespace tarvo::core
