#include "exchange/import/importplan.h"

#include "catalogue/catalogue.h"
#include "exchange/advice.h"
#include "exchange/table/attributesummary.h"
#include "exchange/table/columntarget.h"

#include <algorithm>
#include <limits>
#include <optional>

namespace tarvo::exchange {

namespace {

// Widens the extent by what was found in the columns of one file.
void widen(std::vector<std::pair<double, double>>& extent, const std::string& primary,
           const std::vector<Column>& columns,
           const std::vector<std::optional<ColumnSummary>>& found) {
    for (std::size_t i = 0; i < columns.size(); ++i) {
        if (columns[i].attribute != primary || !found[i]->hasNumbers()) {
            continue;
        }
        constexpr double infinity = std::numeric_limits<double>::infinity();
        extent.resize(std::max<std::size_t>(extent.size(), columns[i].element + 1),
                      {infinity, -infinity});
        auto& [least, greatest] = extent[columns[i].element];
        least = std::min(least, found[i]->minimum());
        greatest = std::max(greatest, found[i]->maximum());
    }
}

void addSurvey(const PointSource& source, const FileSurvey& survey, AttributeSummaries& summaries,
               ImportPlan& plan, const std::string& primary) {
    std::vector<std::optional<ColumnSummary>> found;
    for (const FileSurvey::FoundColumn& column : survey.columns) {
        found.emplace_back(column.summary);
    }
    plan.pointCount += survey.pointCount;
    summaries.add(source, found);
    widen(plan.extent, primary, source.columns(), found);
}

void requirePrimary(const PointSource& source, const std::string& primary) {
    std::size_t elements = 0;
    std::uint32_t length = 0;
    for (const Column& column : source.columns()) {
        if (column.attribute == primary) {
            refuseFault(column);
            ++elements;
            length = column.length;
        }
    }
    if (elements == 0 || elements != length) {
        throw core::Failure(
            "The file \"" + source.fileName() + "\" does not hold the attribute \"" + primary +
                "\"" + (elements == 0 ? "." : " with all " + std::to_string(length) + " elements."),
            primary == "tarvo.xyz"
                ? "Columns of coordinates are named \"x\", \"y\" and \"z\", in the first line of a "
                  "text that is no\ncomment (#). A text without names begins with numbers.\n" +
                      advice().mapCoordinates
                : "Name another primary attribute.");
    }
}

}  // namespace

void ImportPlan::leaveOut(const std::string& name) {
    if (attributes.erase(name) == 0) {
        throw NoAttributeToLeaveOut(name);
    }
    std::erase(order, name);
}

void ImportPlan::refuseFaults(const PointSources& sources) const {
    for (const auto& source : sources) {
        for (const Column& column : source->columns()) {
            if (attributes.contains(column.attribute)) {
                refuseFault(column, adviceToGoWithout(column.attribute));
            }
        }
    }
    for (const auto& [name, attribute] : attributes) {
        if (attribute.fault) {
            throw core::Failure(attribute.fault->what(),
                                attribute.fault->details() + "\n" + adviceToGoWithout(name));
        }
    }
}

std::vector<ColumnTarget> ImportPlan::targets(const PointSource& source) const {
    std::vector<ColumnTarget> targets;
    for (const Column& column : source.columns()) {
        ColumnTarget& target = targets.emplace_back();
        const auto found = attributes.find(column.attribute);
        if (found != attributes.end() && !found->second.constant) {
            target.descriptor = elementDescriptor(column.attribute, found->second.definition.length,
                                                  column.element);
        }
    }
    return targets;
}

void requireAttributes(const PointSources& sources, const std::string& primary,
                       const std::set<std::string>& leftOut) {
    for (const auto& source : sources) {
        requirePrimary(*source, primary);
    }
    for (const std::string& name : leftOut) {
        if (std::ranges::none_of(sources, [&](const auto& source) {
                return std::ranges::count(source->columns(), name, &Column::attribute) > 0;
            })) {
            throw NoAttributeToLeaveOut(name);
        }
    }
}

ImportPlan planImport(const PointSources& sources, const std::string& primary,
                      const ImportProgress& progress) {
    requireAttributes(sources, primary, {});
    std::vector<FileSurvey> surveys;
    for (const auto& source : sources) {
        surveys.push_back(survey(*source, progress));
    }
    return planImport(sources, surveys, primary);
}

ImportPlan planImport(const PointSources& sources, const std::vector<FileSurvey>& surveys,
                      const std::string& primary) {
    ImportPlan plan;
    AttributeSummaries summaries;
    requireAttributes(sources, primary, {});
    for (std::size_t i = 0; i < sources.size(); ++i) {
        addSurvey(*sources[i], surveys[i], summaries, plan, primary);
        addNotes(*sources[i], plan.notes);
    }
    plan.order = summaries.order();
    for (const std::string& name : plan.order) {
        const AttributeSummary& found = summaries.of(name);
        const ColumnSummary& summary = found.summary;
        if (name == primary && summary.hasNaN()) {
            throw core::Failure(
                "Some points have no value of the primary attribute \"" + name + "\".",
                "Remove these points from the input files.");
        }
        ImportPlan::Attribute attribute;
        const FittedAttribute fitted = summaries.fit(name, sources, DefaultFor::Nobody);
        attribute.definition = fitted.definition;
        attribute.fault = summaries.fault(fitted.definition);
        if (fitted.rounding > 0) {
            plan.notes.push_back(roundingNote(fitted.definition.resolution));
        }
        // A flag that no point sets needs no column; points that come later without one have it
        // no more than these.
        attribute.constant = name != primary && found.column.length == 1 && summary.isConstant() &&
                             found.sourceCount == sources.size() &&
                             catalogue::findAttribute(name) == nullptr &&
                             summary.minimum() == attribute.definition.defaultValue;
        plan.attributes.emplace(name, std::move(attribute));
    }
    return plan;
}

}  // namespace tarvo::exchange
