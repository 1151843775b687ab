#include "exchange/import/filesurvey.h"

#include "exchange/table/fit.h"
#include "exchange/table/valuecheck.h"
#include "qrb/visitvalues.h"
#include "numbers/numbertext.h"

#include <algorithm>
#include <type_traits>

namespace tarvo::exchange {

namespace {

constexpr std::uint32_t shownValues = 5;

std::vector<std::string> firstTexts(const PointSource& source, std::size_t column,
                                    std::uint32_t count) {
    std::vector<std::string> texts;
    visitValues(source.columns()[column].type, source.values(column),
                [&]<typename T>(const T* values) {
                    for (std::uint32_t i = 0; i < std::min(count, shownValues); ++i) {
                        if constexpr (std::is_integral_v<T>) {
                            texts.push_back(numbers::wholeText(values[i]));
                        } else {
                            texts.push_back(numbers::numberText(static_cast<double>(values[i])));
                        }
                    }
                });
    return texts;
}

}  // namespace

FileSurvey FileSurvey::of(const std::vector<std::size_t>& chosen) const {
    FileSurvey result;
    result.pointCount = pointCount;
    for (const std::size_t i : chosen) {
        result.columns.push_back(columns[i]);
    }
    return result;
}

FileSurvey survey(PointSource& source, const ImportProgress& progress) {
    FileSurvey found;
    for (const Column& column : source.columns()) {
        found.columns.push_back({ColumnSummary(column.type), {}});
    }
    found.pointCount = lookAtColumns(
        source,
        [&](std::size_t i, std::uint32_t count) {
            FileSurvey::FoundColumn& column = found.columns[i];
            if (column.first.empty()) {
                column.first = firstTexts(source, i, count);
            }
            column.summary.add(source.values(i), count);
        },
        progress);
    return found;
}

bool isSureToHold(const qrb::pointcloud::PointAttribute& definition, const Column& column,
                  const ColumnSummary& summary) {
    if (summary.count() == 0) {
        return true;
    }
    const double least = summary.minimum();
    const double greatest = summary.maximum();
    if (summary.hasNaN() || summary.hasInfinity() || summary.beyondDouble() ||
        (column.hasInvalid && column.invalidValue >= least && column.invalidValue <= greatest) ||
        !(least >= definition.minimumValue && greatest <= definition.maximumValue)) {
        return false;
    }
    return holdsWholeNumbers(definition) ? summary.decimals() == 0
                                         : holdsDecimals(definition, summary.decimals());
}

}  // namespace tarvo::exchange
