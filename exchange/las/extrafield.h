// How a column is kept in the extra bytes of point records.
#pragma once

#include "exchange/las/dimensions.h"
#include "exchange/las/survey.h"

#include <cstdint>
#include <vector>

namespace tarvo::exchange::las {

// The smallest field that holds every value of a column of the survey, at the place in the record.
Field extraField(const Column& column, const Survey& survey, std::size_t index,
                 std::uint32_t offset);

// Appends its description for the "LASF_Spec" record 4. The name is that of the attribute, with the
// element where there are several, as much of it as there is room for.
void describeExtraField(const Column& column, const Field& field, std::vector<std::uint8_t>& out);

}  // namespace tarvo::exchange::las
