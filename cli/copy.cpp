// qrbtool copy: a new database with what is selected from another.

#include "cli/answer.h"
#include "cli/attributenames.h"
#include "cli/commands.h"
#include "cli/database.h"
#include "cli/errors.h"
#include "cli/json.h"
#include "cli/options.h"
#include "cli/shapeoptions.h"
#include "cli/terminal.h"
#include "cli/text.h"
#include "cli/textfile.h"
#include "cli/texttable.h"
#include "core/creationsettings.h"
#include "core/databasecopy.h"
#include "core/newdatabase.h"
#include "core/pointpages.h"
#include "files/identity.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <filesystem>
#include <memory>

namespace tarvo::cli {

namespace {

namespace fs = std::filesystem;

struct CopyOptions {
    std::string target;
    std::string filter;
    std::string nodes;
    ShapeOptions shape;
    std::vector<std::string> attributes;  // none: all
    std::vector<std::string> metaData;    // none: all
    bool noMetaData = false;
    bool changelog = false;
    std::string settings;
    bool overwrite = false;
};

core::Selection selectionOf(const qrb::Pointcloud& cloud, const CopyOptions& options) {
    core::Selection selection;
    selection.filter = options.filter;
    if (!options.nodes.empty()) {
        selection.nodes = parseNodes(options.nodes);
    }
    selection.shaper = shaperOf(options.shape.shape());
    selection.attributes = attributesNamed({&cloud.pointAttributes()}, options.attributes);
    for (const std::string& name : selection.attributes) {
        if (!cloud.pointAttributes().exists(name)) {
            throw UsageError("\"" + name + "\" is no attribute.", "Whole attributes are copied.");
        }
    }
    if (selection.attributes.empty()) {
        selection.attributes = cloud.pointAttributes().list();
    }
    // Without its primary attribute there is no point cloud.
    const std::string primary = cloud.pointAttributes().primaryAttributeName();
    if (std::find(selection.attributes.begin(), selection.attributes.end(), primary) ==
        selection.attributes.end()) {
        selection.attributes.insert(selection.attributes.begin(), primary);
    }
    if (!options.noMetaData) {
        selection.metaData = options.metaData.empty() ? cloud.metaData().list() : options.metaData;
    }
    for (const std::string& name : selection.metaData) {
        if (!cloud.metaData().exists(name)) {
            throw Failure("There is no metadata item \"" + name + "\" in the file.",
                          "\"qrbtool metadata FILE\" lists the items.");
        }
    }
    return selection;
}

qrb::pointcloud::CreateSettings settingsFor(const qrb::Pointcloud& cloud,
                                            const CopyOptions& options) {
    qrb::pointcloud::CreateSettings settings =
        core::creationSettings(cloud).value_or(qrb::pointcloud::CreateSettings(cloud.context()));
    if (!options.settings.empty()) {
        settings.fromJson(readTextFile(options.settings));
    }
    settings.primaryAttribute =
        core::definitionForCopy(cloud, cloud.pointAttributes().primaryAttributeName());
    return settings;
}

// What was done, for the transaction that writes the copy.
std::string settingsJson(const Database& database, const CopyOptions& options) {
    JsonText json;
    json.beginObject();
    json.member("command", "copy");
    json.member("source", fs::path(database.fileName()).filename().string());
    json.member("filter", database.recordedFilter(options.filter));
    json.member("nodes", options.nodes);
    options.shape.describe(json);
    json.endObject();
    return json.compact();
}

void copyTo(const Database& database, const CopyOptions& options) {
    const qrb::Pointcloud& source = database.cloud();
    if (files::sameFile(database.fileName(), options.target)) {
        throw UsageError("\"" + options.target + "\" is the source and the target.");
    }
    const core::Selection selection = selectionOf(source, options);
    // What is wrong with the filter is told before what stands in the way.
    (void)core::PointSelection{selection.filter, selection.nodes}.query(source);
    auto settings = settingsFor(source, options);
    core::NewDatabase target(source.context(), options.target, options.overwrite, overwriteAdvice);
    target.create(settings);
    std::uint64_t points = 0;
    {
        qrb::Pointcloud& cloud = target.cloud();
        qrb::pointcloud::TransactionGuard transaction(cloud.transactions(), "Export", agentText(),
                                                      {}, settingsJson(database, options));
        if (options.changelog) {
            cloud.changelog().importFromDatabase(database.fileName());
        }
        ProgressLine progress("Copying to " + options.target);
        points = copyDatabase(source, cloud, selection,
                              [&](int percent) { progress.update(percent / 200.0); });
        transaction.commit({}, [&](int percent) { progress.update(0.5 + percent / 200.0); });
    }
    checkInterrupted();
    target.publish();
    answer(counted(points, "point") + " copied to \"" + options.target + "\".",
           [&](JsonText& json) {
               json.member("points", points);
               json.member("database", options.target);
           });
}

}  // namespace

void addCopyCommand(CLI::App& app, Invocation& invocation) {
    const auto options = std::make_shared<CopyOptions>();
    CLI::App* const command =
        app.add_subcommand("copy", "Copy what is selected into a new database");
    addDatabaseFile(*command, invocation);
    command->add_option("target", options->target, "The database to make")
        ->type_name("TARGET")
        ->required();
    addFilter(*command, options->filter);
    addNodes(*command, options->nodes, "Nodes of the point index whose points are copied");
    options->shape.add(*command);
    command
        ->add_option("-a,--attributes", options->attributes,
                     "Attributes to copy beside the primary one, or patterns such as 'tarvo.*' "
                     "(default: all)")
        ->type_name("NAMES")
        ->delimiter(',')
        ->allow_extra_args(false);
    CLI::Option* const items =
        command
            ->add_option("-m,--metadata", options->metaData,
                         "Metadata items to copy (default: all); their signatures stay behind")
            ->type_name("NAMES")
            ->delimiter(',')
            ->allow_extra_args(false);
    command->add_flag("--no-metadata", options->noMetaData, "Copy no metadata items")
        ->excludes(items);
    command->add_flag("--changelog", options->changelog,
                      "Let the changelog of the source stand before that of the copy");
    command
        ->add_option("--settings", options->settings,
                     "File with creation settings (JSON), but for the primary attribute "
                     "(default: as the source)")
        ->type_name("FILE");
    command->add_flag("--overwrite", options->overwrite, "Replace an existing database");
    command->footer(
        "Points keep their ids if tarvo.id is copied. The database appears when it is complete;\n"
        "a failure leaves none.\n"
        "\n" +
        std::string(shapeFooter) +
        "\n"
        "Examples:\n"
        "  qrbtool copy scan.qrbx ground.qrbx --filter \"tarvo.class == 2\" --changelog\n"
        "  qrbtool copy scan.qrbx thin.qrbx --bounds 0,0,100,100 --thin 0.1\n"
        "  qrbtool copy scan.qrbx bare.qrbx -a tarvo.id --no-metadata");
    command->callback([options, &invocation] {
        invocation.work = [options](Database& database) { copyTo(database, *options); };
    });
}

}  // namespace tarvo::cli
