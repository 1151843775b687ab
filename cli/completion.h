// Scripts by which shells complete command lines of qrbtool.
#pragma once

#include "cli/description.h"

#include <functional>
#include <string>
#include <vector>

namespace tarvo::cli {

// program: all commands. general: the options that each of them has beside its own.
std::string bashCompletion(const DescribedCommand& program,
                           const std::vector<DescribedOption>& general);
std::string zshCompletion(const DescribedCommand& program,
                          const std::vector<DescribedOption>& general);
std::string fishCompletion(const DescribedCommand& program,
                           const std::vector<DescribedOption>& general);

// The text as one word of any of these shells.
std::string quotedWord(const std::string& text);

// What the arguments of a command are, for completion: files where there are any, else folders.
ValueKind argumentKind(const DescribedCommand& command);
// "file", "folder" and the kinds of names that the scripts ask the program for; else "choice".
const char* kindName(ValueKind kind);
// Cases of a shell's function that tells what stands behind the options with values. choices: the
// statement that assigns those of an option.
using ChoicesStatement = std::function<std::string(const std::vector<std::string>& choices)>;
std::string valueCases(const std::string& path, const std::vector<DescribedOption>& options,
                       const ChoicesStatement& choices);
std::vector<std::string> namesOf(const std::vector<DescribedCommand>& commands);

// The program, its commands and their subcommands, each before those below it.
std::vector<const DescribedCommand*> allCommands(const DescribedCommand& program);

}  // namespace tarvo::cli
