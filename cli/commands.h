// The commands of qrbtool: each adds itself, with its options, to the command line, and runs when
// the words of the command line name it.
#pragma once

#include "cli/manner.h"
#include "qrb/context.h"

#include <functional>
#include <string>

namespace CLI {
class App;
}

namespace tarvo::cli {

class Database;

// The program's name and version, as transactions carry it.
std::string agentText();

// What a parsed command line asks for: one of alone, run and work.
struct Invocation {
    Manner manner;
    std::function<void()> alone;                   // without a library
    std::function<void(const qrb::Context&)> run;  // with the library loaded
    std::function<void(Database&)> work;           // with the database of this name open
    std::string file;
    int failureCode = 1;  // what the program ends with where it fails
    // Set before commands are added: they work on a database that is open already, and name none.
    bool onOpenDatabase = false;
};

// Adds the name of the database to a command, unless it is open already.
void addDatabaseFile(CLI::App& command, Invocation& invocation);

// The whole command line: the options that all commands have, and the commands. All three must
// outlive the parsing. library: the file name that is asked for; empty: the default.
void describeProgram(CLI::App& app, Invocation& invocation, std::string& library);
// Those that may be part of a transaction. The invocation is one on an open database.
void addCommandsWithinTransaction(CLI::App& app, Invocation& invocation);

// Make databases.
void addSampleCommand(CLI::App& app, Invocation& invocation);
void addImportCommand(CLI::App& app, Invocation& invocation);
void addSchemaCommand(CLI::App& app, Invocation& invocation);
void addCopyCommand(CLI::App& app, Invocation& invocation);
void addMergeCommand(CLI::App& app, Invocation& invocation);
void addSplitCommand(CLI::App& app, Invocation& invocation);
// Look at them.
void addInfoCommand(CLI::App& app, Invocation& invocation);
void addInspectCommand(CLI::App& app, Invocation& invocation);
void addValidateCommand(CLI::App& app, Invocation& invocation);
void addCheckCommand(CLI::App& app, Invocation& invocation);
void addDiffCommand(CLI::App& app, Invocation& invocation);
void addDefaultsCommand(CLI::App& app, Invocation& invocation);
void addRenderCommand(CLI::App& app, Invocation& invocation);
// Points.
void addSelectCommand(CLI::App& app, Invocation& invocation);
void addExportCommand(CLI::App& app, Invocation& invocation);
void addExplainCommand(CLI::App& app, Invocation& invocation);
void addUpdateCommand(CLI::App& app, Invocation& invocation);
void addRemoveCommand(CLI::App& app, Invocation& invocation);
// What goes with the points.
void addMetaDataCommand(CLI::App& app, Invocation& invocation);
void addAttributesCommand(CLI::App& app, Invocation& invocation);
void addIndexCommand(CLI::App& app, Invocation& invocation);
void addLodCommand(CLI::App& app, Invocation& invocation);
// History and upkeep.
void addTransactionsCommand(CLI::App& app, Invocation& invocation);
void addChangelogCommand(CLI::App& app, Invocation& invocation);
void addFinalizeCommand(CLI::App& app, Invocation& invocation);
void addVacuumCommand(CLI::App& app, Invocation& invocation);
// Scripts.
void addPluginCommand(CLI::App& app, Invocation& invocation);
// About the program.
void addHelpCommand(CLI::App& app, Invocation& invocation);
void addCompletionCommand(CLI::App& app, Invocation& invocation);
void addManualCommand(CLI::App& app, Invocation& invocation);

}  // namespace tarvo::cli
