#include "exchange/import/appendplan.h"

#include "exchange/advice.h"
#include "exchange/import/commonorigin.h"
#include "exchange/table/attributesummary.h"
#include "exchange/table/columntarget.h"
#include "exchange/table/valuecheck.h"

#include <cmath>
#include <map>
#include <optional>

namespace tarvo::exchange {

namespace {

// What a column is looked at with: one of the two, or neither where it is left out.
struct ColumnWork {
    std::string attribute;  // of the database
    std::optional<ValueCheck> check;
    std::optional<ColumnSummary> summary;  // for an attribute to add
    bool anyNearest = false;               // its grid is far finer than that of the file
};

class Planner {
public:
    Planner(const qrb::Pointcloud& database, std::string fileName, const AppendOptions& options,
            const ImportProgress& progress)
        : m_fileName(std::move(fileName)),
          m_attributes(database.pointAttributes()),
          m_options(options),
          m_progress(progress),
          m_primary(m_attributes.primaryAttributeName()),
          m_id(m_attributes.pointIdName()) {
        std::uint64_t id = 0;
        auto any = database.select();
        any.bind(m_id, DataType::UINT64, &id, sizeof id);
        m_hasPoints = any.next(1) > 0;
    }

    AppendPlan plan(const PointSources& sources, const std::vector<FileSurvey>& surveys) {
        AppendPlan plan;
        for (std::size_t i = 0; i < sources.size(); ++i) {
            PointSource& source = *sources[i];
            std::vector<ColumnWork> work = begin(source, plan);
            if (surveys.empty() || !takeFrom(surveys[i], source, work)) {
                look(source, plan, work);
            }
            addNotes(source, plan.notes);
            finish(source, plan, work);
        }
        for (const std::string& name : m_options.leftOut) {
            if (!m_leftOut.contains(name)) {
                throw NoAttributeToLeaveOut(name);
            }
        }
        failOnFaults();
        for (const std::string& name : m_summaries.order()) {
            const FittedAttribute fitted = m_summaries.fit(
                name, sources, m_hasPoints ? DefaultFor::PointsThatAreThere : DefaultFor::Nobody);
            if (const auto fault = m_summaries.fault(fitted.definition)) {
                throw *fault;
            }
            plan.added.push_back(fitted.definition);
            m_movedTo = std::max(m_movedTo, fitted.rounding > 0 ? fitted.definition.resolution : 0);
        }
        if (m_movedTo > 0) {
            plan.notes.push_back(roundingNote(m_movedTo));
        }
        return plan;
    }

private:
    const PointAttribute& definition(const std::string& name) {
        const auto [found, isNew] = m_definitions.try_emplace(name);
        if (isNew) {
            found->second = m_attributes.get(name);
        }
        return found->second;
    }

    std::vector<ColumnWork> begin(const PointSource& source, AppendPlan& plan) {
        std::vector<ColumnWork> work;
        std::vector<ColumnTarget>& targets = plan.targets.emplace_back();
        std::uint32_t primaryElements = 0;
        for (const Column& column : source.columns()) {
            ColumnWork one;
            ColumnTarget target;
            one.attribute = attributeMeantBy(column, m_attributes);
            const bool known = m_attributes.exists(one.attribute);
            if ((m_options.newIds && one.attribute == m_id) || isLeftOut(one.attribute)) {
                // neither
            } else if (known) {
                const PointAttribute& own = definition(one.attribute);
                if (column.element >= own.length) {
                    throw core::Failure(
                        "The file \"" + source.fileName() + "\" has a column \"" + one.attribute +
                            "[" + std::to_string(column.element) +
                            "]\", but the attribute of the database has the length " +
                            std::to_string(own.length) + ".",
                        adviceToGoWithout(one.attribute));
                }
                primaryElements += one.attribute == m_primary ? 1 : 0;
                one.anyNearest = isFarCoarser(source, column, own);
                one.check.emplace(own, m_options.round || one.anyNearest);
                target.descriptor = elementDescriptor(own.name, own.length, column.element);
                if (column.hasInvalid && column.invalidValue != own.invalidValue) {
                    target.noValue = column.invalidValue;
                }
            } else if (!m_options.onlyKnown) {
                one.summary.emplace(column.type);
                target.descriptor = column.descriptor();
            }
            if (one.check || one.summary) {
                refuseFault(column, one.attribute == m_primary && m_primary != m_id
                                        ? ""
                                        : adviceToGoWithout(one.attribute));
            }
            work.push_back(std::move(one));
            targets.push_back(std::move(target));
        }
        if (m_primary != m_id && primaryElements != definition(m_primary).length) {
            throw core::Failure("The file \"" + source.fileName() + "\" does not hold all of \"" +
                                    m_primary +
                                    "\", which the points of the database are found by.",
                                m_primary == "tarvo.xyz"
                                    ? "Columns of coordinates are named \"x\", \"y\" and \"z\".\n" +
                                          exchange::advice().mapCoordinates
                                    : "");
        }
        return work;
    }

    bool isLeftOut(const std::string& name) {
        return m_options.leftOut.contains(name) && (m_leftOut.insert(name), true);
    }

