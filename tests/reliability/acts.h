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

// A folder in memory where the system has one; gone with the object.
class WorkFolder {
public:
    explicit WorkFolder(const std::string& name);
    ~WorkFolder();
    WorkFolder(const WorkFolder&) = delete;
    WorkFolder& operator=(const WorkFolder&) = delete;
    // Makes a folder in it.
    std::string folder(const std::string& name) const;

private:
    std::string m_path;
};

// Removes everything in a folder.
void clear(const std::string& folder);
// Makes a folder hold what another one does.
void copyFolder(const std::string& from, const std::string& to);

}  // namespace tarvo::trial
