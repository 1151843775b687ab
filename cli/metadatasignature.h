// The parts of the command "metadata" that sign items and look at signatures.
#pragma once

namespace CLI {
class App;
}

namespace tarvo::cli {

struct Invocation;

// Adds "sign", "unsign" and "verify" to the command "metadata".
void addMetaDataSignatureCommands(CLI::App& command, Invocation& invocation);

}  // namespace tarvo::cli
