// Definitions that hold every value of the columns of an attribute without clipping, and without
// rounding but of coordinates that have no decimal grid in common; with room for the values of
// files that are added later.
#pragma once

#include "exchange/table/pointsource.h"
#include "exchange/table/summary.h"
#include "qrb/pointattribute.h"

#include <cstdint>
#include <span>
#include <string>

namespace tarvo::exchange {

using qrb::pointcloud::PointAttribute;

// Who reads the default value of a definition: nobody, or the points that were there before the
// attribute. Those get the usual default value, as an invalid one where the range leaves it out.
enum class DefaultFor : std::uint8_t { Nobody, PointsThatAreThere };

// The definition of the catalogue where it can hold what the summary tells; else the same with
// another range and resolution; for attributes that the catalogue doesn't know, one of its own.
// Infinite values, which no definition can hold, are not looked at.
PointAttribute fitAttribute(const Column& column, const ColumnSummary& summary,
                            DefaultFor use = DefaultFor::Nobody);

struct FittedAttribute {
    PointAttribute definition;
    double rounding = 0;  // so far values move at most, besides their last binary digit
};

// The same for coordinates that are stored as whole numbers of a scale: the grid of the axes.
// Throws Failure if there is no such grid.
FittedAttribute fitCoordinates(const Column& column, const ColumnSummary& summary,
                               std::span<const Affine> axes, DefaultFor use = DefaultFor::Nobody);

// Whether every number of this many decimals (-1: more than can be told) within the range of the
// definition is one of its values.
bool holdsDecimals(const PointAttribute& definition, int decimals);

// What a user has to know of coordinates that move to the values of a resolution.
std::string roundingNote(double resolution);

}  // namespace tarvo::exchange
