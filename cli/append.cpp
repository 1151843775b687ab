#include "cli/append.h"

#include "cli/answer.h"
#include "cli/errors.h"
#include "cli/importinputs.h"
#include "cli/texttable.h"
#include "exchange/import/importrun.h"

namespace tarvo::cli {

using namespace exchange;

void appendFiles(Database& database, const PointSources& sources, const AppendOptions& options,
                 const Change& change) {
    Appended added;
    database.change(change, [&] {
        try {
            added = appendPoints(database.cloud(), database.fileName(), sources, options,
                                 importListener());
        } catch (const NoAttributeToLeaveOut& failure) {
            throw UsageError(failure.what());
        }
    });
    answer(counted(added.points, "point") + " added" +
               (added.rounded > 0 ? ", " + counted(added.rounded, "value") + " rounded" : "") + ".",
           [&](JsonText& json) {
               json.member("points", added.points);
               json.member("rounded", added.rounded);
           });
}

}  // namespace tarvo::cli
