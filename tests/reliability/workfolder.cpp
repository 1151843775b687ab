#include "tests/reliability/workfolder.h"

#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <charconv>
#include <csignal>
#include <filesystem>
#include <system_error>

namespace tarvo::trial {

namespace fs = std::filesystem;

namespace {

// For stop(): the folder, and the process that made it.
char s_path[4096] = {};
::pid_t s_owner = 0;

// Removes the folder by another program: little may be called here.
void stop(int signal) {
    if (::getpid() == s_owner && s_path[0] != '\0') {
        const ::pid_t remover = ::fork();
        if (remover == 0) {
            ::execl("/bin/rm", "rm", "-rf", s_path, nullptr);
            ::_exit(127);
        }
        if (remover > 0)
            ::waitpid(remover, nullptr, 0);
    }
    std::signal(signal, SIG_DFL);
    ::raise(signal);
}

void stopWell(const std::string& path) {
    s_path[path.copy(s_path, sizeof s_path - 1)] = '\0';
    s_owner = ::getpid();
    std::signal(SIGINT, path.empty() ? SIG_DFL : stop);
    std::signal(SIGTERM, path.empty() ? SIG_DFL : stop);
}

// Removes the folders that begin with the prefix and tell a process that is gone, if they are this
// user's.
void removeLeftovers(const fs::path& parent, const std::string& prefix) {
    std::error_code error;
    for (const auto& entry : fs::directory_iterator(parent, error)) {
        const std::string name = entry.path().filename().string();
        if (!name.starts_with(prefix))
            continue;
        ::pid_t process = 0;
        const char* const end = name.data() + name.size();
        const auto [next, unreadable] = std::from_chars(name.data() + prefix.size(), end, process);
        struct stat status;
        if (unreadable != std::errc() || next != end || process <= 0 ||
            ::lstat(entry.path().c_str(), &status) != 0 || !S_ISDIR(status.st_mode) ||
            status.st_uid != ::geteuid() || ::kill(process, 0) == 0 || errno != ESRCH)
            continue;
        std::error_code ignored;
        fs::remove_all(entry.path(), ignored);
    }
}

}  // namespace

WorkFolder::WorkFolder(const std::string& name) {
    std::error_code error;
    const fs::path memory = "/dev/shm";
    const bool roomy = fs::space(memory, error).available > 1'000'000'000u && !error;
    const fs::path parent = roomy ? memory : fs::temp_directory_path();
    const std::string prefix = "qrb-" + name + "-";
    removeLeftovers(parent, prefix);
    m_path = (parent / (prefix + std::to_string(::getpid()))).string();
    fs::create_directories(m_path);
    stopWell(m_path);
}

WorkFolder::~WorkFolder() {
    stopWell("");
    std::error_code error;
    fs::remove_all(m_path, error);
}

std::string WorkFolder::folder(const std::string& name) const {
    const std::string path = m_path + "/" + name;
    fs::create_directories(path);
    return path;
}

void clear(const std::string& folder) {
    for (const auto& entry : fs::directory_iterator(folder))
        fs::remove_all(entry.path());
}

void copyFolder(const std::string& from, const std::string& to) {
    clear(to);
    fs::copy(from, to);
}

}  // namespace tarvo::trial
