// Options that several commands have.
#pragma once

#include <CLI/CLI.hpp>

#include <string>

namespace tarvo::cli {

// Which points a command is about. Both refuse blank texts: an unset variable of a script would
// mean everything.
CLI::Option* addFilter(CLI::App& command, std::string& filter);
CLI::Option* addNodes(CLI::App& command, std::string& nodes, const std::string& description);

}  // namespace tarvo::cli
