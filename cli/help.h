// What the help looks like.
#pragma once

#include <memory>
#include <string>
#include <vector>

namespace CLI {
class App;
class FormatterBase;
}  // namespace CLI

namespace tarvo::cli {

// Shows the name of the database where it stands, "qrbtool metadata FILE get [OPTIONS] name", and
// with each command the options that all have.
std::shared_ptr<CLI::FormatterBase> helpFormatter();

// The help of the command or subcommand.
std::string helpOf(const CLI::App& command);

// The command that the words name, from the app on. Throws UsageError where there is none.
const CLI::App& commandOf(const CLI::App& app, const std::vector<std::string>& words);

}  // namespace tarvo::cli
