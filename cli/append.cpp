#include "cli/append.h"

#include "cli/errors.h"
#include "cli/importinputs.h"
#include "cli/output.h"
#include "cli/terminal.h"
#include "cli/texttable.h"
#include "exchange/import/commonorigin.h"

namespace tarvo::cli {

using namespace exchange;

namespace {

AppendPlan plannedAppend(const Database& database, const PointSources& sources,
                         const AppendOptions& options,
                         const std::optional<core::ReferenceSystem>& system) {
    try {
        return planAppend(database.cloud(), database.fileName(), sources, options, system,
                          importProgress());
    } catch (const NoAttributeToLeaveOut& failure) {
        throw UsageError(failure.what());
    }
}

}  // namespace

void appendFiles(Database& database, const PointSources& sources, const AppendOptions& options,
                 const Change& change) {
    std::uint64_t pointCount = 0;
    std::uint64_t rounded = 0;
    database.change(change, [&] {
        const qrb::Pointcloud& cloud = database.cloud();
        // Within the transaction, so that nobody redefines the attributes that were looked at.
        std::set<std::string> leftOut = options.leftOut;
        if (options.onlyKnown && !cloud.pointAttributes().exists("tarvo.timestamp")) {
            leftOut.insert("tarvo.timestamp");
        }
        CommonOrigin common = commonOrigin(sources, &cloud, leftOut, options.crsAsIs);
        const AppendPlan plan = plannedAppend(database, sources, options, common.origin.system);
        addOrigin(cloud, common);
        note(common.notes);
        note(plan.notes);
        for (const PointAttribute& definition : plan.added) {
            cloud.pointAttributes().add(definition);
        }
        addMetaData(cloud.metaData(), sources);
        for (std::size_t i = 0; i < sources.size(); ++i) {
            insertPoints(cloud, *sources[i], plan.targets[i], importProgress());
        }
        pointCount = plan.pointCount;
        rounded = plan.rounded;
    });
    print(counted(pointCount, "point") + " added" +
          (rounded > 0 ? ", " + counted(rounded, "value") + " rounded" : "") + ".\n");
}

}  // namespace tarvo::cli
