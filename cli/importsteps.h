// What an import consists of, whether into a new database or into one that exists.
#pragma once

#include "cli/errors.h"
#include "exchange/opensource.h"
#include "qrb/pointcloud.h"

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace tarvo::cli {

using exchange::Column;
using exchange::PointSource;
using exchange::PointSources;

// Where the values of a column go.
struct ColumnTarget {
    std::string descriptor;         // in the database; empty: the column is left out
    std::optional<double> noValue;  // a number that says "no value", as NaN does
    // What is stored for no value; nothing: there are none, or the database holds NaN.
    std::optional<double> replacement;
};

// Throws UsageError if one of the files is the database, by whatever name.
void refuseAsInput(const std::string& database, const std::vector<std::string>& fileNames);

// Opens the files; format: "las", "csv" or empty for what their extensions tell. Throws Failure if
// one can't be read.
PointSources openSources(const std::vector<std::string>& fileNames, const std::string& format);

// The error for an attribute that is to be left out, but that no file has.
UsageError noAttributeToLeaveOut(const std::string& name);

// Adds the items of the files. Where there is an item of the name with another value, an item gets
// a number.
void addMetaData(qrb::pointcloud::MetaData& metaData, const PointSources& sources);

// Adds all points of a file; targets: one per column.
void insertPoints(const qrb::Pointcloud& cloud, PointSource& source,
                  const std::vector<ColumnTarget>& targets);

}  // namespace tarvo::cli
