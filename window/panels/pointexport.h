// Writes points as delimited text.
#pragma once

#include "core/pointpages.h"
#include "files/wholefile.h"

#include <QStringList>
#include <functional>

namespace tarvo::window {

// Writes a line of column names and one line per selected point: every element of the attributes,
// separated, nothing quoted.
// progress gets per cent after each batch; what it throws ends the export.
// Returns the number of points. Throws qrb::Error, or files::FileError where the file
// takes no more. Publishing is up to the caller.
std::uint64_t exportPoints(const qrb::Pointcloud& database, const core::PointSelection& selection,
                           const QStringList& attributes, char separator, files::WholeFile& file,
                           const std::function<void(int)>& progress = {});

}  // namespace tarvo::window
