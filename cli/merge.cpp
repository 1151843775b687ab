// qrbtool merge: a new database with the points of several.

#include "exchange/database/merge.h"
#include "cli/answer.h"
#include "cli/commands.h"
#include "cli/database.h"
#include "cli/errors.h"
#include "cli/importinputs.h"
#include "cli/json.h"
#include "cli/output.h"
#include "cli/shapeoptions.h"
#include "cli/terminal.h"
#include "cli/texttable.h"
#include "core/creationsettings.h"
#include "core/newdatabase.h"
#include "files/identity.h"
#include "files/openfiles.h"
#include "qrb/error.h"

#include <CLI/CLI.hpp>

#include <filesystem>
#include <memory>

namespace tarvo::cli {

using namespace exchange;

namespace {

namespace fs = std::filesystem;

struct MergeCommand {
    std::vector<std::string> names;  // the databases
    std::string target;
    ShapeOptions shape;
    bool keepIds = false;
    bool crsAsIs = false;
    bool overwrite = false;
};

std::string settingsJson(const MergeCommand& command) {
    std::vector<std::string> names;
    for (const std::string& name : command.names) {
        names.push_back(fs::path(name).filename().string());
    }
    JsonText json;
    json.beginObject();
    json.member("command", "merge");
    json.member("sources", names);
    for (const auto& [name, given] :
         {std::pair{"keep_ids", command.keepIds}, {"crs_as_is", command.crsAsIs}}) {
        if (given) {
            json.member(name, true);
        }
    }
    command.shape.describe(json);
    json.endObject();
    return json.compact();
}

void refuseTwice(const std::vector<std::string>& names) {
    for (std::size_t i = 0; i < names.size(); ++i) {
        for (std::size_t k = 0; k < i; ++k) {
            if (files::sameFile(names[k], names[i])) {
                throw UsageError("\"" + names[k] + "\" and \"" + names[i] +
                                 "\" are the same database.");
            }
        }
    }
}

std::unique_ptr<Database> opened(const qrb::Context& context, const std::string& name) {
    try {
        return std::make_unique<Database>(context, name);
    } catch (const qrb::Error&) {
        const std::uint64_t limit = files::exhaustedLimit();
        if (limit == 0) {
            throw;
        }
        throw Failure(
            "\"" + name +
                "\" can't be opened beside the databases before it: a program "
                "may have " +
                std::to_string(limit) + " files open here.",
            "Raise that limit (\"ulimit -n\"), or merge some of them first, and then what "
            "was merged.");
    }
}

void runMerge(const qrb::Context& context, const MergeCommand& command) {
    const auto shaper = shaperOf(command.shape.shape());
    refuseAsInput(command.target, command.names);
    refuseTwice(command.names);
    std::vector<std::unique_ptr<Database>> databases;
    std::vector<database::MergeInput> inputs;
    files::allowManyOpenFiles();
    for (const std::string& name : command.names) {
        databases.push_back(opened(context, name));
        inputs.push_back({&databases.back()->cloud(), name});
    }
    database::MergePlan plan = database::planMerge(inputs, command.crsAsIs);
    auto settings = core::creationSettings(databases.front()->cloud())
                        .value_or(qrb::pointcloud::CreateSettings(context));
    settings.primaryAttribute = plan.primary;
    core::NewDatabase target(context, command.target, command.overwrite, overwriteAdvice);
    target.create(settings);
    std::uint64_t points = 0;
    {
        qrb::Pointcloud& cloud = target.cloud();
        qrb::pointcloud::TransactionGuard transaction(cloud.transactions(), "Merge", agentText(),
                                                      {}, settingsJson(command));
        points = mergeInto(cloud, inputs, plan, {command.keepIds, shaper}, importProgress());
        note(plan.origin.notes);
        ProgressLine progress("Writing " + command.target);
        transaction.commit({}, [&](int percent) { progress.update(percent / 100.0); });
    }
    checkInterrupted();
    target.publish();
    answer(counted(points, "point") + " of " + counted(inputs.size(), "database") +
               " merged into \"" + command.target + "\".",
           [&](JsonText& json) {
               json.member("points", points);
               json.member("sources", command.names);
               json.member("database", command.target);
           });
}

}  // namespace

void addMergeCommand(CLI::App& app, Invocation& invocation) {
    const auto options = std::make_shared<MergeCommand>();
    CLI::App* const command =
        app.add_subcommand("merge", "Put the points of several databases into a new one");
    command->add_option("files", options->names, "The databases; then the one to make")
        ->type_name("FILE... TARGET")
        ->required();
    command->add_flag("--keep-ids", options->keepIds,
                      "Let points keep their ids, none of which may occur twice");
    command->add_flag("--crs-as-is", options->crsAsIs,
                      "Take coordinates of different reference systems, and times of different\n"
                      "bases, as they are");
    options->shape.add(*command);
    command->add_flag("--overwrite", options->overwrite, "Replace an existing database");
    command->footer(
        "The target has the attributes of all, with definitions that hold every value of each;\n"
        "what a database lacks gets the default value. Attributes that don't fit together, by\n"
        "their units or invalid values for example, are refused. Metadata items are those of the\n"
        "first database, then of the others; one of a name that is taken by another content gets\n"
        "a number behind it. Signatures stay behind. Settings and primary attribute are those of\n"
        "the first. The database appears when it is complete; a failure leaves none.\n"
        "\n" +
        std::string(shapeFooter) +
        "\n"
        "Examples:\n"
        "  qrbtool merge north.qrbx south.qrbx both.qrbx\n"
        "  qrbtool merge tile_*.qrbx whole.qrbx --keep-ids\n"
        "  qrbtool merge strip1.qrbx strip2.qrbx even.qrbx --thin 0.05");
    command->callback([options, &invocation] {
        std::vector<std::string>& names = options->names;
        if (names.size() < 3) {
            throw CLI::ValidationError("files", "two databases and the one to make are needed");
        }
        options->target = names.back();
        names.pop_back();
        invocation.run = [options](const qrb::Context& context) { runMerge(context, *options); };
    });
}

}  // namespace tarvo::cli
