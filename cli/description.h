// The commands and their options as the parser knows them: what completion and manual are made of.
#pragma once

#include <string>
#include <vector>

namespace CLI {
class App;
}

namespace tarvo::cli {

// What stands behind an option, or as an argument of a command.
enum class ValueKind {
    NOTHING,
    TEXT,
    CHOICE,
    FILE,
    FOLDER,
    COMMAND,
    ATTRIBUTES,
    ASSIGNMENT,
    ITEMS,
    DEFAULTS,
    SCHEMAS
};

struct DescribedOption {
    std::vector<std::string> names;  // "-f", "--filter"; of an argument: "file"
    std::string value;               // "EXPRESSION"; empty: a flag
    ValueKind kind = ValueKind::NOTHING;
    std::vector<std::string> choices;  // CHOICE
    std::string description;
    std::string defaultText;
    bool isRequired = false;
    bool isSeveral = false;
};

struct DescribedCommand {
    std::vector<std::string> path;  // "metadata", "get"; empty: the program
    std::string description;
    std::string group;
    std::string usage;   // "qrbtool metadata FILE get [OPTIONS] name"
    std::string footer;  // what is told further, and examples
    std::vector<DescribedOption> arguments;
    std::vector<DescribedOption> options;  // its own
    std::vector<DescribedCommand> subcommands;
};

DescribedCommand describe(const CLI::App& app);
// The options that all commands have; for completion and manual they are no own ones of any
// command.
std::vector<DescribedOption> generalOptions(const CLI::App& app);

// Words with a blank between each.
std::string joinedWords(const std::vector<std::string>& words);

}  // namespace tarvo::cli
