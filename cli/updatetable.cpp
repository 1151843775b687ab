#include "cli/updatetable.h"

#include "cli/errors.h"
#include "cli/inputs.h"
#include "cli/terminal.h"
#include "exchange/csv/source.h"
#include "exchange/table/columntarget.h"
#include "exchange/table/valuecheck.h"

#include <algorithm>
#include <optional>
#include <vector>

namespace tarvo::cli {

using namespace exchange;
using qrb::pointcloud::DataType;

namespace {

// The attribute or element of the database that a column of the file means.
std::string targetOf(const qrb::Pointcloud& cloud, const Column& column) {
    const auto& attributes = cloud.pointAttributes();
    const std::string name = attributeMeantBy(column, attributes);
    if (!attributes.exists(name)) {
        const std::string own = column.title.substr(0, column.title.find('['));
        throw Failure(
            "There is no attribute \"" + (own.empty() ? name : own) + "\" in the database.",
            "Take the column out of the file, or add the attribute.");
    }
    return elementDescriptor(name, attributes.get(name).length, column.element);
}

// A column of values, and what its attribute holds of them.
struct CheckedColumn {
    PointAttribute definition;
    ValueCheck check;
};

class TableUpdate {
public:
    TableUpdate(const Database& database, const std::string& fileName, bool round)
        : m_database(database),
          m_idName(database.cloud().pointAttributes().pointIdName()),
          m_primaryName(database.cloud().pointAttributes().primaryAttributeName()),
          m_round(round),
          m_source(fileName),
          m_query(database.cloud().update()) {
        const qrb::Pointcloud& cloud = database.cloud();
        const std::vector<Column>& columns = m_source.columns();
        for (std::size_t i = 0; i < columns.size(); ++i) {
            const std::string target = targetOf(cloud, columns[i]);
            m_query.bind(target, columns[i].type, m_source.values(i),
                         static_cast<std::int32_t>(dataTypeSize(columns[i].type)));
            if (columns[i].attribute == m_idName) {
                m_idColumn = i;
                m_checked.emplace_back();
            } else {
                const auto own = cloud.pointAttributes().get(target.substr(0, target.find('[')));
                m_checked.push_back(CheckedColumn{own, ValueCheck(own, round)});
            }
        }
        if (!m_idColumn || columns.size() < 2) {
            throw Failure("The file \"" + fileName + "\" needs a column \"" + m_idName +
                              "\" and one with values.",
                          "\"qrbtool select FILE --format csv\" writes such a file.");
        }
        for (const Column& column : columns) {
            refuseFault(column);
        }
    }

    // Reads the whole table once, and changes nothing.
    void check() {
        std::vector<std::uint64_t> ids;
        ProgressLine progress("Looking at " + m_source.fileName());
        m_source.rewind();
        while (const std::uint32_t count = m_source.next()) {
            for (std::size_t i = 0; i < m_checked.size(); ++i) {
                if (m_checked[i]) {
                    m_checked[i]->check.add(m_source.columns()[i].type, m_source.values(i), count,
                                            {});
                }
            }
            for (std::uint32_t row = 0; row < count; ++row) {
                ids.push_back(idOf(row));
            }
            progress.update(m_source.progress());
        }
        refuseFaults();
        std::sort(ids.begin(), ids.end());
        const auto twice = std::adjacent_find(ids.begin(), ids.end());
        if (twice != ids.end()) {
            failTwice(*twice);
        }
    }

    TableResult run() {
        TableResult result;
        ProgressLine progress("Changing " + m_database.fileName());
        m_source.rewind();
        while (const std::uint32_t count = m_source.next()) {
            result.changed += m_query.next(count);
            result.rows += count;
            progress.update(m_source.progress());
        }
        m_query.close();
        return result;
    }

private:
    std::uint64_t idOf(std::uint32_t row) const {
        return static_cast<const std::uint64_t*>(m_source.values(*m_idColumn))[row];
    }

    void refuseFaults() const {
        for (const auto& column : m_checked) {
            if (!column) {
                continue;
            }
            ValueFindings findings = column->check.findings();
            findings.between = m_round ? 0 : findings.between;
            if (findings.outside > 0 || findings.between > 0) {
                const std::string& name = column->definition.name;
                // Points are found by the primary one, so that it can't be redefined.
                throw Failure(faultText(column->definition, findings),
                              adviceToRound(findings) +
                                  (name == m_primaryName
                                       ? ""
                                       : adviceToRedefine(m_database.fileName(), name, findings)));
            }
        }
    }

    [[noreturn]] void failTwice(std::uint64_t id) {
        std::vector<std::uint64_t> lines;
        m_source.rewind();
        while (const std::uint32_t count = m_source.next()) {
            for (std::uint32_t row = 0; row < count; ++row) {
                if (idOf(row) == id) {
                    lines.push_back(m_source.lineOf(row));
                }
            }
        }
        throw Failure("The id " + std::to_string(id) + " stands in the lines " +
                          std::to_string(lines.at(0)) + " and " + std::to_string(lines.at(1)) +
                          " of \"" + m_source.fileName() + "\".",
                      "Keep one line for each point.");
    }

    const Database& m_database;
    std::string m_idName;
    std::string m_primaryName;
    bool m_round;
    csv::CsvSource m_source;
    qrb::pointcloud::QueryUpdate m_query;
    std::optional<std::size_t> m_idColumn;
    std::vector<std::optional<CheckedColumn>> m_checked;  // per column; none of the ids
};

}  // namespace

TableResult updateFromTable(const Database& database, const std::string& fileName, bool round) {
    noteInput(fileName);
    TableUpdate update(database, fileName, round);
    update.check();
    return update.run();
}

}  // namespace tarvo::cli
