// Writes points as delimited text.
#pragma once

#include "mainwindow/pointreader.h"

#include <functional>

class QIODevice;

// Writes a line of column names and one line per selected point: every element of the attributes,
// separated, in fixed notation with the decimals of the attribute's resolution, nothing quoted.
// progress gets per cent after each batch; what it throws ends the export.
// Throws tarvo::qrb::Error, or std::runtime_error where the device takes no more; what was written
// before stays.
void exportPoints(const tarvo::qrb::Pointcloud& database, const PointReader::Selection& selection,
                  const QStringList& attributes, char separator, QIODevice& device,
                  const std::function<void(int)>& progress = {});
