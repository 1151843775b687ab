// Other processes of a trial: this program once more, in another part.
#pragma once

#include <sys/types.h>

#include <cstdio>
#include <string>
#include <vector>

namespace tarvo::trial {

// A running part; killed with the object.
class Process {
public:
    // Runs this program with these arguments. What it writes to its standard output is read here.
    explicit Process(std::vector<std::string> arguments);
    ~Process();
    Process(const Process&) = delete;
    Process& operator=(const Process&) = delete;

    // The next line that it has written; waits for it. False: it has ended.
    bool readLine(std::string& line);
    void kill();
    // Waits for the end. Empty where it ended by itself and well, or by kill(); else how it ended.
    std::string wait();

private:
    pid_t m_process = -1;
    bool m_killed = false;
    std::FILE* m_output = nullptr;
};

}  // namespace tarvo::trial
