// What the usual names of point formats mean in the catalogue.
#pragma once

#include "exchange/table/pointsource.h"

#include <string>
#include <string_view>
#include <vector>

namespace tarvo::exchange {

// The column of such a name: x, y and z, red, green, blue and alpha (r, g, b; diffuse_red, ...),
// nx, ny and nz, intensity, in any case of letters. Another name is one of the format's own:
// prefix + safeName. A name of the form of an attribute's (with a point), or of an element's
// "NAME[I]", is taken as it is.
Column columnNamed(std::string_view name, std::string_view prefix);

// The length of each attribute: its elements that are there, and those of the catalogue.
void setLengths(std::vector<Column>& columns);

// Sets the lengths. Numbers that are told twice get another name, so that none is lost; elements of
// an attribute of the catalogue, or of one with several, can't. Throws Failure for those, and for
// names of more than 255 characters. fileName: for the message.
void makeUnique(std::vector<Column>& columns, const std::string& fileName);

}  // namespace tarvo::exchange
