#include "core/databasediff.h"

#include "core/definitiondiff.h"
#include "core/error.h"
#include "core/pointdiff.h"

#include <algorithm>

namespace tarvo::core {

namespace {

// Items that both have, or one of them.
MetaDataDiff compareMetaData(const qrb::pointcloud::MetaData& before,
                             const qrb::pointcloud::MetaData& after) {
    MetaDataDiff diff;
    for (const std::string& name : before.list()) {
        if (!after.exists(name)) {
            diff.removed.push_back(name);
            continue;
        }
        if (before.get(name) != after.get(name))
            diff.changed.push_back(name);
        const bool wasSigned = before.verifySignature(name, 0, {});
        const bool isSigned = after.verifySignature(name, 0, {});
        if (isSigned && !wasSigned)
            diff.nowSigned.push_back(name);
        if (wasSigned && !isSigned)
            diff.noLongerSigned.push_back(name);
    }
    for (const std::string& name : after.list())
        if (!before.exists(name))
            diff.added.push_back(name);
    return diff;
}

void requireKnown(const std::vector<std::string>& names, const qrb::Pointcloud& before,
                  const qrb::Pointcloud& after) {
    for (const std::string& name : names)
        if (!before.pointAttributes().exists(name) && !after.pointAttributes().exists(name))
            throw Failure("Neither database has a point attribute \"" + name + "\".",
                          "\"qrbtool info\" lists the attributes.");
}

}  // namespace

DatabaseDiff compareDatabases(const qrb::Pointcloud& before, const qrb::Pointcloud& after,
                              bool ofOneFile, const DiffOptions& options,
                              const qrb::pointcloud::Progress& progress) {
    requireKnown(options.attributes, before, after);
    DatabaseDiff diff;
    diff.definitions = compareDefinitions(before, after);
    diff.metaData = compareMetaData(before.metaData(), after.metaData());
    if (options.points)
        diff.points = comparePoints(before, after, ofOneFile, options, progress);
    return diff;
}

}  // namespace tarvo::core
