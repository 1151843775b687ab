// qrbtool manual: manual pages.

#include "cli/commands.h"
#include "cli/completion.h"
#include "cli/errors.h"
#include "cli/output.h"
#include "cli/roff.h"
#include "core/suggestion.h"

#include <CLI/CLI.hpp>

#include <memory>
#include <string>

namespace tarvo::cli {

namespace {

struct ManualOptions {
    std::string command;  // empty: the program
    bool names = false;
};

std::string pageOf(const CLI::App& app, const std::string& name) {
    const DescribedCommand program = describe(app);
    if (name.empty()) {
        return programPage(program, generalOptions(app));
    }
    for (const DescribedCommand& command : program.subcommands) {
        if (command.path.back() == name) {
            return commandPage(command);
        }
    }
    throw UsageError("There is no command \"" + name + "\".",
                     core::suggestion(name, namesOf(program.subcommands)) +
                         "Run \"qrbtool help\" for the commands.");
}

std::string pageNames(const CLI::App& app) {
    std::string text;
    for (const std::string& name : namesOf(describe(app).subcommands)) {
        text += name + "\n";
    }
    return text;
}

}  // namespace

void addManualCommand(CLI::App& app, Invocation& invocation) {
    const auto options = std::make_shared<ManualOptions>();
    CLI::App* const command = app.add_subcommand("manual", "Write a manual page, for man");
    command->add_option("command", options->command, "The command (default: the program)")
        ->type_name("COMMAND");
    command->add_flag("--names", options->names, "Write the names of the commands with a page");
    command->footer(
        "Packages install the pages: \"man qrbtool\", \"man qrbtool-import\".\n"
        "\n"
        "Examples:\n"
        "  qrbtool manual | man -l -\n"
        "  qrbtool manual import > qrbtool-import.1");
    command->callback([options, &app, &invocation] {
        invocation.alone = [options, &app] {
            printText(options->names ? pageNames(app) : pageOf(app, options->command));
        };
    });
}

}  // namespace tarvo::cli
