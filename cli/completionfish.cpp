#include "cli/completion.h"

#include <algorithm>
#include <set>

namespace tarvo::cli {

namespace {

constexpr const char* fishFunctions = R"SCRIPT(
# Whether the words before the cursor name this command, and no subcommand of it.
function __qrbtool_at
    set -l place
    set -l skip 0
    for word in (commandline -opc)[2..-1]
        if test $skip = 1
            set skip 0
        else if contains -- $word $__qrbtool_valued
            set skip 1
        else if not string match -q -- '-*' $word; and contains -- (string join ' ' $place $word) $__qrbtool_commands
            set -a place $word
        end
    end
    test "$argv[1]" = "$place"
end

# The names in the first column of what the program tells, within two seconds or not at all.
function __qrbtool_told
    set -l limit
    type -q timeout; and set limit timeout -s KILL 2
    $limit (commandline -opc)[1] $argv 2>/dev/null </dev/null | sed '1d; s/  .*//; / /d'
end

# The names of a kind in the first database among the words.
function __qrbtool_names
    for word in (commandline -opc)[2..-1]
        if test -f "$word"
            __qrbtool_told $argv[1] $word list
            return
        end
    end
end

# The names of attributes, behind those before a comma, or before a sign.
function __qrbtool_attributes
    set -l front (string match -r '^.*,|^' -- (commandline -ct))
    for name in (__qrbtool_names attributes)
        echo $front$name"$argv"
    end
end

)SCRIPT";

// In single quotes fish knows \' and \\ only.
std::string fishWord(const std::string& text) {
    std::string word = "'";
    for (const char c : text) {
        word += c == '\'' || c == '\\' ? std::string("\\") + c : std::string(1, c);
    }
    return word + "'";
}

// Empty: there are no names of this kind.
std::string namesCall(ValueKind kind) {
    switch (kind) {
        case ValueKind::ATTRIBUTES:
            return "(__qrbtool_attributes)";
        case ValueKind::ASSIGNMENT:
            return "(__qrbtool_attributes =)";
        case ValueKind::ITEMS:
            return "(__qrbtool_names metadata)";
        case ValueKind::DEFAULTS:
            return "(__qrbtool_told defaults attributes)";
        case ValueKind::SCHEMAS:
            return "(__qrbtool_told schema list)";
        default:
            return "";
    }
}

std::string valueWords(const DescribedOption& option) {
    switch (option.kind) {
        case ValueKind::NOTHING:
            return "";
        case ValueKind::FILE:
            return " -r -F";
        case ValueKind::FOLDER:
            return " -x -a '(__fish_complete_directories)'";
        case ValueKind::ATTRIBUTES:
        case ValueKind::ASSIGNMENT:
        case ValueKind::ITEMS:
        case ValueKind::DEFAULTS:
            return " -x -a " + fishWord(namesCall(option.kind));
        case ValueKind::SCHEMAS:
            return " -r -F -a " + fishWord(namesCall(option.kind));
        default:
            return " -x" +
                   (option.choices.empty() ? "" : " -a " + fishWord(joinedWords(option.choices)));
    }
}

std::string optionLines(const std::string& front, const std::vector<DescribedOption>& options) {
    std::string text;
    for (const DescribedOption& option : options) {
        text += front;
        for (const std::string& name : option.names) {
            text += name.starts_with("--") ? " -l " + name.substr(2) : " -s " + name.substr(1);
        }
        text += valueWords(option) + " -d " + fishWord(option.description) + "\n";
    }
    return text;
}

// The arguments of a command that are names of a list; behind one nothing more is offered.
std::vector<std::string> chosenWords(const DescribedCommand& program,
                                     const DescribedCommand& command) {
    std::vector<std::string> words;
    if (argumentKind(command) == ValueKind::COMMAND) {
        words = namesOf(program.subcommands);
    }
    for (const DescribedOption& argument : command.arguments) {
        words.insert(words.end(), argument.choices.begin(), argument.choices.end());
    }
    return words;
}

std::string commandLines(const DescribedCommand& program, const DescribedCommand& command) {
    const std::string front =
        "complete -c qrbtool -n " + fishWord("__qrbtool_at " + fishWord(joinedWords(command.path)));
    std::string text;
    const ValueKind kind = argumentKind(command);
    for (const DescribedCommand& one :
         kind == ValueKind::COMMAND ? program.subcommands : command.subcommands) {
        text += front + " -a " + one.path.back() + " -d " + fishWord(one.description) + "\n";
    }
    for (const DescribedOption& argument : command.arguments) {
        text += argument.choices.empty()
                    ? ""
                    : front + " -a " + fishWord(joinedWords(argument.choices)) + "\n";
    }
    if (kind == ValueKind::FILE) {
        text += front + " -F\n";
    } else if (kind == ValueKind::FOLDER) {
        text += front + " -a '(__fish_complete_directories)'\n";
    } else if (const std::string call = namesCall(kind); !call.empty()) {
        text += front + " -a " + fishWord(call) + "\n";
    }
    return text + optionLines(front, command.options);
}

}  // namespace

std::string fishCompletion(const DescribedCommand& program,
                           const std::vector<DescribedOption>& general) {
    std::set<std::string> valued;
    std::set<std::string> flags;
    std::string paths;
    std::string lines;
    for (const DescribedCommand* const command : allCommands(program)) {
        for (const auto* const list : {&command->options, &general}) {
            for (const DescribedOption& option : *list) {
                (option.value.empty() ? flags : valued)
                    .insert(option.names.begin(), option.names.end());
            }
        }
        paths += command->path.empty() ? "" : " " + fishWord(joinedWords(command->path));
        for (const std::string& word : chosenWords(program, *command)) {
            paths += " " + fishWord(joinedWords(command->path) + " " + word);
        }
        lines += commandLines(program, *command);
    }
    std::string valuedWords;
    for (const std::string& name : valued) {
        // What is a flag with some commands is taken for one.
        valuedWords += flags.contains(name) ? "" : " " + name;
    }
    return "# fish completion for qrbtool, written by \"qrbtool completion fish\".\n"
           "\n"
           "set -g __qrbtool_commands" +
           paths + "\nset -g __qrbtool_valued" + valuedWords + "\n" + fishFunctions +
           "complete -c qrbtool -f\n" + optionLines("complete -c qrbtool", general) + lines;
}

}  // namespace tarvo::cli