    // Offsets with noise in them put the coordinates of a file onto no grid; a database made from
    // such a file has a grid so fine that every stored number is told from its neighbours.
    static bool isFarCoarser(const PointSource& source, const Column& column,
                             const PointAttribute& own) {
        const std::vector<Affine> axes = source.coordinateAxes();
        if (column.attribute != "tarvo.xyz" || column.element >= axes.size() ||
            !(own.resolution * 256 <= std::abs(axes[column.element].scale()))) {
            return false;
        }
        const auto grid = commonGrid(axes, own.minimumValue, own.maximumValue);
        return grid && !grid->exact;
    }

    // Whether the survey tells all that a look at the values would.
    bool takeFrom(const FileSurvey& survey, const PointSource& source,
                  std::vector<ColumnWork>& work) {
        const std::vector<Column>& columns = source.columns();
        for (std::size_t i = 0; i < work.size(); ++i) {
            if (work[i].check && !isSureToHold(definition(work[i].attribute), columns[i],
                                               survey.columns[i].summary)) {
                return false;
            }
        }
        for (std::size_t i = 0; i < work.size(); ++i) {
            if (work[i].summary) {
                work[i].summary = survey.columns[i].summary;
            }
        }
        return true;
    }

    void look(PointSource& source, const AppendPlan& plan, std::vector<ColumnWork>& work) {
        const std::vector<Column>& columns = source.columns();
        const std::vector<ColumnTarget>& targets = plan.targets.back();
        const std::string step = "Looking at " + source.fileName();
        source.rewind();
        while (const std::uint32_t count = source.next()) {
            for (std::size_t i = 0; i < columns.size(); ++i) {
                if (work[i].check) {
                    work[i].check->add(columns[i].type, source.values(i), count,
                                       targets[i].noValue);
                } else if (work[i].summary) {
                    work[i].summary->add(source.values(i), count);
                }
            }
            if (m_progress) {
                m_progress(step, source.progress());
            }
        }
    }

    void finish(const PointSource& source, AppendPlan& plan, const std::vector<ColumnWork>& work) {
        std::vector<std::optional<ColumnSummary>> summaries;
        for (std::size_t i = 0; i < work.size(); ++i) {
            summaries.push_back(work[i].summary);
            if (!work[i].check) {
                continue;
            }
            const std::string& name = work[i].attribute;
            const PointAttribute& own = definition(name);
            ValueFindings findings = work[i].check->findings();
            if (findings.missing > 0) {
                if (name == m_primary || name == m_id) {
                    throw core::Failure("Some points of \"" + source.fileName() +
                                            "\" have no value of \"" + name + "\".",
                                        name == m_id ? adviceToGoWithout(name)
                                                     : "Remove these points from the file.");
                }
                plan.targets.back()[i].replacement =
                    std::isnan(own.invalidValue) && own.resolution != 0 ? own.defaultValue
                                                                        : own.invalidValue;
            }
            if (work[i].anyNearest) {
                m_movedTo = findings.between > 0 ? own.resolution : m_movedTo;
                findings.between = 0;
            }
            if (m_options.round) {
                plan.rounded += findings.between;
                findings.between = 0;
            }
            m_findings[name].merge(findings);
        }
        m_summaries.add(source, summaries);
    }

    void failOnFaults() {
        std::string text;
        std::string details;
        for (const auto& [name, findings] : m_findings) {
            if (findings.outside == 0 && findings.between == 0) {
                continue;
            }
            const std::string fault = faultText(definition(name), findings);
            if (text.empty()) {
                text = fault;
            } else {
                details += fault + "\n";
            }
            details += advice(name, findings) + "\n";
        }
        if (!text.empty()) {
            throw core::Failure(text, details);
        }
    }

    std::string advice(const std::string& name, const ValueFindings& findings) const {
        std::string text = adviceToRound(findings);
        if (name == m_id) {
            return text + adviceToGoWithout(name);
        }
        if (name == m_primary && m_hasPoints) {
            return text +
                   "The points are found by it, so that it can't be redefined: import all files "
                   "into a new database.";
        }
        text += adviceToRedefine(m_fileName, name, findings);
        return name == m_primary ? text : text + "\n" + adviceToGoWithout(name);
    }

    std::string m_fileName;
    const qrb::pointcloud::PointAttributes& m_attributes;
    const AppendOptions& m_options;
    const ImportProgress& m_progress;
    std::string m_primary;
    std::string m_id;
    bool m_hasPoints = false;
    double m_movedTo = 0;  // resolution that coordinates of the files lie beside; 0: none does
    std::set<std::string> m_leftOut;  // those that files have
    std::map<std::string, PointAttribute> m_definitions;
    std::map<std::string, ValueFindings> m_findings;
    AttributeSummaries m_summaries;
};

}  // namespace

AppendPlan planAppend(const qrb::Pointcloud& database, const std::string& fileName,
                      const PointSources& sources, const AppendOptions& options,
                      const std::optional<core::ReferenceSystem>& system,
                      const std::vector<FileSurvey>& surveys, const ImportProgress& progress) {
    AppendPlan plan = Planner(database, fileName, options, progress).plan(sources, surveys);
    for (PointAttribute& definition : plan.added) {
        nameUnits(definition, system);
    }
    return plan;
}

}  // namespace tarvo::exchange
