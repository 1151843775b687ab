#include "benchmarks/process.h"

#include <fcntl.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <stdexcept>

namespace bench {

namespace {

double secondsOf(const timeval& time) {
    return static_cast<double>(time.tv_sec) + 1e-6 * static_cast<double>(time.tv_usec);
}

std::string lineOf(const std::vector<std::string>& words) {
    std::string line;
    for (const std::string& word : words)
        line += (line.empty() ? "" : " ") + word;
    return line;
}

// Starts a program whose standard output, and error output if told, go to a descriptor.
pid_t start(const char* program, std::vector<std::string> words, int output, bool errorsToo) {
    const pid_t child = ::fork();
    if (child < 0)
        throw std::runtime_error("no process");
    if (child > 0)
        return child;
    ::dup2(output, 1);
    if (errorsToo)
        ::dup2(output, 2);
    std::vector<char*> argv;
    for (std::string& word : words)
        argv.push_back(word.data());
    argv.push_back(nullptr);
    ::execv(program, argv.data());
    ::_exit(127);
}

}  // namespace

std::string outputOfSelf(const std::vector<std::string>& arguments) {
    int channel[2];
    if (::pipe2(channel, O_CLOEXEC) != 0)
        throw std::runtime_error("no pipe");
    std::vector<std::string> words = {"bench_side_by_side"};
    words.insert(words.end(), arguments.begin(), arguments.end());
    const pid_t child = start("/proc/self/exe", words, channel[1], false);
    ::close(channel[1]);
    std::string text;
    char buffer[4096];
    for (ssize_t count; (count = ::read(channel[0], buffer, sizeof buffer)) > 0;)
        text.append(buffer, static_cast<std::size_t>(count));
    ::close(channel[0]);
    int status = 0;
    ::waitpid(child, &status, 0);
    if (status != 0)
        throw std::runtime_error("a measurement failed: " + lineOf(arguments));
    return text;
}

Measurement runProgram(const std::vector<std::string>& command, const std::string& logFile) {
    const int log = ::open(logFile.c_str(), O_WRONLY | O_CREAT | O_APPEND | O_CLOEXEC, 0666);
    if (log < 0)
        throw std::runtime_error("can't write " + logFile);
    const Stopwatch watch;
    const pid_t child = start(command.front().c_str(), command, log, true);
    int status = 0;
    rusage usage{};
    ::wait4(child, &status, 0, &usage);
    Measurement result = watch.stop(0);
    ::close(log);
    if (status != 0)
        throw std::runtime_error("failed, see " + logFile + ": " + lineOf(command));
    result.cpu = secondsOf(usage.ru_utime) + secondsOf(usage.ru_stime);
    result.mebibytes = static_cast<double>(usage.ru_maxrss) / 1024;
    return result;
}

}  // namespace bench
