#include "exchange/database/split.h"

#include "core/pointpages.h"
#include "exchange/table/decimal.h"
#include "exchange/table/pointsource.h"
#include "numbers/numbertext.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <map>
#include <utility>

namespace tarvo::exchange::database {

namespace {

constexpr const char* coordinates = "tarvo.xyz";
// Parts that are counted before the number is told as "more than".
constexpr std::size_t mostCounted = 1'000'000;
// Beyond, neighbouring multiples are no longer told from each other.
constexpr double mostTiles = 4503599627370496.0;

[[noreturn]] void refuseNumber(std::size_t parts, const std::string& advice) {
    throw core::Failure("The points would go into " +
                            std::string(parts > mostCounted ? "more than " : "") +
                            std::to_string(std::min(parts, mostCounted)) + " files; at most " +
                            std::to_string(mostParts) + " are made.",
                        advice);
}

// The fewest digits that give the number back; -0 is 0.
std::string digits(double value) {
    return numbers::numberText(value + 0.0);
}

std::string both(const std::string& filter, const std::string& condition) {
    return filter.empty() ? condition : "(" + filter + ") && " + condition;
}

// Counts the points of each key.
template <typename Key, typename KeyOf>
std::map<Key, std::uint64_t> count(core::PointPages& pages, const ImportProgress& progress,
                                   const std::string& advice, const KeyOf& keyOf) {
    std::map<Key, std::uint64_t> counts;
    auto last = counts.end();
    while (const std::uint32_t rows = pages.next()) {
        for (std::uint32_t row = 0; row < rows; ++row) {
            const Key key = keyOf(row);
            if (last == counts.end() || last->first != key) {
                last = counts.try_emplace(key, 0).first;
            }
            ++last->second;
        }
        if (counts.size() > mostCounted) {
            break;
        }
        if (progress) {
            progress("Counting", pages.progress() / 100.0);
        }
    }
    if (counts.size() > mostParts) {
        refuseNumber(counts.size(), advice);
    }
    return counts;
}

// The number of the multiple of size at or below the value, by the numbers that filters compare.
std::int64_t tileOf(double value, const Affine& edge) {
    const double quotient = std::floor(value / edge.scale());
    if (!(std::abs(quotient) < mostTiles)) {
        throw core::Failure("Some points lie at no place that tiles of that size could hold.",
                            "Name a larger size.");
    }
    auto tile = static_cast<std::int64_t>(quotient);
    while (value < edge(tile)) {
        --tile;
    }
    while (value >= edge(tile + 1)) {
        ++tile;
    }
    return tile;
}

double asDouble(core::PointPages& pages, std::uint32_t row, std::size_t column) {
    const std::uint64_t bits = pages.value(row, column);
    switch (pages.columns()[column].format.type()) {
        case qrb::pointcloud::DataType::UINT64:
            return static_cast<double>(bits);
        case qrb::pointcloud::DataType::INT64:
            return static_cast<double>(static_cast<std::int64_t>(bits));
        default:
            return std::bit_cast<double>(bits);
    }
}

}  // namespace

std::vector<Part> tilesOf(const qrb::Pointcloud& database, double size, const std::string& filter,
                          const ImportProgress& progress) {
    const auto& attributes = database.pointAttributes();
    if (!attributes.exists(coordinates) || attributes.get(coordinates).length < 2) {
        throw core::Failure("The database has no coordinates \"" + std::string(coordinates) +
                                "\" to make tiles of.",
                            "Give --by ATTRIBUTE.");
    }
    core::PointPages pages(database, {filter, {}}, core::columnsOf(attributes.get(coordinates), 2),
                           batchSize);
    const Affine edge(size, 0);  // as decimal numbers: 3 * 0.1 is 0.3
    using Tile = std::pair<std::int64_t, std::int64_t>;
    const auto counts = count<Tile>(pages, progress, "Name a larger size.", [&](std::uint32_t row) {
        return Tile(tileOf(asDouble(pages, row, 0), edge), tileOf(asDouble(pages, row, 1), edge));
    });
    std::vector<Part> parts;
    for (const auto& [tile, points] : counts) {
        std::string name;
        std::string condition;
        for (int axis = 0; axis < 2; ++axis) {
            const std::int64_t number = axis == 0 ? tile.first : tile.second;
            const std::string element = std::string(coordinates) + "[" + std::to_string(axis) + "]";
            const std::string least = digits(edge(number));
            const std::string most = digits(edge(number + 1));
            condition += (axis == 0 ? "" : " && ") + element + " >= " + least + " && " + element +
                         " < " + most;
            name += (axis == 0 ? "" : "_") + least;
        }
        parts.push_back({name, both(filter, condition), points});
    }
    return parts;
}

std::vector<Part> valuesOf(const qrb::Pointcloud& database, const std::string& attribute,
                           const std::string& filter, const ImportProgress& progress) {
    const auto& attributes = database.pointAttributes();
    if (!attributes.exists(attribute)) {
        throw core::Failure("There is no attribute \"" + attribute + "\" in the file.",
                            "\"qrbtool info\" lists the attributes.");
    }
    const auto definition = attributes.get(attribute);
    if (definition.length != 1) {
        throw core::Failure("The attribute \"" + attribute + "\" has " +
                                std::to_string(definition.length) + " elements.",
                            "Name one that has one value for each point.");
    }
    core::PointPages pages(database, {filter, {}}, core::columnsOf(definition), batchSize);
    using qrb::pointcloud::DataType;
    const DataType type = pages.columns()[0].format.type();
    // Bits that are ordered as the values are; those of all NaN are one.
    constexpr std::uint64_t sign = std::uint64_t{1} << 63;
    const auto keyOf = [&](std::uint32_t row) {
        const std::uint64_t bits = pages.value(row, 0);
        if (type == DataType::UINT64) {
            return bits;
        }
        if (type == DataType::INT64) {
            return bits ^ sign;
        }
        const double value = std::bit_cast<double>(bits) + 0.0;
        if (std::isnan(value)) {
            return UINT64_MAX;
        }
        const auto own = std::bit_cast<std::uint64_t>(value);
        return (own & sign) != 0 ? ~own : own | sign;
    };
    const auto counts = count<std::uint64_t>(pages, progress, "Name another attribute.", keyOf);
    std::vector<Part> parts;
    for (const auto& [key, points] : counts) {
        std::string name;
        if (type == DataType::UINT64) {
            name = std::to_string(key);
        } else if (type == DataType::INT64) {
            name = std::to_string(static_cast<std::int64_t>(key ^ sign));
        } else if (key != UINT64_MAX) {
            name = digits(std::bit_cast<double>((key & sign) != 0 ? key ^ sign : ~key));
        }
        const std::string condition =
            name.empty() ? attribute + " != " + attribute : attribute + " == " + name;
        parts.push_back({name.empty() ? "none" : name, both(filter, condition), points});
    }
    return parts;
}

}  // namespace tarvo::exchange::database
