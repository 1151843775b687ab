#include "cli/completion.h"

#include <algorithm>

namespace tarvo::cli {

namespace {

constexpr const char* zshFunctions = R"SCRIPT(
# The names in the first column of what the program tells, within two seconds or not at all.
_qrbtool_told() {
    local -a limit
    whence -p timeout >/dev/null && limit=(timeout -s KILL 2)
    names=(${(f)"$($limit "$words[1]" "$@" 2>/dev/null </dev/null | sed '1d; s/  .*//; / /d')"})
}

# The names of a kind: of the first database among the words, or of the program.
_qrbtool_names() {
    local file
    case $1 in
        schemas) _qrbtool_told schema list; return ;;
        defaults) _qrbtool_told defaults attributes; return ;;
    esac
    for file in "${(@Q)words[2,-1]}"; do
        if [[ -f $file ]]; then
            case $1 in
                items) _qrbtool_told metadata "$file" list ;;
                *) _qrbtool_told attributes "$file" list ;;
            esac
            return
        fi
    done
}

# Offers what is of a kind.
_qrbtool_offer() {
    case $1 in
        file) _files ;;
        folder) _files -/ ;;
        attributes)
            _qrbtool_names attributes
            compset -P '*,'
            compadd -S '' -a names
            ;;
        assignment)
            compset -P '*=' && return
            _qrbtool_names attributes
            compadd -S '=' -a names
            ;;
        items | defaults)
            _qrbtool_names "$1"
            compadd -a names
            ;;
        schemas)
            _qrbtool_names schemas
            compadd -a names
            _files
            ;;
        *) (( $#choices )) && compadd -a choices ;;
    esac
}

_qrbtool() {
    local place='' kind=choice value='' arguments='' i before
    local -a commands options valued choices names
    _qrbtool_describe ''
    for ((i = 2; i < CURRENT; i++)); do
        if [[ $words[i] == -* ]]; then
            (( ${valued[(Ie)$words[i]]} )) && (( i++ ))
        elif (( ${commands[(I)${words[i]}:*]} )); then
            place+=${place:+ }$words[i]
            _qrbtool_describe "$place"
        fi
    done
    before=$words[CURRENT-1]
    if [[ $PREFIX == --*=* ]]; then
        before=${PREFIX%%=*}
        compset -P '*='
        value=1
    fi
    if [[ -n $value ]] || (( ${valued[(Ie)$before]} )); then
        _qrbtool_value "$place" "$before"
        _qrbtool_offer "$kind"
        return
    fi
    if [[ $PREFIX == -* ]]; then
        _describe -o option options
        return
    fi
    (( $#commands )) && _describe command commands
    _qrbtool_offer "$arguments"
}

if [[ $funcstack[1] == _qrbtool ]]; then
    _qrbtool "$@"
else
    compdef _qrbtool qrbtool
fi
)SCRIPT";

// "NAME:DESCRIPTION" as one word.
std::string describedWord(std::string name, const std::string& description) {
    for (std::size_t at = 0; (at = name.find(':', at)) != std::string::npos; at += 2) {
        name.insert(at, 1, '\\');
    }
    return quotedWord(name + ":" + description);
}

std::string describedCommands(const std::vector<DescribedCommand>& commands) {
    std::string text;
    for (const DescribedCommand& command : commands) {
        text += "\n                " + describedWord(command.path.back(), command.description);
    }
    return text;
}

std::string zshWordsOf(const DescribedCommand& program, const DescribedCommand& command,
                       const std::vector<DescribedOption>& general) {
    std::string options;
    std::string valued;
    std::vector<std::string> known;
    for (const auto* const list : {&command.options, &general}) {
        for (const DescribedOption& option : *list) {
            for (const std::string& name : option.names) {
                if (std::ranges::find(known, name) != known.end()) {
                    continue;
                }
                known.push_back(name);
                options += "\n                " + describedWord(name, option.description);
                valued += option.value.empty() ? "" : " " + name;
            }
        }
    }
    std::string commands = describedCommands(
        argumentKind(command) == ValueKind::COMMAND ? program.subcommands : command.subcommands);
    for (const DescribedOption& argument : command.arguments) {
        for (const std::string& choice : argument.choices) {
            commands += " " + describedWord(choice, argument.description);
        }
    }
    return "        " + quotedWord(joinedWords(command.path)) + ")\n            commands=(" +
           commands + ")\n            options=(" + options + ")\n            valued=(" + valued +
           ")\n            arguments=" + kindName(argumentKind(command)) + "\n            ;;\n";
}

std::string zshChoices(const std::vector<std::string>& choices) {
    return "choices=(" + joinedWords(choices) + ")";
}

}  // namespace

std::string zshCompletion(const DescribedCommand& program,
                          const std::vector<DescribedOption>& general) {
    std::string words;
    std::string values;
    for (const DescribedCommand* const command : allCommands(program)) {
        words += zshWordsOf(program, *command, general);
        values += valueCases(quotedWord(joinedWords(command->path)), command->options, zshChoices);
    }
    values += valueCases("*", general, zshChoices);
    return "#compdef qrbtool\n"
           "# zsh completion for qrbtool, written by \"qrbtool completion zsh\".\n"
           "\n"
           "# The words that may follow a command.\n"
           "_qrbtool_describe() {\n"
           "    case $1 in\n" +
           words +
           "        *) commands=() arguments=choice ;;\n"
           "    esac\n"
           "}\n"
           "\n"
           "# What stands behind an option of a command.\n"
           "_qrbtool_value() {\n"
           "    kind=choice choices=()\n"
           "    case \"$1 $2\" in\n" +
           values +
           "    esac\n"
           "}\n" +
           zshFunctions;
}

}  // namespace tarvo::cli
