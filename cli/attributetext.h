// Point attribute definitions as texts for people.
#pragma once

#include "qrb/pointattribute.h"

#include <string>
#include <vector>

namespace tarvo::cli {

// All of a definition, a line per field.
std::string describeAttribute(const qrb::pointcloud::PointAttribute& attribute);

// A table of definitions.
std::string attributeTable(const std::vector<qrb::pointcloud::PointAttribute>& attributes);

}  // namespace tarvo::cli
