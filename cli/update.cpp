// qrbtool update: gives points that exist other values.

#include "cli/assignment.h"
#include "cli/commands.h"
#include "cli/errors.h"
#include "cli/json.h"
#include "cli/options.h"
#include "cli/pointchanges.h"
#include "cli/terminal.h"
#include "cli/text.h"
#include "cli/updatetable.h"

#include <CLI/CLI.hpp>

#include <filesystem>
#include <memory>

namespace tarvo::cli {

namespace {

struct UpdateOptions {
    std::vector<std::string> assignments;
    std::string inverted;
    std::string table;  // CSV file
    std::string filter;
    std::string nodes;
    bool hasNodes = false;
    bool round = false;
};

std::string updateSettings(const Database& database, const UpdateOptions& options) {
    JsonText json;
    json.beginObject();
    json.member("command", "update");
    if (!options.assignments.empty()) {
        json.member("set", options.assignments);
    }
    if (!options.inverted.empty()) {
        json.member("invert", options.inverted);
    }
    if (!options.table.empty()) {
        json.member("from", std::filesystem::path(options.table).filename().string());
    }
    if (!options.filter.empty()) {
        json.member("filter", database.recordedFilter(options.filter));
    }
    if (options.hasNodes) {
        json.member("nodes", options.nodes);
    }
    if (options.round) {
        json.member("round", true);
    }
    json.endObject();
    return json.compact();
}

template <typename Query>
std::uint64_t changeSelection(Query& query, const std::string& fileName) {
    ProgressLine progress("Changing " + fileName);
    std::uint64_t total = 0;
    while (const std::uint32_t count = query.next(changeBatch)) {
        total += count;
        progress.update(query.progress() / 100.0);
    }
    query.close();
    return total;
}

std::uint64_t fillPoints(const Database& database, const UpdateOptions& options) {
    const qrb::Pointcloud& cloud = database.cloud();
    std::vector<Assignment> assignments;
    for (const std::string& text : options.assignments) {
        assignments.push_back(parseAssignment(cloud, text, options.round));
    }
    auto query = options.hasNodes ? cloud.fill(parseNodes(options.nodes), options.filter)
                                  : cloud.fill(options.filter);
    for (const Assignment& assignment : assignments) {
        query.bind(assignment.target, assignment.type, assignment.values.data());
    }
    return changeSelection(query, database.fileName());
}

std::uint64_t invertPoints(const Database& database, const UpdateOptions& options) {
    const qrb::Pointcloud& cloud = database.cloud();
    auto query = options.hasNodes ? cloud.invert(parseNodes(options.nodes), options.filter)
                                  : cloud.invert(options.filter);
    query.attribute(options.inverted);
    return changeSelection(query, database.fileName());
}

void runUpdate(Database& database, const UpdateOptions& options) {
    if (options.table == "-") {
        throw UsageError("A table is not read from standard input.",
                         "Write it to a file, and name that.");
    }
    std::uint64_t changed = 0;
    std::uint64_t missing = 0;
    database.change({"Update points", "", updateSettings(database, options)}, [&] {
        if (!options.table.empty()) {
            const TableResult result = updateFromTable(database, options.table, options.round);
            changed = result.changed;
            missing = result.rows - result.changed;
        } else if (!options.inverted.empty()) {
            changed = invertPoints(database, options);
        } else {
            changed = fillPoints(database, options);
        }
    });
    printChanged(changed, missing, "changed");
}

}  // namespace

void addUpdateCommand(CLI::App& app, Invocation& invocation) {
    const auto options = std::make_shared<UpdateOptions>();
    CLI::App* const command = app.add_subcommand("update", "Change values of points");
    addDatabaseFile(*command, invocation);
    CLI::Option_group* const what = command->add_option_group("What to change");
    what->add_option(
            "--set", options->assignments,
            "Give an attribute a value: NAME=VALUE, NAME[I]=VALUE for one element or "
            "NAME=VALUE,VALUE,... for all; a named value may stand by its name; may be given "
            "several times")
        ->type_name("ATTRIBUTE=VALUE")
        ->allow_extra_args(false);
    CLI::Option* const invert = what->add_option("--invert", options->inverted,
                                                 "Give an attribute with two values the other one")
                                    ->type_name("ATTRIBUTE");
    CLI::Option* const from =
        what->add_option("--from", options->table,
                         "CSV file with the values of points, one of whose columns is their id")
            ->type_name("CSV");
    what->require_option(1);
    addFilter(*command, options->filter)->excludes(from);
    CLI::Option* const nodes =
        addNodes(*command, options->nodes, "Leaves of the point index whose points are changed")
            ->excludes(from);
    command
        ->add_flag("--round", options->round,
                   "Store values that are finer than the resolution of an attribute rounded")
        ->excludes(invert);
    command->footer(
        "What is selected is settled before anything changes. Attributes must hold every value:\n"
        "none is cut off, and none rounded without --round. A table names a point by its id, and\n"
        "once; ids that no point has are passed over.\n"
        "\n"
        "Examples:\n"
        "  qrbtool update scan.qrbx --set tarvo.class=2 --filter \"tarvo.xyz[2] < 1\"\n"
        "  qrbtool update scan.qrbx --invert tarvo.selected\n"
        "  qrbtool select scan.qrbx -a tarvo.id,tarvo.class --format csv -o classes.csv\n"
        "  qrbtool update scan.qrbx --from classes.csv");
    command->callback([options, nodes, &invocation] {
        options->hasNodes = nodes->count() > 0;
        invocation.work = [options](Database& database) { runUpdate(database, *options); };
    });
}

}  // namespace tarvo::cli
