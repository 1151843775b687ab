// Which attribute of a database a column of a file means.
#pragma once

#include "exchange/table/pointsource.h"
#include "qrb/pointattributes.h"

#include <string>

namespace tarvo::exchange {

// The attribute of the column, or that of the name in the file's header line where the database
// has none of the other name. The database need not have either.
std::string attributeMeantBy(const Column& column,
                             const qrb::pointcloud::PointAttributes& attributes);

// The descriptor "NAME" or "NAME[I]" of an element; length: that of the attribute.
std::string elementDescriptor(const std::string& attribute, std::uint32_t length,
                              std::uint32_t element);

// Throws the fault of a column whose values go into a database, with a further line of advice.
void refuseFault(const Column& column, const std::string& advice = {});

}  // namespace tarvo::exchange
