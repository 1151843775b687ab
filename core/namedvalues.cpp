#include "core/namedvalues.h"

#include "core/attributegrid.h"
#include "core/utf8.h"
#include "numbers/numbertext.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <set>
#include <string_view>

namespace tarvo::core {

namespace {

using numbers::Grid;

NamedValue readLine(const std::string& line) {
    const std::string_view text = line;
    const std::size_t equals = text.find('=');
    const std::string value(trimmed(text.substr(0, equals)));
    if (equals == std::string_view::npos || !namedNumber(value))
        return {{}, std::string(trimmed(text)), line, false};
    return {value, std::string(trimmed(text.substr(equals + 1))), line, true};
}

}  // namespace

std::optional<NamedNumber> namedNumber(const std::string& text) {
    std::string_view digits = trimmed(text);
    const auto value = digits.starts_with('+') ? std::nullopt : numbers::readNumber(digits);
    if (!value)
        return std::nullopt;
    NamedNumber number{*value, 0};
    const double size = std::fabs(*value);
    if (size < 0x1p53)
        return number;
    digits.remove_prefix(digits.starts_with('-') ? 1 : 0);
    const char* const end = digits.data() + digits.size();
    const auto read = std::from_chars(digits.data(), end, number.magnitude);
    if (read.ec != std::errc() || read.ptr != end)
        number.magnitude = size < 0x1p64 ? static_cast<std::uint64_t>(size) : 0;
    return number;
}

std::vector<NamedValue> readNamedValues(const std::string& text) {
    std::vector<NamedValue> values;
    for (std::size_t begin = 0; begin < text.size();) {
        const std::size_t end = std::min(text.find('\n', begin), text.size());
        const std::string line = text.substr(begin, end - begin);
        if (line.find_first_not_of(" \t\r") != std::string::npos)
            values.push_back(readLine(line));
        begin = end + 1;
    }
    return values;
}

std::vector<NamedValue> valuesNamed(const std::string& word,
                                    const std::vector<NamedValue>& values) {
    std::vector<NamedValue> found;
    std::set<NamedNumber> known;
    const auto take = [&](const auto& isMeant) {
        for (const NamedValue& value : values) {
            const auto number = value.understood ? namedNumber(value.value) : std::nullopt;
            if (number && isMeant(value.name) && known.insert(*number).second)
                found.push_back(value);
        }
    };
    take([&](const std::string& name) { return name == word; });
    const std::string lower = lowerCase(word);
    if (found.empty())
        take([&](const std::string& name) { return lowerCase(name) == lower; });
    return found;
}

std::string writeNamedValues(const std::vector<NamedValue>& values) {
    std::string text;
    for (const NamedValue& each : values) {
        if (!text.empty())
            text += '\n';
        text += each.line.empty() ? each.value + '=' + each.name : each.line;
    }
    return text;
}

std::vector<NamedValueFinding> checkNamedValues(const std::vector<NamedValue>& values,
                                                const qrb::pointcloud::PointAttribute* attribute) {
    const std::optional<Grid> grid = attribute ? gridOf(*attribute) : std::nullopt;
    std::vector<NamedValueFinding> findings;
    std::set<NamedNumber> known;
    for (std::size_t row = 0; row < values.size(); ++row) {
        const NamedValue& each = values[row];
        const auto add = [&](bool error, const std::string& text) {
            findings.push_back({row, error, text});
        };
        if (!each.understood) {
            add(false, "\"" + each.name + "\" is no \"VALUE=NAME\"; it is kept as it stands.");
            continue;
        }
        const std::optional<NamedNumber> value = namedNumber(each.value);
        if (!value) {
            add(true, trimmed(each.value).empty() ? "A value is missing."
                                                  : "\"" + each.value + "\" is no number.");
            continue;
        }
        if (each.name.find_first_of("\r\n") != std::string::npos)
            add(true, "The name of " + each.value + " holds a line break.");
        else if (trimmed(each.name).empty())
            add(false, each.value + " has no name.");
        const ValuePlace place = grid ? placeOf(value->value, *grid) : ValuePlace::ON_GRID;
        if (place == ValuePlace::OUTSIDE)
            add(false, each.value + " is out of the range.");
        else if (place == ValuePlace::OFF_GRID)
            add(false, each.value + " is no multiple of the resolution.");
        const NamedNumber stored = place == ValuePlace::OFF_GRID
                                       ? NamedNumber{grid->value(*grid->find(value->value)), 0}
                                       : *value;
        if (!known.insert(stored).second)
            add(true, each.value + " has a name already.");
    }
    return findings;
}

void sortNamedValues(std::vector<NamedValue>& values) {
    std::stable_sort(values.begin(), values.end(), [](const NamedValue& a, const NamedValue& b) {
        const auto first = namedNumber(a.value);
        const auto second = namedNumber(b.value);
        return first && (!second || *first < *second);
    });
}

ValuePlace placeOf(double value, const Grid& grid) {
    const auto code = grid.find(value);
    if (!code)
        return ValuePlace::OUTSIDE;
    if (grid.kind() == Grid::Kind::Float || grid.isInvalid(*code))
        return ValuePlace::ON_GRID;
    const double distance = std::fabs(grid.value(*code) - value);
    return distance <= grid.resolution() * 1e-6 || value == grid.value(*code)
               ? ValuePlace::ON_GRID
               : ValuePlace::OFF_GRID;
}

}  // namespace tarvo::core
