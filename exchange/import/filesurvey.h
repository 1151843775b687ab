// What one look at every value of a file finds, so that plans of its import need no further one.
#pragma once

#include "exchange/import/importsteps.h"
#include "exchange/table/summary.h"

#include <cstdint>
#include <string>
#include <vector>

namespace tarvo::exchange {

struct FileSurvey {
    struct FoundColumn {
        ColumnSummary summary;
        std::vector<std::string> first;  // the values of the first points, as texts
    };
    std::uint64_t pointCount = 0;
    std::vector<FoundColumn> columns;

    // That of a source with these columns of the one that was looked at.
    FileSurvey of(const std::vector<std::size_t>& chosen) const;
};

// Reads all points once. progress may be empty.
FileSurvey survey(PointSource& source, const ImportProgress& progress);

// Whether an attribute of the definition is sure to hold all that was found in a column, exactly.
// False where that takes a look at each value.
bool isSureToHold(const qrb::pointcloud::PointAttribute& definition, const Column& column,
                  const ColumnSummary& summary);

}  // namespace tarvo::exchange
