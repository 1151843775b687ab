#include "cli/importplan.h"

#include "cli/errors.h"
#include "cli/terminal.h"

#include <algorithm>

namespace tarvo::cli {

namespace {

// What the files say about one attribute.
struct Findings {
    Column column;  // its first one
    ColumnSummary summary;
    std::size_t sourceCount = 0;  // sources that have it
};

using FindingsByName = std::map<std::string, Findings>;

void requirePrimary(const PointSource& source, const std::string& primary) {
    std::size_t elements = 0;
    std::uint32_t length = 0;
    for (const Column& column : source.columns()) {
        if (column.attribute == primary) {
            ++elements;
            length = column.length;
        }
    }
    if (elements == 0 || elements != length) {
        throw Failure(
            "The file \"" + source.fileName() + "\" does not hold the attribute \"" + primary +
                "\"" + (elements == 0 ? "." : " with all " + std::to_string(length) + " elements."),
            primary == "tarvo.xyz" ? "A text file names its coordinates \"x\", \"y\" and \"z\"."
                                   : "Name another primary attribute.");
    }
}

void readSource(PointSource& source, FindingsByName& findings, std::vector<std::string>& order,
                std::uint64_t& pointCount) {
    const std::vector<Column>& columns = source.columns();
    std::vector<ColumnSummary> summaries;
    for (const Column& column : columns) {
        summaries.emplace_back(column.type);
    }
    ProgressLine progress("Looking at " + source.fileName());
    source.rewind();
    while (const std::uint32_t count = source.next()) {
        for (std::size_t i = 0; i < columns.size(); ++i) {
            summaries[i].add(source.values(i), count);
        }
        pointCount += count;
        progress.update(source.progress());
    }
    std::map<std::string, bool> seen;
    for (std::size_t i = 0; i < columns.size(); ++i) {
        const auto [found, isNew] = findings.try_emplace(columns[i].attribute);
        Findings& finding = found->second;
        if (isNew) {
            finding.column = columns[i];
            order.push_back(columns[i].attribute);
        }
        finding.column.length = std::max(finding.column.length, columns[i].length);
        finding.summary.merge(summaries[i]);
        finding.sourceCount += seen.emplace(columns[i].attribute, true).second ? 1 : 0;
    }
}

// The axes of all sources; text files count as decimal numbers. Empty: plain numbers.
std::vector<Affine> allAxes(const std::vector<std::unique_ptr<PointSource>>& sources,
                            const ColumnSummary& summary) {
    std::vector<Affine> axes;
    for (const auto& source : sources) {
        const std::vector<Affine> own = source->coordinateAxes();
        axes.insert(axes.end(), own.begin(), own.end());
        if (own.empty()) {
            if (summary.decimals() < 0) {
                return {};
            }
            axes.emplace_back(1 / static_cast<double>(powerOfTen(summary.decimals())), 0.0);
        }
    }
    return axes;
}

}  // namespace

ImportPlan planImport(const std::vector<std::unique_ptr<PointSource>>& sources,
                      const std::string& primary) {
    ImportPlan plan;
    FindingsByName findings;
    for (const auto& source : sources) {
        requirePrimary(*source, primary);
        readSource(*source, findings, plan.order, plan.pointCount);
    }
    for (const auto& [name, finding] : findings) {
        ImportPlan::Attribute attribute;
        const ColumnSummary& summary = finding.summary;
        if (name == primary && summary.hasNaN()) {
            throw Failure("Some points have no value of the primary attribute \"" + name + "\".",
                          "Remove these points from the input files.");
        }
        std::vector<Affine> axes;
        if (name == "tarvo.xyz" && summary.count() > 0) {
            axes = allAxes(sources, summary);
        }
        attribute.definition = axes.empty() ? fitAttribute(finding.column, summary)
                                            : fitCoordinates(finding.column, summary, axes);
        // A flag that no point sets needs no column; the default catalogue's definitions keep
        // their default values.
        if (name != primary && finding.column.length == 1 && summary.isConstant() &&
            finding.sourceCount == sources.size() &&
            qrb::defaults::findAttribute(name) == nullptr) {
            attribute.constant = true;
            attribute.definition.defaultValue = summary.minimum();
        }
        plan.attributes.emplace(name, std::move(attribute));
    }
    return plan;
}

}  // namespace tarvo::cli
