#include "cli/completion.h"

#include <algorithm>

namespace tarvo::cli {

namespace {

constexpr const char* bashFunctions = R"SCRIPT(
# The names in the first column of what the program tells, within two seconds or not at all.
_qrbtool_told() {
    local limit
    limit=$(command -v timeout) && limit+=' -s KILL 2'
    $limit "$@" 2>/dev/null </dev/null | sed '1d; s/  .*//; / /d'
}

# The first file among the words.
_qrbtool_database() {
    local file
    for file in "${COMP_WORDS[@]:1:COMP_CWORD-1}"; do
        file=${file//\\/}
        [[ -f $file ]] && printf '%s\n' "$file" && return
    done
    return 1
}

# The names of a kind: of the database among the words, or of the program.
_qrbtool_names() {
    local file
    case $2 in
        schemas) _qrbtool_told "$1" schema list ;;
        defaults) _qrbtool_told "$1" defaults attributes ;;
        items) file=$(_qrbtool_database) && _qrbtool_told "$1" metadata "$file" list ;;
        *) file=$(_qrbtool_database) && _qrbtool_told "$1" attributes "$file" list ;;
    esac
}

_qrbtool() {
    local word=${COMP_WORDS[COMP_CWORD]} previous=${COMP_WORDS[COMP_CWORD-1]}
    local path='' commands='' options='' valued='' arguments='' kind='' choices='' i front=''
    local back='' assigned=''
    COMPREPLY=()
    # "--option=value" are three words.
    if [[ $word == '=' ]]; then
        word=''
    elif [[ $previous == '=' ]] && ((COMP_CWORD > 1)); then
        previous=${COMP_WORDS[COMP_CWORD-2]}
        ((COMP_CWORD > 2)) && assigned=${COMP_WORDS[COMP_CWORD-3]}
    fi
    _qrbtool_describe ''
    for ((i = 1; i < COMP_CWORD; i++)); do
        case ${COMP_WORDS[i]} in
            -*)
                if [[ " $valued " == *" ${COMP_WORDS[i]} "* ]]; then
                    [[ ${COMP_WORDS[i+1]-} == '=' ]] && ((i++))
                    ((i++))
                fi
                ;;
            *)
                if [[ " $commands " == *" ${COMP_WORDS[i]} "* ]]; then
                    path+=${path:+ }${COMP_WORDS[i]}
                    _qrbtool_describe "$path"
                fi
                ;;
        esac
    done
    if [[ " $valued " == *" $previous "* ]]; then
        _qrbtool_value "$path" "$previous"
    elif [[ -n $assigned && " $valued " == *" $assigned "* ]]; then
        return  # the value of "--set name=value"
    elif [[ $word == -* ]]; then
        kind=choice choices=$options
    else
        kind=$arguments choices=$commands
        if [[ $kind == items || $kind == attributes ]]; then
            _qrbtool_database >/dev/null || kind=file  # it may stand behind the subcommand
        fi
    fi
    case $kind in
        attributes)
            choices+=" $(_qrbtool_names "$1" attributes)"
            [[ $word == *,* ]] && front=${word%,*},
            word=${word##*,}
            compopt -o nospace 2>/dev/null
            ;;
        assignment)
            choices=$(_qrbtool_names "$1" attributes) back='='
            compopt -o nospace 2>/dev/null
            ;;
        items | defaults)
            choices+=" $(_qrbtool_names "$1" "$kind")"
            ;;
        schemas)
            choices=$(_qrbtool_names "$1" schemas)
            compopt -o filenames 2>/dev/null
            mapfile -t COMPREPLY < <(compgen -f -- "$word")
            ;;
        file)
            compopt -o filenames 2>/dev/null
            mapfile -t COMPREPLY < <(compgen -f -- "$word")
            ;;
        folder)
            compopt -o filenames 2>/dev/null
            mapfile -t COMPREPLY < <(compgen -d -- "$word")
            ;;
    esac
    local IFS=$' \n'
    mapfile -t -O "${#COMPREPLY[@]}" COMPREPLY < <(compgen -P "$front" -S "$back" -W "$choices" -- "$word")
}

complete -F _qrbtool qrbtool
)SCRIPT";

std::string assigned(const char* variable, const std::vector<std::string>& words) {
    return std::string(variable) + "=" + quotedWord(joinedWords(words));
}

// The case of one command in the function that tells its words.
std::string bashWordsOf(const DescribedCommand& program, const DescribedCommand& command,
                        const std::vector<DescribedOption>& general) {
    std::vector<std::string> options;
    std::vector<std::string> valued;
    for (const auto* const list : {&command.options, &general}) {
        for (const DescribedOption& option : *list) {
            for (const std::string& name : option.names) {
                // An own option hides the general one of its name.
                if (std::ranges::find(options, name) == options.end()) {
                    options.push_back(name);
                    if (!option.value.empty()) {
                        valued.push_back(name);
                    }
                }
            }
        }
    }
    const ValueKind kind = argumentKind(command);
    std::vector<std::string> commands = namesOf(command.subcommands);
    if (kind == ValueKind::COMMAND) {
        commands = namesOf(program.subcommands);
    }
    for (const DescribedOption& argument : command.arguments) {
        commands.insert(commands.end(), argument.choices.begin(), argument.choices.end());
    }
    return "        " + quotedWord(joinedWords(command.path)) + ")\n            " +
           assigned("commands", commands) + "\n            " + assigned("options", options) +
           "\n            " + assigned("valued", valued) +
           "\n            arguments=" + kindName(kind) + "\n            ;;\n";
}

std::string bashChoices(const std::vector<std::string>& choices) {
    return assigned("choices", choices);
}

}  // namespace

std::string bashCompletion(const DescribedCommand& program,
                           const std::vector<DescribedOption>& general) {
    std::string words;
    std::string values;
    for (const DescribedCommand* const command : allCommands(program)) {
        words += bashWordsOf(program, *command, general);
        values += valueCases(quotedWord(joinedWords(command->path)), command->options, bashChoices);
    }
    values += valueCases("*", general, bashChoices);
    return "# bash completion for qrbtool, written by \"qrbtool completion bash\".\n"
           "\n"
           "# The words that may follow a command.\n"
           "_qrbtool_describe() {\n"
           "    case $1 in\n" +
           words +
           "        *) commands='' arguments=choice ;;\n"
           "    esac\n"
           "}\n"
           "\n"
           "# What stands behind an option of a command.\n"
           "_qrbtool_value() {\n"
           "    kind=choice choices=''\n"
           "    case \"$1 $2\" in\n" +
           values +
           "    esac\n"
           "}\n" +
           bashFunctions;
}

}  // namespace tarvo::cli
