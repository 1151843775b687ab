// How the points of files go into a database that exists: which column goes where, which attributes
// have to be added, and whether every value has its place.
#pragma once

#include "exchange/import/filesurvey.h"
#include "exchange/import/importsteps.h"
#include "exchange/table/fit.h"

#include <cstdint>
#include <optional>
#include <set>
#include <string>
#include <vector>

namespace tarvo::exchange {

struct AppendOptions {
    bool round = false;             // values that the database can't hold become the nearest ones
    bool onlyKnown = false;         // attributes that the database lacks are left out
    bool crsAsIs = false;           // coordinates of other reference systems are taken as they are
    bool newIds = false;            // ids of the files are left out
    std::set<std::string> leftOut;  // names of attributes; files must have them
};

struct AppendPlan {
    std::vector<PointAttribute> added;
    std::vector<std::vector<ColumnTarget>> targets;  // per file, per column
    std::uint64_t rounded = 0;                       // values
    std::vector<std::string> notes;                  // lines for the user
};

// Reads all points of all files once; of a file whose survey tells that every value has its place,
// none. surveys: empty, or one per source, of its columns, and of its points or more. fileName: of
// the database, for messages. system: that of the coordinates, where it is known. progress may be
// empty. Throws Failure, telling what to do, if points lack the primary attribute or the database
// can't hold values; NoAttributeToLeaveOut.
AppendPlan planAppend(const qrb::Pointcloud& database, const std::string& fileName,
                      const PointSources& sources, const AppendOptions& options,
                      const std::optional<core::ReferenceSystem>& system,
                      const std::vector<FileSurvey>& surveys, const ImportProgress& progress);

}  // namespace tarvo::exchange
