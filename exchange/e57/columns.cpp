#include "exchange/e57/columns.h"

#include "exchange/table/knownnames.h"
#include "exchange/table/names.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cmath>
#include <string_view>

namespace tarvo::exchange::e57 {

namespace {

constexpr double wholeLimit = 9007199254740992.0;  // 2^53
constexpr std::size_t maximumColumns = 1024;

constexpr std::array<const char*, 3> cartesian = {"cartesianX", "cartesianY", "cartesianZ"};
constexpr std::array<const char*, 3> spherical = {"sphericalRange", "sphericalAzimuth",
                                                  "sphericalElevation"};

// What a field is called for columnNamed, and the field that says where it has no value.
struct Meaning {
    std::string_view field;
    const char* name;
    const char* flag;
};
constexpr Meaning meanings[] = {
    {"intensity", "intensity", "isIntensityInvalid"},
    {"colorRed", "red", "isColorInvalid"},
    {"colorGreen", "green", "isColorInvalid"},
    {"colorBlue", "blue", "isColorInvalid"},
    {"timeStamp", "tarvo.timestamp", "isTimeStampInvalid"},
    {"returnIndex", "tarvo.target_index", ""},
    {"returnCount", "tarvo.target_count", ""},
    {"rowIndex", "row", ""},
    {"columnIndex", "column", ""},
    {"nor:normalX", "nx", ""},
    {"nor:normalY", "ny", ""},
    {"nor:normalZ", "nz", ""},
};

const Meaning* meaningOf(std::string_view field) {
    const auto* const found = std::ranges::find(meanings, field, &Meaning::field);
    return found == std::end(meanings) ? nullptr : found;
}

bool hasAll(const Scan& scan, const std::array<const char*, 3>& names) {
    return std::ranges::all_of(names, [&](const char* name) {
        const auto field = scan.find(name);
        return field && scan.fields[*field].kind != Field::Kind::Text;
    });
}

// Coordinates, and what only says where there are none.
bool isPassedOver(const Field& field) {
    static constexpr std::string_view names[] = {"cartesianInvalidState", "sphericalInvalidState",
                                                 "isIntensityInvalid", "isColorInvalid",
                                                 "isTimeStampInvalid"};
    return field.kind == Field::Kind::Text ||
           std::ranges::find(cartesian, field.name) != cartesian.end() ||
           std::ranges::find(spherical, field.name) != spherical.end() ||
           std::ranges::find(names, field.name) != std::end(names);
}

std::optional<std::size_t> colourOf(std::string_view field) {
    const Meaning* const meaning = meaningOf(field);
    return meaning != nullptr && meaning->field.starts_with("color")
               ? std::optional(static_cast<std::size_t>(meaning - &meanings[1]))
               : std::nullopt;
}

// The limits that the scan tells, else those of the field. Whole numbers have those of their bits:
// what is told may be the brightest point.
Limits colourLimits(const Scan& scan, const Field& field, std::size_t colour) {
    const bool isWhole = field.kind == Field::Kind::Integer;
    const auto& told = scan.colourLimits[colour];
    double high = told ? told->high : isWhole ? static_cast<double>(field.maximum) : 255;
    if (!isWhole) {
        const double low = told ? told->low : 0;
        return high > low ? Limits{low, high} : Limits{0, 255};
    }
    high = std::clamp(high, 0.0, 65535.0);
    const int bits = static_cast<int>(std::bit_width(static_cast<std::uint32_t>(high)));
    return {0, std::ldexp(1.0, std::max(bits, 8)) - 1};
}

}  // namespace

Geometry geometryOf(const Scan& scan) {
    return hasAll(scan, cartesian)   ? Geometry::Cartesian
           : hasAll(scan, spherical) ? Geometry::Spherical
                                     : Geometry::None;
}

ColumnPlan::ColumnPlan(const Document& document, const std::string& fileName) {
    addCoordinates(document);
    addFields(document);
    makeUnique(m_columns, fileName);
    finish(document);
}

void ColumnPlan::addCoordinates(const Document& document) {
    bool allSingle = true;
    bool allAlike = true;
    const Scan* first = nullptr;
    for (const Scan& scan : document.scans) {
        if (geometryOf(scan) == Geometry::None) {
            continue;
        }
        const bool isPlain = geometryOf(scan) == Geometry::Cartesian && scan.pose.isIdentity();
        first = first == nullptr ? &scan : first;
        allSingle &= isPlain;
        allAlike &= isPlain;
        for (const char* name : cartesian) {
            const auto index = scan.find(name);
            const auto before = first->find(name);
            if (!index || !before) {
                continue;
            }
            const Field& field = scan.fields[*index];
            const Field& other = first->fields[*before];
            allSingle &= field.kind == Field::Kind::Single;
            allAlike &= field.kind == Field::Kind::Scaled && other.kind == field.kind &&
                        field.scale == other.scale && field.offset == other.offset &&
                        field.scale != 0;
        }
    }
    for (const char* name : {"x", "y", "z"}) {
        m_columns.push_back(columnNamed(name, "e57."));
        m_columns.back().name = name;
        m_columns.back().type = allSingle ? DataType::SINGLE : DataType::DOUBLE;
    }
    for (std::size_t i = 0; first != nullptr && allAlike && i < 3; ++i) {
        const Field& field = first->fields[*first->find(cartesian[i])];
        m_axes.emplace_back(field.scale, field.offset);
    }
    Column number;
    number.attribute = "e57.scan";
    number.name = "Scan";
    number.title = "Scan";
    number.description = "Number of the scan within its file, from 1";
    number.type = DataType::INT64;
    m_columns.push_back(number);
}

void ColumnPlan::addFields(const Document& document) {
    for (const Scan& scan : document.scans) {
        for (const Field& field : scan.fields) {
            if (geometryOf(scan) == Geometry::None || isPassedOver(field) ||
                !m_columnOf.try_emplace(field.name, m_columns.size()).second) {
                continue;
            }
            const Meaning* const meaning = meaningOf(field.name);
            Column column;
            if (meaning != nullptr) {
                column = columnNamed(meaning->name, "e57.");
            } else {
                column.attribute = "e57." + safeName(field.name);
                column.title = validUtf8(field.name);
            }
            column.name = validUtf8(field.name);
            m_columns.push_back(std::move(column));
            if (m_columns.size() > maximumColumns) {
                throw core::Failure("The scans have more than " + std::to_string(maximumColumns) +
                                    " different fields.");
            }
        }
    }
}

// Types: whole numbers, with a number that says "no value" where a scan may have none.
void ColumnPlan::finish(const Document& document) {
    struct Found {
        bool isWhole = true;
        bool isSingle = true;
        bool isMissing = false;
        std::int64_t lowest = 0;
    };
    std::vector<Found> found(m_columns.size());
    for (const Scan& scan : document.scans) {
        if (geometryOf(scan) == Geometry::None) {
            continue;
        }
        std::vector<bool> has(m_columns.size());
        for (const Field& field : scan.fields) {
            const auto column = m_columnOf.find(field.name);
            if (column == m_columnOf.end() || field.kind == Field::Kind::Text) {
                continue;
            }
            const Meaning* const meaning = meaningOf(field.name);
            Found& one = found[column->second];
            has[column->second] = true;
            one.isWhole &= field.kind == Field::Kind::Integer;
            one.isSingle &= field.kind == Field::Kind::Single;
            one.isMissing |= meaning != nullptr && *meaning->flag != 0 && scan.find(meaning->flag);
            one.lowest = std::min(one.lowest, field.minimum);
            if (const auto colour = colourOf(field.name)) {
                m_brightest = field.kind == Field::Kind::Integer &&
                                      colourLimits(scan, field, *colour).high <= 255
                                  ? m_brightest
                                  : 65535;
            }
        }
        for (std::size_t i = Others; i < m_columns.size(); ++i) {
            found[i].isMissing |= !has[i];
        }
    }
    for (std::size_t i = Others; i < m_columns.size(); ++i) {
        Column& column = m_columns[i];
        if (column.attribute == "tarvo.rgba") {
            column.type = DataType::INT64;
            column.hasInvalid = found[i].isMissing;
            column.invalidValue = -1;
        } else if (!found[i].isWhole) {
            column.type = found[i].isSingle ? DataType::SINGLE : DataType::DOUBLE;
        } else if (!found[i].isMissing) {
            column.type = DataType::INT64;
        } else if (found[i].lowest > -wholeLimit) {
            column.type = DataType::INT64;
            column.hasInvalid = true;
            // The catalogue's own for targets, which count from 1.
            column.invalidValue = column.attribute.starts_with("tarvo.target_")
                                      ? 0
                                      : static_cast<double>(found[i].lowest) - 1;
        } else {
            column.type = DataType::DOUBLE;
            column.fault = core::Failure("The whole numbers of 64 bits of \"" + column.attribute +
                                         "\" leave none to say that a scan has no value.");
        }
    }
}

std::vector<Filling> ColumnPlan::fillings(const Scan& scan) const {
    std::vector<Filling> fillings;
    for (const auto& [name, column] : m_columnOf) {
        Filling& filling = fillings.emplace_back();
        filling.column = column;
        const auto field = scan.find(name.c_str());
        if (!field || scan.fields[*field].kind == Field::Kind::Text) {
            continue;
        }
        filling.field = field;
        if (const Meaning* const meaning = meaningOf(name)) {
            filling.flag = *meaning->flag != 0 ? scan.find(meaning->flag) : std::nullopt;
        }
        filling.added = name == "returnIndex" ? 1 : 0;
        if (const auto colour = colourOf(name)) {
            filling.colour = colourLimits(scan, scan.fields[*field], *colour);
        }
    }
    return fillings;
}

}  // namespace tarvo::exchange::e57
