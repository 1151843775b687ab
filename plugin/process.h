// A child process with pipes to its three standard files.
#pragma once

#include <chrono>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace tarvo::plugin {

// Not to be used by two threads at once.
class Process {
public:
    // Starts the program (looked for along PATH unless it has a folder) in the working folder, with
    // these words and no more of the environment than programs need to find their way; no other
    // open file is passed on. It gets a process group of its own. Throws core::Failure.
    Process(const std::string& program, const std::vector<std::string>& words,
            const std::string& workingFolder);
    // Kills what still runs.
    ~Process();
    Process(const Process&) = delete;
    Process& operator=(const Process&) = delete;

    // Writes all of it; false where nobody reads. What is more than the pipe takes waits for the
    // reader, at most ten seconds.
    bool write(std::string_view bytes);
    void closeInput();

    // Waits until there is something to read, everything is closed, or the time is over, and
    // appends what there is. False: both outputs are closed.
    bool read(std::string& output, std::string& errors, std::chrono::milliseconds patience);

    // Asks the process and those that it started to end; kills them.
    void terminate();
    void kill();

    struct End {
        bool ended = false;
        int code = 0;    // what it returned
        int signal = 0;  // what ended it; 0 where it returned
    };
    // Whether it has ended, after waiting so long for it.
    End waitFor(std::chrono::milliseconds patience);

private:
    struct Platform;
    Platform* m_platform;
};

}  // namespace tarvo::plugin
