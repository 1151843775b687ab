#include "exchange/table/attributesummary.h"

#include "exchange/table/valuecheck.h"
#include "numbers/numbertext.h"

#include <algorithm>
#include <set>

namespace tarvo::exchange {

namespace {

// The axes of all sources; text files count as decimal numbers, if there are any. Empty: plain
// numbers.
std::vector<Affine> allAxes(const std::vector<std::unique_ptr<PointSource>>& sources,
                            const ColumnSummary& summary) {
    std::vector<Affine> axes;
    for (const auto& source : sources) {
        const std::vector<Affine> own = source->coordinateAxes();
        axes.insert(axes.end(), own.begin(), own.end());
        if (own.empty() && summary.count() > 0) {
            if (summary.decimals() < 0) {
                return {};
            }
            axes.emplace_back(1 / static_cast<double>(powerOfTen(summary.decimals())), 0.0);
        }
    }
    return axes;
}

}  // namespace

void AttributeSummaries::add(const PointSource& source,
                             const std::vector<std::optional<ColumnSummary>>& columns) {
    std::set<std::string> seen;
    for (std::size_t i = 0; i < columns.size(); ++i) {
        if (!columns[i]) {
            continue;
        }
        const Column& column = source.columns()[i];
        const auto [found, isNew] = m_summaries.try_emplace(column.attribute);
        AttributeSummary& one = found->second;
        if (isNew) {
            one.column = column;
            m_order.push_back(column.attribute);
        }
        if (column.hasInvalid && !one.column.hasInvalid) {
            one.column.hasInvalid = true;
            one.column.invalidValue = column.invalidValue;
        }
        if (column.lowest <= column.highest) {
            const bool isFirst = one.column.lowest > one.column.highest;
            one.column.lowest =
                isFirst ? column.lowest : std::min(one.column.lowest, column.lowest);
            one.column.highest =
                isFirst ? column.highest : std::max(one.column.highest, column.highest);
        }
        one.column.length = std::max(one.column.length, column.length);
        one.summary.merge(*columns[i]);
        one.sourceCount += seen.insert(column.attribute).second ? 1 : 0;
    }
}

FittedAttribute AttributeSummaries::fit(const std::string& name,
                                        const std::vector<std::unique_ptr<PointSource>>& sources,
                                        DefaultFor use) const {
    const AttributeSummary& one = of(name);
    std::vector<Affine> axes;
    if (name == "tarvo.xyz") {
        axes = allAxes(sources, one.summary);
    }
    if (axes.empty()) {
        return {fitAttribute(one.column, one.summary, use)};
    }
    return fitCoordinates(one.column, one.summary, axes, use);
}

std::optional<core::Failure> AttributeSummaries::fault(const PointAttribute& definition) const {
    const AttributeSummary& one = of(definition.name);
    if (one.summary.hasInfinity()) {
        return core::Failure(
            "The values of \"" + one.column.descriptor() + "\" contain infinite numbers.",
            "A database can't hold them: replace them in the input file.");
    }
    const auto number = one.summary.beyondDouble();
    if (!number || holdsWholeNumbers(definition)) {
        return std::nullopt;
    }
    return core::Failure(
        "The value " + numbers::wholeText(*number) + " of \"" + definition.name +
            "\" would become another number.",
        "Whole numbers of 64 bits are kept where all files and elements of an attribute have whole "
        "numbers\nonly: give those with other numbers, or without any, a name of their own.");
}

}  // namespace tarvo::exchange
