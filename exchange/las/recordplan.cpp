#include "exchange/las/recordplan.h"

#include "exchange/advice.h"
#include "exchange/las/axis.h"
#include "exchange/las/extrafield.h"
#include "exchange/las/ownrecord.h"

#include <algorithm>
#include <set>

namespace tarvo::exchange::las {

namespace {

constexpr std::uint32_t longestRecord = 65535;

bool hasColumn(const std::vector<Column>& columns, const std::string& prefix) {
    return std::any_of(columns.begin(), columns.end(),
                       [&](const Column& column) { return column.attribute.starts_with(prefix); });
}

int oldFormat(const std::vector<Column>& columns) {
    const bool isTimed = hasColumn(columns, "tarvo.timestamp");
    const bool isColoured = hasColumn(columns, "tarvo.rgba");
    if (hasColumn(columns, "las.wave_")) {
        return isColoured ? 5 : 4;
    }
    return (isTimed ? 1 : 0) + (isColoured ? 2 : 0);
}

int newFormat(const std::vector<Column>& columns) {
    const bool isColoured = hasColumn(columns, "tarvo.rgba");
    const bool isInfrared = hasColumn(columns, "tarvo.nir");
    if (hasColumn(columns, "las.wave_")) {
        return isColoured || isInfrared ? 10 : 9;
    }
    return isInfrared ? 8 : isColoured ? 7 : 6;
}

bool holds(const Dimension& dimension, const Column& column, std::size_t index,
           const Survey& survey) {
    const ColumnSummary& values = survey.columns[index];
    if (values.count() == 0) {
        return true;
    }
    if (dimension.field.kind == Field::Kind::Affine) {
        return column.attribute == "tarvo.scan_angle" && survey.hasAngleSteps;
    }
    if (dimension.field.raw == DataType::SINGLE) {
        return survey.areSingles[index] != 0;
    }
    if (dimension.field.raw == DataType::DOUBLE) {
        return !values.beyondDouble();
    }
    return dimension.field.raw == DataType::UINT64
               ? isWhole(values) && values.minimum() >= 0
               : isWhole(values) && values.minimum() >= dimension.column.lowest &&
                     values.maximum() <= dimension.column.highest;
}

// The fields of one point format, and what they leave.
class FormatPlan {
public:
    FormatPlan(int format, const std::vector<Column>& columns, const Survey& survey)
        : m_columns(columns), m_survey(survey) {
        m_header.pointFormat = format;
        m_header.recordLength = pointSize(format);
        m_header.scale = {1, 1, 1};
        for (const Dimension& dimension : dimensions(m_header, {})) {
            add(dimension);
        }
        for (std::size_t i = 0; i < columns.size(); ++i) {
            // No point is without a colour for want of its opacity: all have the same.
            const bool isOpacity = columns[i].attribute == "tarvo.rgba" &&
                                   columns[i].element == 3 && survey.columns[i].isConstant();
            if (!m_taken.contains(i) && !isOpacity) {
                m_left.push_back(i);
            }
        }
    }

    int format() const { return m_header.pointFormat; }
    // Columns that have no field of their own.
    const std::vector<std::size_t>& left() const { return m_left; }
    const std::vector<PlannedField>& fields() const { return m_fields; }
    const std::vector<std::string>& absent() const { return m_absent; }

private:
    void add(const Dimension& dimension) {
        const Column& wanted = dimension.column;
        const auto found =
            std::find_if(m_columns.begin(), m_columns.end(), [&](const Column& column) {
                return column.attribute == wanted.attribute && column.element == wanted.element &&
                       column.length == wanted.length;
            });
        const auto index = static_cast<std::size_t>(found - m_columns.begin());
        if (found == m_columns.end()) {
            if (std::find(m_absent.begin(), m_absent.end(), wanted.attribute) == m_absent.end()) {
                m_absent.push_back(wanted.attribute);
            }
        } else if (wanted.attribute == "tarvo.xyz" || holds(dimension, *found, index, m_survey)) {
            m_fields.push_back({index, dimension.field});
            m_taken.insert(index);
        }
    }

    const std::vector<Column>& m_columns;
    const Survey& m_survey;
    Header m_header;
    std::vector<PlannedField> m_fields;
    std::set<std::size_t> m_taken;
    std::vector<std::size_t> m_left;
    std::vector<std::string> m_absent;
};

FormatPlan chooseFormat(const std::vector<Column>& columns, const Survey& survey,
                        const PlanOptions& options) {
    if (options.pointFormat) {
        return {*options.pointFormat, columns, survey};
    }
    const FormatPlan older(oldFormat(columns), columns, survey);
    FormatPlan newer(newFormat(columns), columns, survey);
    // The newer ones have a time whether the points have or not.
    const bool tiesGoToOld = options.prefersOldFormats || !hasColumn(columns, "tarvo.timestamp");
    return older.left().size() < newer.left().size() ||
                   (older.left().size() == newer.left().size() && tiesGoToOld)
               ? older
               : newer;
}

void setAxes(const std::vector<Column>& columns, const Survey& survey, const PlanOptions& options,
             RecordPlan& plan) {
    std::size_t found = 0;
    for (PlannedField& planned : plan.fields) {
        const Column& column = columns[planned.column];
        if (column.attribute != "tarvo.xyz") {
            continue;
        }
        const Axis axis = axisFor(column, survey, planned.column, options.scale);
        planned.field.affine = axis.affine;
        plan.rounds = plan.rounds || axis.rounds;
        plan.scale[column.element] = planned.field.affine.scale();
        plan.offset[column.element] = planned.field.affine.offset();
        ++found;
    }
    if (found != 3) {
        throw core::Failure("A LAS file needs the attribute \"tarvo.xyz\" with three coordinates.",
                            "Export to csv or ply instead.");
    }
}

void addExtraBytes(const std::vector<Column>& columns, const Survey& survey,
                   const FormatPlan& format, RecordPlan& plan) {
    std::uint32_t length = pointSize(format.format());
    std::vector<Column> extra;
    for (const std::size_t index : format.left()) {
        const Column& column = columns[index];
        const Field field = extraField(column, survey, index, length);
        length += static_cast<std::uint32_t>(dataTypeSize(field.raw));
        if (length > longestRecord) {
            throw core::Failure("The attributes take more bytes than a point of a LAS file may.",
                                advice().fewerAttributes);
        }
        describeExtraField(column, field, plan.extraBytes);
        plan.fields.push_back({index, field});
        extra.push_back(column);
    }
    plan.recordLength = static_cast<std::uint16_t>(length);
    plan.ownRecord = ownRecord(extra, format.absent());
}

}  // namespace

RecordPlan planRecords(const std::vector<Column>& columns, const Survey& survey,
                       const PlanOptions& options) {
    const FormatPlan format = chooseFormat(columns, survey, options);
    RecordPlan plan;
    plan.pointFormat = format.format();
    plan.fields = format.fields();
    setAxes(columns, survey, options, plan);
    addExtraBytes(columns, survey, format, plan);
    return plan;
}

}  // namespace tarvo::exchange::las
