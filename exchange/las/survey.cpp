#include "exchange/las/survey.h"

#include "catalogue/jsonmemory.h"
#include "qrb/visitvalues.h"

#include <algorithm>
#include <cmath>
#include <numeric>
#include <type_traits>

namespace tarvo::exchange::las {

namespace {

constexpr double exactLimit = 9007199254740992.0;  // 2^53

bool areAngleSteps(DataType type, const void* values, std::uint32_t count) {
    const Affine angle(angleStep, 0);
    bool all = true;
    visitValues(type, values, [&](const auto* typed) {
        all = std::all_of(typed, typed + count, [&](auto value) {
            const auto degrees = static_cast<double>(value);
            const double steps = std::round(degrees / angleStep);
            return steps >= INT16_MIN && steps <= INT16_MAX &&
                   angle(static_cast<std::int64_t>(steps)) == degrees;
        });
    });
    return all;
}

std::optional<Affine> axisOf(const rapidjson::Value& header,
                             rapidjson::Value::ConstMemberIterator scales,
                             rapidjson::Value::ConstMemberIterator offsets, rapidjson::SizeType i) {
    for (const auto& found : {scales, offsets}) {
        if (found == header.MemberEnd() || !found->value.IsArray() || found->value.Size() != 3 ||
            !found->value[i].IsNumber()) {
            return std::nullopt;
        }
    }
    const double scale = scales->value[i].GetDouble();
    return scale == 0 ? std::nullopt : std::optional(Affine(scale, offsets->value[i].GetDouble()));
}

// Whether a 32-bit number stands for the value, or one so near to it.
bool givesBack(const Affine& axis, double value, double tolerance) {
    const double raw = std::round((value - axis.offset()) / axis.scale());
    return raw >= INT32_MIN && raw <= INT32_MAX &&
           std::abs(axis(static_cast<std::int64_t>(raw)) - value) <= tolerance;
}

// Of the file that was imported, if the database knows.
std::vector<Affine> importedAxes(const PointSource& source) {
    for (const auto& [name, value] : source.metaData()) {
        rapidjson::Document header;
        if (name != "las.header" ||
            header
                .Parse<rapidjson::kParseIterativeFlag | rapidjson::kParseFullPrecisionFlag>(
                    value.data(), value.size())
                .HasParseError() ||
            !header.IsObject()) {
            continue;
        }
        const auto scale = header.FindMember("scale");
        const auto offset = header.FindMember("offset");
        std::vector<Affine> axes;
        for (rapidjson::SizeType i = 0; i < 3; ++i) {
            if (const auto axis = axisOf(header, scale, offset, i)) {
                axes.push_back(*axis);
            }
        }
        return axes;
    }
    return {};
}

void measure(const Column& column, const void* values, std::uint32_t count, bool isFirst,
             Spacing& spacing) {
    if (column.attribute != "tarvo.xyz" || column.resolution <= 0) {
        return;
    }
    visitValues(column.type, values, [&](const auto* typed) {
        if (isFirst) {
            spacing.first = static_cast<double>(typed[0]);
        }
        for (std::uint32_t i = 0; i < count && spacing.steps != 1; ++i) {
            const double distance = static_cast<double>(typed[i]) - spacing.first;
            const double steps = std::round(std::abs(distance) / column.resolution);
            // Farther than that doubles are no whole numbers any more; nor are those that are none.
            spacing.steps =
                steps < exactLimit ? std::gcd(spacing.steps, static_cast<std::uint64_t>(steps)) : 1;
        }
        if (spacing.imported && !std::all_of(typed, typed + count, [&](auto value) {
                return givesBack(*spacing.imported, static_cast<double>(value),
                                 column.resolution / 2);
            })) {
            spacing.imported.reset();
        }
    });
}

bool holdsAll(DataType type, const void* values, std::uint32_t count) {
    bool all = true;
    visitValues(type, values, [&]<typename T>(const T* typed) {
        all = std::all_of(typed, typed + count, [](T value) {
            const auto real = static_cast<double>(value);
            // Whole numbers that a float has no room for may have become another one already.
            return std::isnan(real) ||
                   (static_cast<double>(static_cast<float>(real)) == real &&
                    (std::is_floating_point_v<T> || std::abs(real) <= exactLimit));
        });
    });
    return all;
}

}  // namespace

Survey surveyPoints(PointSource& source, const ImportProgress& progress) {
    const std::vector<Column>& columns = source.columns();
    Survey survey;
    for (const Column& column : columns) {
        survey.columns.emplace_back(column.type);
    }
    survey.areSingles.assign(columns.size(), 1);
    survey.spacings.resize(columns.size());
    if (const std::vector<Affine> axes = importedAxes(source); axes.size() == 3) {
        for (std::size_t i = 0; i < columns.size(); ++i) {
            if (columns[i].attribute == "tarvo.xyz" && columns[i].element < 3) {
                survey.spacings[i].imported = axes[columns[i].element];
            }
        }
    }
    const auto look = [&](std::size_t i, std::uint32_t count) {
        const Column& column = columns[i];
        const void* const values = source.values(i);
        measure(column, values, count, survey.columns[i].count() == 0, survey.spacings[i]);
        survey.columns[i].add(values, count);
        survey.areSingles[i] =
            static_cast<char>(survey.areSingles[i] && holdsAll(column.type, values, count));
        if (column.attribute == "tarvo.scan_angle" && survey.hasAngleSteps) {
            survey.hasAngleSteps = areAngleSteps(column.type, values, count);
        }
    };
    survey.pointCount = lookAtColumns(source, look, progress);
    return survey;
}

}  // namespace tarvo::exchange::las
