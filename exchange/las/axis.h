// How coordinates are written as 32-bit whole numbers.
#pragma once

#include "exchange/las/survey.h"

#include <optional>

namespace tarvo::exchange::las {

// A scale and an offset by which every value of a column of the survey is kept. scale: of the user,
// to which the values are rounded instead. Throws Failure that says what to do where the values lie
// on no grid, or span more steps than there are whole numbers.
Affine axisFor(const Column& column, const Survey& survey, std::size_t index,
               std::optional<double> scale);

}  // namespace tarvo::exchange::las
