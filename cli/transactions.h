// The part of the command "transactions" that runs other commands.
#pragma once

namespace CLI {
class App;
}

namespace tarvo::cli {

struct Invocation;

// Adds "run" to the command "transactions".
void addTransactionRunCommand(CLI::App& command, Invocation& invocation);

}  // namespace tarvo::cli
