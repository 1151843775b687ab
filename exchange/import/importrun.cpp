#include "exchange/import/importrun.h"

namespace tarvo::exchange {

namespace {

void settle(ImportPlan& plan, const PointSources& sources, const CommonOrigin& common,
            const NewImportOptions& options) {
    for (auto& [name, attribute] : plan.attributes) {
        nameUnits(attribute.definition, common.origin.system);
    }
    for (const std::string& name : options.leftOut) {
        if (name == options.primary) {
            throw core::Failure("The primary attribute \"" + name + "\" can't be left out.");
        }
        plan.leaveOut(name);
    }
    if (options.newIds && plan.attributes.contains("tarvo.id")) {
        plan.leaveOut("tarvo.id");
    }
    plan.refuseFaults(sources);
}

void tell(const ImportListener& listener, const CommonOrigin& common,
          const std::vector<std::string>& notes) {
    if (listener.note) {
        listener.note(common.notes);
        listener.note(notes);
    }
}

}  // namespace

std::uint64_t importIntoNew(core::NewDatabase& database, const std::string& fileName,
                            const PointSources& sources, ImportPlan plan, CommonOrigin common,
                            const NewImportOptions& options, const ImportRecord& record,
                            const ImportListener& listener) {
    settle(plan, sources, common, options);
    qrb::pointcloud::CreateSettings settings(database.context());
    settings.primaryAttribute = plan.attributes.at(options.primary).definition;
    database.create(settings);
    qrb::Pointcloud& cloud = database.cloud();
    qrb::pointcloud::TransactionGuard transaction(cloud.transactions(), record.title, record.agent,
                                                  record.comments, record.settings);
    for (const std::string& name : plan.order) {
        if (!cloud.pointAttributes().exists(name)) {
            cloud.pointAttributes().add(plan.attributes.at(name).definition);
        }
    }
    addMetaData(cloud.metaData(), sources);
    setOrigin(cloud, common);
    tell(listener, common, plan.notes);
    std::uint64_t points = 0;
    for (const auto& source : sources) {
        points += insertPoints(cloud, *source, plan.targets(*source), listener.progress);
    }
    transaction.commit(record.signature, [&](int percent) {
        if (listener.progress) {
            listener.progress("Writing " + fileName, percent / 100.0);
        }
    });
    return points;
}

Appended appendPoints(const qrb::Pointcloud& cloud, const std::string& fileName,
                      const PointSources& sources, const AppendOptions& options,
                      const ImportListener& listener, const std::vector<FileSurvey>& surveys) {
    std::set<std::string> leftOut = options.leftOut;
    if (options.onlyKnown && !cloud.pointAttributes().exists("tarvo.timestamp")) {
        leftOut.insert("tarvo.timestamp");
    }
    CommonOrigin common = commonOrigin(sources, &cloud, leftOut, options.crsAsIs);
    const AppendPlan plan = planAppend(cloud, fileName, sources, options, common.origin.system,
                                       surveys, listener.progress);
    addOrigin(cloud, common);
    tell(listener, common, plan.notes);
    for (const PointAttribute& definition : plan.added) {
        cloud.pointAttributes().add(definition);
    }
    addMetaData(cloud.metaData(), sources);
    Appended added;
    added.rounded = plan.rounded;
    for (std::size_t i = 0; i < sources.size(); ++i) {
        added.points += insertPoints(cloud, *sources[i], plan.targets[i], listener.progress);
    }
    return added;
}

}  // namespace tarvo::exchange
