// What an import consists of, whether into a new database or into one that exists.
#pragma once

#include "core/error.h"
#include "exchange/opensource.h"
#include "qrb/pointcloud.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace tarvo::exchange {

// Learns of a step, in words, and of how much of it is done, 0 to 1. What it throws ends the
// import.
using ImportProgress = std::function<void(const std::string& step, double fraction)>;

// An attribute was to be left out, but no file has it.
class NoAttributeToLeaveOut : public core::Failure {
public:
    explicit NoAttributeToLeaveOut(const std::string& name)
        : Failure("No file has the attribute \"" + name + "\" to leave out.") {}
};

// How to do without an attribute of the files.
std::string adviceToGoWithout(const std::string& attribute);

// Adds what a file that was read tells the user, with its name.
void addNotes(const PointSource& source, std::vector<std::string>& notes);

// Where the values of a column go.
struct ColumnTarget {
    std::string descriptor;         // in the database; empty: the column is left out
    std::optional<double> noValue;  // a number that says "no value", as NaN does
    // What is stored for no value; nothing: there are none, or the database holds NaN.
    std::optional<double> replacement;
};

// Reads a source from its beginning to its end and has each column of each batch looked at, on all
// cores: one call at a time for a column. Returns the number of points. progress may be empty.
std::uint64_t lookAtColumns(
    PointSource& source, const std::function<void(std::size_t column, std::uint32_t count)>& look,
    const ImportProgress& progress);

// Adds a metadata item; where there is one of the name with another value, with a number.
void addItem(qrb::pointcloud::MetaData& metaData, const std::string& name,
             const std::string& value);
// Adds the items of the files in the same way.
void addMetaData(qrb::pointcloud::MetaData& metaData, const PointSources& sources);

// Adds all points of a file and returns their number; targets: one per column. progress may be
// empty. Throws Failure and qrb::Error.
std::uint64_t insertPoints(const qrb::Pointcloud& cloud, PointSource& source,
                           const std::vector<ColumnTarget>& targets,
                           const ImportProgress& progress);

}  // namespace tarvo::exchange
