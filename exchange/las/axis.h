// How coordinates are written as 32-bit whole numbers.
#pragma once

#include "exchange/las/survey.h"

#include <optional>

namespace tarvo::exchange::las {

struct Axis {
    Affine affine;
    bool rounds = false;  // values lie up to half a step beside
};

// A scale and an offset by which every value of a column of the survey is kept. scale: of the user,
// to which the values are rounded instead. So they are to the axis of the file that was imported,
// where no other keeps them, by up to half a step of the database's grid. Throws Failure that says
// what to do where the values lie on no grid, or span more steps than there are whole numbers.
Axis axisFor(const Column& column, const Survey& survey, std::size_t index,
             std::optional<double> scale);

}  // namespace tarvo::exchange::las
