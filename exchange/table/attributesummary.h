// What several files say about their attributes, and the definitions that hold all of it.
#pragma once

#include "exchange/table/fit.h"
#include "exchange/table/pointsource.h"
#include "exchange/table/summary.h"

#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace tarvo::exchange {

struct AttributeSummary {
    Column column;  // the first one, with the length of the longest
    ColumnSummary summary;
    std::size_t sourceCount = 0;  // files that have it
};

class AttributeSummaries {
public:
    // Takes what was found in the columns of one file; nothing: the column is passed over.
    void add(const PointSource& source, const std::vector<std::optional<ColumnSummary>>& columns);

    // The names as they appear in the files.
    const std::vector<std::string>& order() const { return m_order; }
    const AttributeSummary& of(const std::string& name) const { return m_summaries.at(name); }

    // A definition for the attribute. The files are those that were added. Throws Failure.
    FittedAttribute fit(const std::string& name,
                        const std::vector<std::unique_ptr<PointSource>>& sources,
                        DefaultFor use) const;
    // Tells of values that an attribute of this definition can't hold as they are: infinite ones,
    // and whole numbers beyond a double; nothing: there are none.
    std::optional<core::Failure> fault(const PointAttribute& definition) const;

private:
    std::vector<std::string> m_order;
    std::map<std::string, AttributeSummary> m_summaries;
};

}  // namespace tarvo::exchange
