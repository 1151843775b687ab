// Runs qrbtool as a process.
#pragma once

#include <sys/wait.h>

#include <cstdio>
#include <string>

namespace tarvo::cli::tests {

struct Result {
    int code = -1;       // exit code; 128 + n for signal n
    std::string output;  // of both streams
};

// The words go through the shell. timeout(1) has to stand with --foreground: else it sends its
// signal twice, and the second one ends qrbtool at once.
inline Result runShell(const std::string& command) {
    Result result;
    std::FILE* const pipe = popen(("{ " + command + " ; } 2>&1").c_str(), "r");
    if (pipe == nullptr) {
        return result;
    }
    char buffer[4096];
    while (const std::size_t got = std::fread(buffer, 1, sizeof buffer, pipe)) {
        result.output.append(buffer, got);
    }
    const int status = pclose(pipe);
    result.code = WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
    return result;
}

inline Result run(const std::string& words) {
    return runShell(std::string(QRBTOOL_FILE) + " " + words);
}

}  // namespace tarvo::cli::tests
