// qrbtool transactions run: several commands as one transaction.

#include "cli/commands.h"
#include "cli/database.h"
#include "cli/errors.h"
#include "cli/json.h"
#include "cli/key.h"
#include "cli/output.h"
#include "cli/parsefault.h"
#include "cli/terminal.h"
#include "cli/transactions.h"
#include "cli/words.h"

#include <CLI/CLI.hpp>

#include <memory>
#include <optional>

namespace tarvo::cli {

namespace {

struct RunOptions {
    std::string first;  // the file, or a command if the file stands before "run"
    std::vector<std::string> commands;
    std::string title;
    std::string comment;
    KeyOptions key;
};

// One command of the transaction, parsed.
struct Step {
    std::string line;  // to be told and recorded: without keys
    Invocation invocation;
};

// Words as one line that splits into them again, but for keys, which must get neither into the file
// nor onto the screen.
std::string joinWords(std::vector<std::string> words) {
    std::string line;
    for (std::size_t i = 0; i < words.size(); ++i) {
        std::string& word = words[i];
        if (i > 0 && words[i - 1] == "--key") {
            word = "***";
        } else if (word.rfind("--key=", 0) == 0) {
            word = "--key=***";
        }
        const bool plain = !word.empty() && word.find_first_of(" \t\r\n'\"\\") == std::string::npos;
        std::string quoted = word;
        for (std::size_t at = 0; !plain && (at = quoted.find('\'', at)) != std::string::npos;) {
            quoted.replace(at, 1, "'\\''");
            at += 4;
        }
        line += (line.empty() ? "" : " ") + (plain ? word : "'" + quoted + "'");
    }
    return line;
}

std::unique_ptr<Step> parseStep(const std::string& text) {
    const std::vector<std::string> words = splitWords(text);
    auto step = std::make_unique<Step>();
    step->line = joinWords(words);
    step->invocation.onOpenDatabase = true;
    CLI::App app("", "qrbtool");
    app.set_help_flag();
    app.require_subcommand(1);
    app.fallthrough();
    addMannerOptions(app, step->invocation.manner);
    addCommandsWithinTransaction(app, step->invocation);
    try {
        app.parse(std::vector<std::string>(words.rbegin(), words.rend()));
    } catch (const CLI::ParseError& error) {
        std::string names;
        for (const std::string& name : subcommandNames(app)) {
            names += (names.empty() ? "" : ", ") + name;
        }
        const UsageError fault = faultOf(app, error, words);
        throw UsageError("The command \"" + step->line + "\" can't be understood: " + fault.what(),
                         fault.details() +
                             "\nIt is a command without the name of the database, one of " + names +
                             ".");
    }
    return step;
}

void runSteps(Database& database, const RunOptions& options,
              const std::vector<std::unique_ptr<Step>>& steps) {
    JsonText settings;
    settings.beginObject();
    settings.key("commands");
    settings.beginArray();
    for (const auto& step : steps) {
        settings.value(step->line);
    }
    settings.endArray();
    settings.endObject();
    std::optional<AnswerList> answers;
    if (manner().json) {
        answers.emplace("{\"answers\": [\n");
    }
    const std::uint32_t id = database.changeTogether(
        {options.title, options.comment, settings.compact(), options.key.signature()}, [&] {
            for (const auto& step : steps) {
                checkInterrupted();
                const MannerScope scope(added(manner(), step->invocation.manner));
                try {
                    step->invocation.work(database);
                } catch (...) {
                    note("Nothing is changed: \"" + step->line + "\" failed.");
                    throw;
                }
            }
        });
    if (answers) {
        answers->close("],\n\"transaction\": " + (id == 0 ? "null" : std::to_string(id)) + "}\n");
        return;
    }
    print(id == 0 ? "Nothing is changed, and no transaction committed.\n"
                  : "Transaction " + std::to_string(id) + " is committed.\n");
}

}  // namespace

void addTransactionRunCommand(CLI::App& command, Invocation& invocation) {
    const auto options = std::make_shared<RunOptions>();
    CLI::App* const run =
        command.add_subcommand("run", "Run commands as one transaction: all of them or none");
    run->add_option("file", options->first, "The database")->type_name("FILE")->required();
    run->add_option("commands", options->commands,
                    "Commands as on the command line of qrbtool, but without the database; each is "
                    "one argument")
        ->type_name("\"COMMAND\"");
    run->add_option("--title", options->title, "Title of the transaction")
        ->type_name("TEXT")
        ->required();
    run->add_option("--comment", options->comment, "Comments on it")->type_name("TEXT");
    options->key.add(*run, false);
    run->callback([options, &invocation] {
        if (invocation.file.empty()) {
            invocation.file = options->first;
        } else {
            options->commands.insert(options->commands.begin(), options->first);
        }
        if (options->commands.empty()) {
            throw CLI::RequiredError("A command to run");
        }
        const auto steps = std::make_shared<std::vector<std::unique_ptr<Step>>>();
        invocation.work = [options, steps](Database& database) {
            runSteps(database, *options, *steps);
        };
        for (const std::string& text : options->commands) {
            steps->push_back(parseStep(text));
        }
    });
}

}  // namespace tarvo::cli
