// The commands of qrbtool: each adds itself, with its options, to the command line, and runs when
// the words of the command line name it.
#pragma once

#include "qrb/context.h"

#include <functional>
#include <string>

namespace CLI {
class App;
}

namespace tarvo::cli {

// The program's name and version, as transactions carry it.
std::string agentText();

// Given by main: what a parsed command line asks for, run with the library loaded.
struct Invocation {
    std::function<void(const qrb::Context&)> run;
};

void addSampleCommand(CLI::App& app, Invocation& invocation);
void addImportCommand(CLI::App& app, Invocation& invocation);
void addInfoCommand(CLI::App& app, Invocation& invocation);
void addSelectCommand(CLI::App& app, Invocation& invocation);

}  // namespace tarvo::cli
