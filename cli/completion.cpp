// qrbtool completion: scripts for shells.

#include "cli/completion.h"

#include "cli/commands.h"
#include "cli/output.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <memory>

namespace tarvo::cli {

namespace {

std::string completionFor(const std::string& shell, const CLI::App& app) {
    const DescribedCommand program = describe(app);
    const std::vector<DescribedOption> general = generalOptions(app);
    return shell == "bash"  ? bashCompletion(program, general)
           : shell == "zsh" ? zshCompletion(program, general)
                            : fishCompletion(program, general);
}

void addBelow(std::vector<const DescribedCommand*>& all, const DescribedCommand& command) {
    all.push_back(&command);
    for (const DescribedCommand& one : command.subcommands) {
        addBelow(all, one);
    }
}

}  // namespace

const char* kindName(ValueKind kind) {
    switch (kind) {
        case ValueKind::FILE:
            return "file";
        case ValueKind::FOLDER:
            return "folder";
        case ValueKind::ATTRIBUTES:
            return "attributes";
        case ValueKind::ASSIGNMENT:
            return "assignment";
        case ValueKind::ITEMS:
            return "items";
        case ValueKind::DEFAULTS:
            return "defaults";
        case ValueKind::SCHEMAS:
            return "schemas";
        default:
            return "choice";
    }
}

std::string quotedWord(const std::string& text) {
    std::string word = "'";
    for (const char c : text) {
        word += c == '\'' ? std::string("'\\''") : std::string(1, c);
    }
    return word + "'";
}

ValueKind argumentKind(const DescribedCommand& command) {
    ValueKind kind = ValueKind::NOTHING;
    for (const DescribedOption& argument : command.arguments) {
        if (argument.kind == ValueKind::FILE || kind == ValueKind::NOTHING ||
            (argument.kind == ValueKind::FOLDER && kind != ValueKind::FILE)) {
            kind = argument.kind;
        }
    }
    return kind;
}

std::string valueCases(const std::string& path, const std::vector<DescribedOption>& options,
                       const ChoicesStatement& choices) {
    std::string text;
    for (const DescribedOption& option : options) {
        if (option.kind == ValueKind::NOTHING || option.kind == ValueKind::TEXT) {
            continue;
        }
        text += "        ";
        for (std::size_t i = 0; i < option.names.size(); ++i) {
            text += (i == 0 ? "" : " | ") + path + quotedWord(" " + option.names[i]);
        }
        text += std::string(") kind=") + kindName(option.kind) + "; " + choices(option.choices) +
                " ;;\n";
    }
    return text;
}

std::vector<std::string> namesOf(const std::vector<DescribedCommand>& commands) {
    std::vector<std::string> names;
    for (const DescribedCommand& command : commands) {
        names.push_back(command.path.back());
    }
    return names;
}

std::vector<const DescribedCommand*> allCommands(const DescribedCommand& program) {
    std::vector<const DescribedCommand*> all;
    addBelow(all, program);
    return all;
}

void addCompletionCommand(CLI::App& app, Invocation& invocation) {
    const auto shell = std::make_shared<std::string>();
    CLI::App* const command =
        app.add_subcommand("completion", "Write what lets a shell complete command lines");
    command->add_option("shell", *shell, "The shell")
        ->required()
        ->check(CLI::IsMember({"bash", "zsh", "fish"}));
    command->footer(
        "Completes commands, options and what stands behind them: choices, files, file schemas,\n"
        "and the attributes and metadata items of the database that the command line names.\n"
        "Packages install it for all users.\n"
        "\n"
        "Examples:\n"
        "  qrbtool completion bash > ~/.local/share/bash-completion/completions/qrbtool\n"
        "  qrbtool completion fish > ~/.config/fish/completions/qrbtool.fish");
    command->callback([shell, &app, &invocation] {
        invocation.alone = [shell, &app] { printText(completionFor(*shell, app)); };
    });
}

}  // namespace tarvo::cli
