// Writes points as delimited text.
#pragma once

#include "files/wholefile.h"
#include "mainwindow/pointreader.h"

#include <functional>

// Writes a line of column names and one line per selected point: every element of the attributes,
// separated, in fixed notation with the decimals of the attribute's resolution, nothing quoted.
// progress gets per cent after each batch; what it throws ends the export.
// Returns the number of points. Throws tarvo::qrb::Error, or tarvo::files::FileError where the file
// takes no more. Publishing is up to the caller.
std::uint64_t exportPoints(const tarvo::qrb::Pointcloud& database,
                           const PointReader::Selection& selection, const QStringList& attributes,
                           char separator, tarvo::files::WholeFile& file,
                           const std::function<void(int)>& progress = {});
