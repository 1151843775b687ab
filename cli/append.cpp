#include "cli/append.h"

#include "cli/origins.h"
#include "cli/output.h"
#include "cli/texttable.h"

namespace tarvo::cli {

void appendFiles(Database& database, const PointSources& sources, const AppendOptions& options,
                 const Change& change) {
    std::uint64_t pointCount = 0;
    std::uint64_t rounded = 0;
    database.change(change, [&] {
        const qrb::Pointcloud& cloud = database.cloud();
        // Within the transaction, so that nobody redefines the attributes that were looked at.
        const CommonOrigin common = commonOrigin(sources, &cloud, options.crsAsIs);
        const AppendPlan plan = planAppend(database, sources, options, common.origin.system);
        addOrigin(cloud, common);
        for (const PointAttribute& definition : plan.added) {
            cloud.pointAttributes().add(definition);
        }
        addMetaData(cloud.metaData(), sources);
        for (std::size_t i = 0; i < sources.size(); ++i) {
            insertPoints(cloud, *sources[i], plan.targets[i]);
        }
        pointCount = plan.pointCount;
        rounded = plan.rounded;
    });
    print(counted(pointCount, "point") + " added" +
          (rounded > 0 ? ", " + counted(rounded, "value") + " rounded" : "") + ".\n");
}

}  // namespace tarvo::cli
