#include "cli/description.h"

#include "cli/manner.h"
#include "cli/parsefault.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <sstream>

namespace tarvo::cli {

namespace {

bool hasPart(const std::string& text, const char* part) {
    return text.find(part) != std::string::npos;
}

// What the names of values mean that the commands use.
ValueKind valueKindOf(const std::string& value) {
    constexpr std::pair<std::string_view, ValueKind> known[] = {
        {"NAMES", ValueKind::ATTRIBUTES},
        {"ATTRIBUTE", ValueKind::ATTRIBUTES},
        {"ITEM", ValueKind::ITEMS},
        {"ATTRIBUTE=VALUE", ValueKind::ASSIGNMENT},
        {"DEFAULT", ValueKind::DEFAULTS},
        {"SCHEMA", ValueKind::SCHEMAS},
        {"FOLDER", ValueKind::FOLDER},
        {"COMMAND", ValueKind::COMMAND},
        {"COMMAND [SUBCOMMAND]", ValueKind::COMMAND}};
    const auto* const found = std::ranges::find(known, std::string_view(value),
                                                [](const auto& one) { return one.first; });
    if (found != std::end(known)) {
        return found->second;
    }
    for (const char* const name :
         {"FILE", "OUT", "CSV", "TARGET", "INPUT", "AREA", "OTHER", "PROGRAM"}) {
        if (hasPart(value, name)) {
            return ValueKind::FILE;
        }
    }
    return ValueKind::TEXT;
}

// "TEXT:{a,b}" names choices.
std::vector<std::string> choicesOf(const std::string& type) {
    std::vector<std::string> choices;
    const std::size_t open = type.find('{');
    if (open != std::string::npos && type.back() == '}') {
        std::istringstream list(type.substr(open + 1, type.size() - open - 2));
        for (std::string choice; std::getline(list, choice, ',');) {
            choices.push_back(choice);
        }
    }
    return choices;
}

DescribedOption describeOption(const CLI::Option& option) {
    DescribedOption result;
    for (const std::string& name : option.get_snames()) {
        result.names.push_back("-" + name);
    }
    for (const std::string& name : option.get_lnames()) {
        result.names.push_back("--" + name);
    }
    if (option.get_positional()) {
        result.names = {option.get_name(true, false)};
    }
    result.description = option.get_description();
    std::ranges::replace(result.description, '\n', ' ');
    result.defaultText = option.get_default_str();
    result.isRequired = option.get_required();
    if (option.get_type_size() == 0 || option.get_items_expected_max() == 0) {
        return result;
    }
    const std::string type = option.get_type_name();
    result.choices = choicesOf(type);
    if (!result.choices.empty()) {
        result.kind = ValueKind::CHOICE;
        for (const std::string& choice : result.choices) {
            result.value += (result.value.empty() ? "" : "|") + choice;
        }
    } else {
        result.kind = valueKindOf(type);
        result.value = type;
    }
    result.isSeveral = option.get_expected_max() >= CLI::detail::expected_max_vector_size;
    return result;
}

void addOptions(DescribedCommand& command, const CLI::App& app) {
    for (const CLI::Option* const option : app.get_options()) {
        if (option->get_group() != generalGroup) {
            (option->get_positional() ? command.arguments : command.options)
                .push_back(describeOption(*option));
        }
    }
    for (const CLI::App* const group : app.get_subcommands({})) {
        if (group->get_name().empty()) {
            addOptions(command, *group);
        }
    }
}

std::string usageOf(const CLI::App& app) {
    std::string text =
        app.get_formatter()->make_help(&app, pathOf(app), CLI::AppFormatMode::Normal);
    constexpr std::string_view label = "Usage: ";
    const std::size_t begin = text.find(label);
    return begin == std::string::npos
               ? pathOf(app)
               : text.substr(begin + label.size(), text.find('\n', begin) - begin - label.size());
}

}  // namespace

DescribedCommand describe(const CLI::App& app) {
    DescribedCommand command;
    for (const CLI::App* one = &app; one->get_parent() != nullptr; one = one->get_parent()) {
        command.path.insert(command.path.begin(), one->get_name());
    }
    command.description = app.get_description();
    command.group = app.get_group();
    command.usage = usageOf(app);
    command.footer = app.get_footer();
    addOptions(command, app);
    for (const CLI::App* const one : app.get_subcommands({})) {
        if (!one->get_name().empty()) {
            command.subcommands.push_back(describe(*one));
        }
    }
    return command;
}

std::vector<DescribedOption> generalOptions(const CLI::App& app) {
    std::vector<DescribedOption> options;
    for (const CLI::Option* const option : app.get_options()) {
        if (option->get_group() == generalGroup) {
            options.push_back(describeOption(*option));
        }
    }
    return options;
}

std::string joinedWords(const std::vector<std::string>& words) {
    std::string text;
    for (const std::string& word : words) {
        text += (text.empty() ? "" : " ") + word;
    }
    return text;
}

}  // namespace tarvo::cli
