#include "tests/reliability/processes.h"

#include <fcntl.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <stdexcept>

namespace tarvo::trial {

Process::Process(std::vector<std::string> arguments) {
    int ends[2];
    if (::pipe2(ends, O_CLOEXEC) != 0)
        throw std::runtime_error("There is no pipe left.");
    const std::string program = "/proc/self/exe";
    std::vector<char*> argv{const_cast<char*>(program.c_str())};
    for (std::string& argument : arguments)
        argv.push_back(argument.data());
    argv.push_back(nullptr);
    m_process = ::fork();
    if (m_process == 0) {
        ::prctl(PR_SET_PDEATHSIG, SIGKILL);
        ::dup2(ends[1], STDOUT_FILENO);
        ::execv(program.c_str(), argv.data());
        ::_exit(127);
    }
    ::close(ends[1]);
    if (m_process < 0) {
        ::close(ends[0]);
        throw std::runtime_error("No process can be started.");
    }
    m_output = ::fdopen(ends[0], "r");
}

Process::~Process() {
    kill();
    wait();
    std::fclose(m_output);
}

bool Process::readLine(std::string& line) {
    line.clear();
    for (int c = std::fgetc(m_output); c != EOF; c = std::fgetc(m_output)) {
        if (c == '\n')
            return true;
        line += static_cast<char>(c);
    }
    return false;
}

void Process::kill() {
    m_killed = true;
    if (m_process > 0)
        ::kill(m_process, SIGKILL);
}

std::string Process::wait() {
    int status = 0;
    if (m_process > 0 && ::waitpid(m_process, &status, 0) != m_process)
        return "can't be waited for";
    m_process = -1;
    if (WIFSIGNALED(status) && !(m_killed && WTERMSIG(status) == SIGKILL))
        return "was ended by signal " + std::to_string(WTERMSIG(status));
    if (WIFEXITED(status) && WEXITSTATUS(status) != 0)
        return "ended with exit code " + std::to_string(WEXITSTATUS(status));
    return {};
}

}  // namespace tarvo::trial
