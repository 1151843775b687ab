#include "cli/commands.h"

#include "version.h"

#include <CLI/CLI.hpp>

namespace tarvo::cli {

namespace {

using AddCommand = void (*)(CLI::App&, Invocation&);

struct CommandEntry {
    AddCommand add;
    const char* group;
    bool withinTransaction;
};

constexpr const char* makeGroup = "Make databases";
constexpr const char* lookGroup = "Look at databases";
constexpr const char* pointsGroup = "Points";
constexpr const char* contentsGroup = "What goes with the points";
constexpr const char* historyGroup = "History and upkeep";
constexpr const char* pluginGroup = "Plugins";

constexpr CommandEntry entries[] = {
    {addSampleCommand, makeGroup, false},
    {addImportCommand, makeGroup, true},
    {addSchemaCommand, makeGroup, false},
    {addCopyCommand, makeGroup, false},
    {addMergeCommand, makeGroup, false},
    {addSplitCommand, makeGroup, false},
    {addInfoCommand, lookGroup, true},
    {addInspectCommand, lookGroup, true},
    {addValidateCommand, lookGroup, true},
    {addCheckCommand, lookGroup, false},
    {addDiffCommand, lookGroup, false},
    {addDefaultsCommand, lookGroup, false},
    {addSelectCommand, pointsGroup, true},
    {addExportCommand, pointsGroup, true},
    {addUpdateCommand, pointsGroup, true},
    {addRemoveCommand, pointsGroup, true},
    {addMetaDataCommand, contentsGroup, true},
    {addAttributesCommand, contentsGroup, true},
    {addIndexCommand, contentsGroup, true},
    {addLodCommand, contentsGroup, true},
    {addTransactionsCommand, historyGroup, false},
    {addChangelogCommand, historyGroup, true},
    {addFinalizeCommand, historyGroup, false},
    {addVacuumCommand, historyGroup, false},
    {addPluginCommand, pluginGroup, false},
};

}  // namespace

std::string agentText() {
    return "qrbtool " QRB_VERSION;
}

void addDatabaseFile(CLI::App& command, Invocation& invocation) {
    if (!invocation.onOpenDatabase) {
        // Not required for the parser, which would take the name of a subcommand for it.
        command.add_option("file", invocation.file, "The database")->type_name("FILE");
    }
}

void addCommands(CLI::App& app, Invocation& invocation) {
    for (const CommandEntry& entry : entries) {
        const std::size_t before = app.get_subcommands({}).size();
        entry.add(app, invocation);
        app.get_subcommands({}).at(before)->group(entry.group);
    }
}

void addCommandsWithinTransaction(CLI::App& app, Invocation& invocation) {
    for (const CommandEntry& entry : entries) {
        if (entry.withinTransaction) {
            entry.add(app, invocation);
        }
    }
}

}  // namespace tarvo::cli
