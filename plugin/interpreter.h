// The Python that runs plugins.
#pragma once

#include <string>

namespace tarvo::plugin {

// What the setting "python_path" says until somebody sets it.
inline constexpr const char* defaultPythonPath = "python.exe";

struct Interpreter {
    std::string program;
    std::string version;  // "3.11.2"
};

// Asks the program that the setting names for its version; where the setting is the default or
// empty and there is no such program, the platform's own. Throws core::Failure where there is
// none, it is no Python, does not answer within ten seconds, or is older than 3.9.
Interpreter findInterpreter(const std::string& pythonPath);

}  // namespace tarvo::plugin
