// What an import changes, from its plan to the last point, alike for all programs.
#pragma once

#include "core/newdatabase.h"
#include "exchange/import/appendplan.h"
#include "exchange/import/commonorigin.h"
#include "exchange/import/importplan.h"

#include <cstdint>
#include <functional>
#include <set>
#include <string>
#include <vector>

namespace tarvo::exchange {

// Whom an import talks to; both may be empty.
struct ImportListener {
    ImportProgress progress;
    // Lines for the user, before the points go in. What it throws ends the import.
    std::function<void(const std::vector<std::string>& notes)> note;
};

// What the transaction of an import is recorded with.
struct ImportRecord {
    std::string title;
    std::string agent;
    std::string comments;
    std::string settings;  // JSON text
    qrb::pointcloud::Signature signature;
};

struct NewImportOptions {
    std::string primary = "tarvo.xyz";
    std::set<std::string> leftOut;  // names of attributes; files must have them
    bool newIds = false;            // ids of the files are left out
};

// Creates the database and fills it in one transaction; publishing is up to the caller. Returns the
// number of points. fileName: of the database, for messages. plan and common: of these sources; the
// plan may be that of more points. Throws Failure, also where the
// primary attribute is left out; NoAttributeToLeaveOut; qrb::Error.
std::uint64_t importIntoNew(core::NewDatabase& database, const std::string& fileName,
                            const PointSources& sources, ImportPlan plan, CommonOrigin common,
                            const NewImportOptions& options, const ImportRecord& record,
                            const ImportListener& listener);

struct Appended {
    std::uint64_t points = 0;
    std::uint64_t rounded = 0;  // values
};

// Adds all points to a database that exists, within a transaction that the caller has begun, so
// that nobody redefines the attributes that were looked at; it must be rolled back where this
// throws Failure, NoAttributeToLeaveOut or qrb::Error. fileName: of the database, for messages.
// surveys: as for planAppend.
Appended appendPoints(const qrb::Pointcloud& cloud, const std::string& fileName,
                      const PointSources& sources, const AppendOptions& options,
                      const ImportListener& listener, const std::vector<FileSurvey>& surveys = {});

}  // namespace tarvo::exchange
