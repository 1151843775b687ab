// What is different between the definitions of two databases.
#pragma once

#include "core/databasediff.h"

namespace tarvo::core {

// The fields that differ, in the order of a definition's JSON form, the name aside.
std::vector<FieldDiff> compareFields(const qrb::pointcloud::PointAttribute& before,
                                     const qrb::pointcloud::PointAttribute& after);

// Throws qrb::Error.
DefinitionsDiff compareDefinitions(const qrb::Pointcloud& before, const qrb::Pointcloud& after);

}  // namespace tarvo::core
