// Where the name of the database may stand among the words of a command line.
#pragma once

#include <string>
#include <vector>

namespace CLI {
class App;
}

namespace tarvo::cli {

// The words of a command line as the parser takes them: "metadata get FILE NAME" as
// "metadata FILE get NAME". Only a subcommand whose command has the name of the database is
// concerned. words: without the program's name.
std::vector<std::string> inParserOrder(const CLI::App& app, std::vector<std::string> words);

// Whether a word that stands where the name of a database does can't be meant as one: nothing in
// the file system has that name, and there is neither a dot nor a slash in it.
bool isNoFileName(const std::string& word);

}  // namespace tarvo::cli
