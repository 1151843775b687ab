// What people do with databases, as command lines of qrbtool: each changes the files of one folder.
#pragma once

#include <string>
#include <vector>

namespace tarvo::trial {

using CommandLine = std::vector<std::string>;

struct Act {
    std::string name;
    std::vector<CommandLine> before;  // to make what the act works on
    std::vector<CommandLine> steps;   // each is acknowledged by its end
    bool large = false;               // writes tens of megabytes
};

// folder: that the acts change. inputs: another one, where this puts the files that they read.
std::vector<Act> actsIn(const std::string& folder, const std::string& inputs);

// Runs qrbtool within this process; returns its exit code. output: what it wrote.
int runTool(const CommandLine& words, std::string& output);
// The same for what must succeed: throws std::runtime_error.
void runTools(const std::vector<CommandLine>& lines);

}  // namespace tarvo::trial
