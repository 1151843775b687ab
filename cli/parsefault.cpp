#include "cli/parsefault.h"

#include "cli/key.h"
#include "cli/wordorder.h"
#include "core/suggestion.h"

#include <CLI/CLI.hpp>

#include <algorithm>

namespace tarvo::cli {

namespace {

bool isOption(const std::string& word) {
    return word.size() > 1 && word.front() == '-' && word != "--";
}

// "--name" of "--name=value", "-n" of "-nvalue".
std::string optionName(const std::string& word) {
    return word.starts_with("--") ? word.substr(0, word.find('=')) : word.substr(0, 2);
}

void addOptionNames(std::vector<std::string>& names, const CLI::App& app) {
    for (const CLI::Option* const option : app.get_options()) {
        for (const std::string& name : option->get_lnames()) {
            names.push_back("--" + name);
        }
        for (const std::string& name : option->get_snames()) {
            names.push_back("-" + name);
        }
    }
    for (const CLI::App* const group : app.get_subcommands({})) {
        if (group->get_name().empty()) {
            addOptionNames(names, *group);
        }
    }
}

std::string adviceFor(const CLI::App& app) {
    const std::string path = pathOf(app);
    return app.get_parent() == nullptr
               ? "Run \"qrbtool help\" for the commands."
               : "Run \"qrbtool help" + path.substr(path.find(' ')) + "\" for its options.";
}

UsageError unknownOption(const std::vector<const CLI::App*>& commands, const std::string& word) {
    std::vector<std::string> names;
    for (auto command = commands.rbegin(); command != commands.rend(); ++command) {
        addOptionNames(names, **command);
    }
    const std::string name = optionName(word);
    return UsageError("\"" + pathOf(*commands.back()) + "\" has no option \"" + name + "\".",
                      core::suggestion(name, names) + adviceFor(*commands.back()));
}

// The commands that have a subcommand of this name.
std::vector<std::string> pathsOf(const CLI::App& app, const std::string& word) {
    std::vector<std::string> paths;
    for (const CLI::App* const command : app.get_subcommands({})) {
        for (const CLI::App* const action : command->get_subcommands({})) {
            if (action->get_name() == word) {
                paths.push_back(command->get_name() + " " + word);
            }
        }
    }
    return paths;
}

UsageError unknownSubcommand(const CLI::App& command, const std::string& word) {
    return UsageError("\"" + pathOf(command) + "\" has no subcommand \"" + word + "\".",
                      core::suggestion(word, subcommandNames(command)) + adviceFor(command));
}

// Empty: none is given, or the command takes none.
std::string fileNameGivenTo(const CLI::App& command) {
    const CLI::Option* const file = command.get_option_no_throw("file");
    return file == nullptr || file->count() == 0 ? "" : file->results().front();
}

UsageError unknownWord(const CLI::App& app, const CLI::App& command, const std::string& word) {
    const std::vector<std::string> names = subcommandNames(command);
    if (&command == &app) {
        std::string question = core::suggestion(word, names);
        if (const auto paths = pathsOf(app, word); !paths.empty()) {
            question = core::didYouMean(paths) + "\n";
        }
        return UsageError("There is no command \"" + word + "\".", question + adviceFor(app));
    }
    if (names.empty()) {
        return UsageError(
            "The word \"" + word + "\" is one too many for \"" + pathOf(command) + "\".",
            adviceFor(command));
    }
    // The word before it was taken for the database's name, which may be this one.
    const std::string file = fileNameGivenTo(command);
    return unknownSubcommand(command, !file.empty() && isNoFileName(file) ? file : word);
}

UsageError missingSubcommand(const CLI::App& command) {
    std::string list;
    for (const std::string& name : subcommandNames(command)) {
        list += (list.empty() ? "" : ", ") + name;
    }
    return UsageError("\"" + pathOf(command) + "\" needs a subcommand.",
                      "It is one of " + list + ".\n" + adviceFor(command));
}

UsageError otherFault(const CLI::App& command, const CLI::ParseError& error,
                      const std::vector<std::string>& words) {
    std::string text = withoutKeys(error.what(), words);
    if (!text.empty() && text.back() != '.') {
        text += '.';
    }
    return UsageError(text, adviceFor(command));
}

}  // namespace

std::vector<const CLI::App*> parsedCommands(const CLI::App& app) {
    std::vector<const CLI::App*> commands{&app};
    for (;;) {
        const auto& parsed = commands.back()->get_subcommands();
        const auto named = std::ranges::find_if(
            parsed, [](const CLI::App* one) { return !one->get_name().empty(); });
        if (named == parsed.end()) {
            return commands;
        }
        commands.push_back(*named);
    }
}

std::vector<std::string> subcommandNames(const CLI::App& app) {
    std::vector<std::string> names;
    for (const CLI::App* const command : app.get_subcommands({})) {
        if (!command->get_name().empty()) {
            names.push_back(command->get_name());
        }
    }
    return names;
}

std::string pathOf(const CLI::App& app) {
    return (app.get_parent() == nullptr ? "" : pathOf(*app.get_parent()) + " ") + app.get_name();
}

UsageError faultOf(const CLI::App& app, const CLI::ParseError& error,
                   const std::vector<std::string>& words) {
    const std::vector<const CLI::App*> commands = parsedCommands(app);
    const CLI::App& command = *commands.back();
    // What is missing may be what the unknown word was meant to be.
    const bool isRequired = dynamic_cast<const CLI::RequiredError*>(&error) != nullptr;
    if (isRequired || dynamic_cast<const CLI::ExtrasError*>(&error) != nullptr) {
        std::vector<std::string> unknown = app.remaining(true);
        std::erase(unknown, "--");
        // Behind an unknown command all is unknown.
        const auto end =
            commands.size() == 1 ? unknown.begin() + (unknown.empty() ? 0 : 1) : unknown.end();
        const auto option = std::find_if(unknown.begin(), end, isOption);
        if (option != end) {
            return unknownOption(commands, *option);
        }
        if (!unknown.empty()) {
            return unknownWord(app, command, withoutKeys(unknown.front(), words));
        }
    }
    const auto needsOne = [](const CLI::App& one) {
        return one.get_require_subcommand_min() > 0 && one.get_subcommands().empty();
    };
    return isRequired && needsOne(command) ? missingSubcommand(command)
                                           : otherFault(command, error, words);
}

void refuseMistypedSubcommand(const CLI::App& app) {
    const CLI::App& command = *parsedCommands(app).back();
    const std::string file = fileNameGivenTo(command);
    if (!file.empty() && isNoFileName(file) &&
        !core::nearest(file, subcommandNames(command)).empty()) {
        throw unknownSubcommand(command, file);
    }
}

}  // namespace tarvo::cli
