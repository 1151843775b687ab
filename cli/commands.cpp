#include "cli/commands.h"

#include "cli/help.h"
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
constexpr const char* programGroup = "About the program";

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
    {addRenderCommand, lookGroup, true},
    {addDefaultsCommand, lookGroup, false},
    {addSelectCommand, pointsGroup, true},
    {addExportCommand, pointsGroup, true},
    {addExplainCommand, pointsGroup, true},
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
    {addHelpCommand, programGroup, false},
    {addCompletionCommand, programGroup, false},
    {addManualCommand, programGroup, false},
};

constexpr const char* programFooter =
    "Examples:\n"
    "  qrbtool sample -n 1000000 scan.qrbx\n"
    "  qrbtool import flight.las flight.qrbx\n"
    "  qrbtool info flight.qrbx\n"
    "  qrbtool select flight.qrbx --filter \"tarvo.class == 2\" --count\n"
    "  qrbtool select flight.qrbx --format csv -o points.csv\n"
    "  qrbtool update flight.qrbx --set tarvo.class=2 --filter \"tarvo.xyz[2] < 1\"\n"
    "\n"
    "\"qrbtool help COMMAND\" tells more. The program ends with 0 for success, 1 for a failure or\n"
    "the answer \"no\" (a file that does not agree with its schema, a signature that is not\n"
    "valid, two databases that differ), and 2 for a wrong command line, or where diff fails.";

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

void describeProgram(CLI::App& app, Invocation& invocation, std::string& library) {
    app.set_help_flag("-h,--help", "Tell what the command does");
    app.set_version_flag("--version", agentText(), "Tell the version of the program");
    // A command line without a command is answered with the help.
    app.require_subcommand(0, 1);
    app.fallthrough();
    app.formatter(helpFormatter());
    addMannerOptions(app, invocation.manner);
    addCacheOption(app, invocation.manner);
    app.add_option("--library", library, "Database library to work with (default: qrblib)")
        ->type_name("FILE")
        ->group(generalGroup);
    for (const CommandEntry& entry : entries) {
        const std::size_t before = app.get_subcommands({}).size();
        entry.add(app, invocation);
        app.get_subcommands({}).at(before)->group(entry.group);
    }
    // Now, so that the commands don't take it over.
    app.footer(programFooter);
}

void addCommandsWithinTransaction(CLI::App& app, Invocation& invocation) {
    for (const CommandEntry& entry : entries) {
        if (entry.withinTransaction) {
            entry.add(app, invocation);
        }
    }
}

}  // namespace tarvo::cli
