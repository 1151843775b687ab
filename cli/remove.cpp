// qrbtool remove: removes points.

#include "cli/commands.h"
#include "cli/errors.h"
#include "cli/idlist.h"
#include "cli/json.h"
#include "cli/number.h"
#include "cli/pointchanges.h"
#include "cli/terminal.h"
#include "cli/textfile.h"

#include <CLI/CLI.hpp>

#include <memory>

namespace tarvo::cli {

namespace {

using qrb::pointcloud::DataType;

struct RemoveOptions {
    std::string filter;
    std::string ids;
    bool all = false;
};

struct RemoveResult {
    std::uint64_t removed = 0;
    std::uint64_t missing = 0;
};

std::string removeSettings(const Database& database, const RemoveOptions& options) {
    JsonText json;
    json.beginObject();
    json.member("command", "remove");
    if (!options.filter.empty()) {
        json.member("filter", database.recordedFilter(options.filter));
    } else {
        json.member("ids", options.ids.empty() ? "all" : options.ids);
    }
    json.endObject();
    return json.compact();
}

// Ids are read and their points removed by turns, so that memory does not grow with their number.
// One query tells them all, which goes on reading what it began with: a command such as "find
// fullest leaf" would find another node among the points that are left.
RemoveResult removeBySelection(const Database& database, const std::string& filter) {
    const qrb::Pointcloud& cloud = database.cloud();
    ProgressLine progress("Removing from " + database.fileName());
    RemoveResult result;
    std::vector<std::uint64_t> ids(changeBatch);
    auto selection = cloud.select(filter);
    selection.bind(cloud.pointAttributes().pointIdName(), DataType::UINT64, ids.data(), 8);
    auto removal = cloud.remove();
    removal.bind(DataType::UINT64, ids.data(), 8);
    while (const std::uint32_t count = selection.next(changeBatch)) {
        if (removal.next(count) != count) {
            throw Failure("The database removed fewer points than it was given.");
        }
        result.removed += count;
        progress.update(selection.progress() / 100.0);
    }
    removal.close();
    return result;
}

// The largest id of a point; 0 without points.
std::uint64_t largestId(const qrb::Pointcloud& cloud) {
    const qrb::pointcloud::IndexNode root = cloud.stat().root();
    std::uint64_t largest = 0;
    if (root.pointCountTotal > 0) {
        cloud.stat().maximum(root.id, cloud.pointAttributes().pointIdName(), DataType::UINT64,
                             &largest, false);
    }
    return largest;
}

RemoveResult removeByIds(const Database& database, const std::string& text) {
    const qrb::Pointcloud& cloud = database.cloud();
    IdList list(text);
    const std::uint64_t named = list.count();
    list.limit(largestId(cloud));
    const std::uint64_t possible = list.count();
    ProgressLine progress("Removing from " + database.fileName());
    RemoveResult result;
    std::vector<std::uint64_t> ids(changeBatch);
    auto removal = cloud.remove();
    removal.bind(DataType::UINT64, ids.data(), 8);
    std::uint64_t done = 0;
    for (list.next(ids, changeBatch); !ids.empty(); list.next(ids, changeBatch)) {
        done += ids.size();
        result.removed += removal.next(static_cast<std::uint32_t>(ids.size()));
        progress.update(static_cast<double>(done) / static_cast<double>(possible));
    }
    removal.close();
    result.missing = named - result.removed;
    return result;
}

void runRemove(Database& database, const RemoveOptions& options) {
    RemoveResult result;
    const std::string ids = textOfArgument(options.ids);
    database.change({"Remove points", "", removeSettings(database, options)}, [&] {
        result = options.ids.empty() ? removeBySelection(database, options.filter)
                                     : removeByIds(database, ids);
    });
    printChanged(result.removed, result.missing, "removed");
}

}  // namespace

void addRemoveCommand(CLI::App& app, Invocation& invocation) {
    const auto options = std::make_shared<RemoveOptions>();
    CLI::App* const command = app.add_subcommand("remove", "Remove points");
    addDatabaseFile(*command, invocation);
    CLI::Option_group* const which = command->add_option_group("Which points");
    const CLI::Validator given = notEmpty("Give --all to remove all points.");
    which->add_option("-f,--filter", options->filter, "Expression that the points satisfy")
        ->type_name("EXPRESSION")
        ->check(given);
    which
        ->add_option("--ids", options->ids,
                     "Their ids, for example \"1,3-5\", @FILE or - for the standard input")
        ->type_name("LIST")
        ->check(given);
    which->add_flag("--all", options->all, "All points");
    which->require_option(1);
    command->footer(
        "Examples:\n"
        "  qrbtool remove scan.qrbx --filter \"tarvo.class == 7\"\n"
        "  qrbtool remove scan.qrbx --ids 1,3-5");
    command->callback([options, &invocation] {
        invocation.work = [options](Database& database) { runRemove(database, *options); };
    });
}

}  // namespace tarvo::cli
