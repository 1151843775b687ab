// qrbtool help: what the commands do, and their options.

#include "cli/help.h"

#include "cli/commands.h"
#include "cli/errors.h"
#include "cli/manner.h"
#include "cli/output.h"
#include "cli/parsefault.h"
#include "core/suggestion.h"

#include <CLI/CLI.hpp>

#include <memory>
#include <string>
#include <vector>

namespace tarvo::cli {

namespace {

class HelpFormatter : public CLI::Formatter {
public:
    HelpFormatter() {
        column_width(30);
        label("Positionals", "Arguments");
    }

    std::string make_option_usage(const CLI::Option* option) const override {
        return option->get_name() == "file" ? "FILE" : CLI::Formatter::make_option_usage(option);
    }
    std::string make_usage(const CLI::App* app, std::string name) const override {
        const CLI::App* const parent = app->get_parent();
        if (parent != nullptr && parent->get_option_no_throw("file") != nullptr &&
            app->get_option_no_throw("file") == nullptr) {
            const std::size_t last = name.rfind(' ');
            name.insert(last == std::string::npos ? 0 : last, " FILE");
        }
        return CLI::Formatter::make_usage(app, name);
    }
    std::string make_subcommands(const CLI::App* app, CLI::AppFormatMode mode) const override {
        return CLI::Formatter::make_subcommands(app, mode) + generalOptions(app);
    }

private:
    std::string generalOptions(const CLI::App* app) const {
        if (app->get_parent() == nullptr || app->get_name().empty()) {
            return "";
        }
        while (app->get_parent() != nullptr) {
            app = app->get_parent();
        }
        return "\n" + make_group(generalGroup, false, app->get_options([](const auto* option) {
                   return option->get_group() == generalGroup;
               }));
    }
};

}  // namespace

std::shared_ptr<CLI::FormatterBase> helpFormatter() {
    return std::make_shared<HelpFormatter>();
}

std::string helpOf(const CLI::App& command) {
    std::string text =
        command.get_formatter()->make_help(&command, pathOf(command), CLI::AppFormatMode::Normal);
    for (std::size_t at = 0; (at = text.find("\n\n\n", at)) != std::string::npos;) {
        text.erase(at, 1);
    }
    return text;
}

const CLI::App& commandOf(const CLI::App& app, const std::vector<std::string>& words) {
    const CLI::App* command = &app;
    for (const std::string& word : words) {
        const auto named = command->get_subcommands(
            [&word](const CLI::App* one) { return !word.empty() && one->get_name() == word; });
        if (named.empty()) {
            throw UsageError(command == &app ? "There is no command \"" + word + "\"."
                                             : "\"" + pathOf(*command) + "\" has no subcommand \"" +
                                                   word + "\".",
                             core::suggestion(word, subcommandNames(*command)) +
                                 "Run \"qrbtool help\" for the commands.");
        }
        command = named.front();
    }
    return *command;
}

void addHelpCommand(CLI::App& app, Invocation& invocation) {
    const auto words = std::make_shared<std::vector<std::string>>();
    CLI::App* const command = app.add_subcommand("help", "Tell what a command does");
    command
        ->add_option("command", *words, "The command, and its subcommand (default: all commands)")
        ->type_name("COMMAND [SUBCOMMAND]");
    command->footer(
        "Examples:\n"
        "  qrbtool help\n"
        "  qrbtool help import\n"
        "  qrbtool help metadata sign");
    command->callback([words, &app, &invocation] {
        invocation.alone = [words, &app] { printText(helpOf(commandOf(app, *words))); };
    });
}

}  // namespace tarvo::cli
