// What is different between the points of two databases.
#pragma once

#include "core/databasediff.h"

namespace tarvo::core {

// See compareDatabases. Points of one side are held in memory, a range of ids at a time, while
// those of the other pass by.
PointsDiff comparePoints(const qrb::Pointcloud& before, const qrb::Pointcloud& after,
                         bool ofOneFile, const DiffOptions& options,
                         const qrb::pointcloud::Progress& progress);

}  // namespace tarvo::core
