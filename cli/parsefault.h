// Command lines that the parser refuses.
#pragma once

#include "cli/errors.h"

#include <string>
#include <vector>

namespace CLI {
class App;
class ParseError;
}  // namespace CLI

namespace tarvo::cli {

// What is wrong, in words for the user, with what is near to what was written. app: it has parsed
// the words, and thrown the error. Keys among the words are hidden.
UsageError faultOf(const CLI::App& app, const CLI::ParseError& error,
                   const std::vector<std::string>& words);

// Throws UsageError where the word that was taken for the database's name is one that stands in the
// place of a subcommand, and near to one. app: it has parsed the words.
void refuseMistypedSubcommand(const CLI::App& app);

// The commands that were found, the outermost first: the app, a command, its subcommand.
std::vector<const CLI::App*> parsedCommands(const CLI::App& app);
// The names of a command's subcommands.
std::vector<std::string> subcommandNames(const CLI::App& app);
// "qrbtool metadata get"; with FILE where the name of the database stands.
std::string pathOf(const CLI::App& app);

}  // namespace tarvo::cli
