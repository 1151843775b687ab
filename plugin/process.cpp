#include "plugin/process.h"

#include "core/error.h"
#include "plugin/descriptor.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <csignal>
#include <cstring>
#include <memory>
#include <thread>
#include <utility>

#include <poll.h>
#include <spawn.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

extern char** environ;  // NOLINT: declared nowhere else

namespace tarvo::plugin {

namespace {

using core::Failure;
using std::chrono::milliseconds;
using Clock = std::chrono::steady_clock;

constexpr milliseconds writePatience{10000};
constexpr milliseconds waitStep{20};

struct Ends {
    Descriptor ours, theirs;
};

// A socket pair, because writing to a pipe that nobody reads raises a signal.
void connect(Ends& ends) {
    std::array<int, 2> numbers{};
    if (socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, numbers.data()) != 0)
        throw Failure("Failed to connect to a new process.", std::strerror(errno));
    ends.ours.reset(numbers[0]);
    ends.theirs.reset(numbers[1]);
}

// What programs need to find their way, and nothing that changes what they do.
std::vector<std::string> environment() {
    constexpr std::array<const char*, 9> names{"PATH", "HOME",   "USER", "LOGNAME", "LANG",
                                               "TZ",   "TMPDIR", "TEMP", "LANGUAGE"};
    std::vector<std::string> kept;
    for (char** entry = environ; *entry != nullptr; ++entry) {
        const std::string_view text(*entry);
        const std::string_view name = text.substr(0, text.find('='));
        bool keep = name.starts_with("LC_");
        for (const char* const one : names)
            keep = keep || name == one;
        if (keep)
            kept.emplace_back(text);
    }
    return kept;
}

std::vector<char*> pointers(std::vector<std::string>& texts) {
    std::vector<char*> result;
    for (std::string& text : texts)
        result.push_back(text.data());
    result.push_back(nullptr);
    return result;
}

void require(int error, const std::string& program) {
    if (error != 0)
        throw Failure("Failed to start \"" + program + "\".", std::strerror(error));
}

struct Actions {
    Actions() { posix_spawn_file_actions_init(&value); }
    ~Actions() { posix_spawn_file_actions_destroy(&value); }
    Actions(const Actions&) = delete;
    Actions& operator=(const Actions&) = delete;
    posix_spawn_file_actions_t value{};
};

// A process group of its own, and signals as they are for a program that a shell starts.
struct Attributes {
    Attributes() {
        posix_spawnattr_init(&value);
        sigset_t all, none;
        sigfillset(&all);
        sigemptyset(&none);
        posix_spawnattr_setsigdefault(&value, &all);
        posix_spawnattr_setsigmask(&value, &none);
        posix_spawnattr_setpgroup(&value, 0);
        posix_spawnattr_setflags(
            &value, POSIX_SPAWN_SETPGROUP | POSIX_SPAWN_SETSIGDEF | POSIX_SPAWN_SETSIGMASK);
    }
    ~Attributes() { posix_spawnattr_destroy(&value); }
    Attributes(const Attributes&) = delete;
    Attributes& operator=(const Attributes&) = delete;
    posix_spawnattr_t value{};
};

// Reads what is there; closes what has ended.
void drain(Descriptor& descriptor, std::string& text) {
    std::array<char, 65536> buffer{};
    const ssize_t count = ::read(descriptor.number(), buffer.data(), buffer.size());
    if (count > 0)
        text.append(buffer.data(), static_cast<std::size_t>(count));
    else if (count == 0 || (errno != EINTR && errno != EAGAIN))
        descriptor.close();
}

}  // namespace

struct Process::Platform {
    pid_t process = -1;
    Descriptor input, output, errors;
    Process::End end;
};

Process::Process(const std::string& program, const std::vector<std::string>& words,
                 const std::string& workingFolder) {
    auto platform = std::make_unique<Platform>();
    std::array<Ends, 3> ends;
    std::for_each(ends.begin(), ends.end(), connect);

    Actions actions;
    for (int i = 0; i < 3; ++i)
        require(posix_spawn_file_actions_adddup2(&actions.value, ends[i].theirs.number(), i),
                program);
    require(posix_spawn_file_actions_addclosefrom_np(&actions.value, 3), program);
    require(posix_spawn_file_actions_addchdir_np(&actions.value, workingFolder.c_str()), program);
    Attributes attributes;

    std::vector<std::string> arguments{program};
    arguments.insert(arguments.end(), words.begin(), words.end());
    std::vector<std::string> variables = environment();
    require(posix_spawnp(&platform->process, program.c_str(), &actions.value, &attributes.value,
                         pointers(arguments).data(), pointers(variables).data()),
            program);
    platform->input.reset(ends[0].ours.release());
    platform->output.reset(ends[1].ours.release());
    platform->errors.reset(ends[2].ours.release());
    m_platform = platform.release();
}

Process::~Process() {
    if (!m_platform->end.ended) {
        kill();
        waitFor(writePatience);
    }
    delete m_platform;
}

bool Process::write(std::string_view bytes) {
    const auto deadline = Clock::now() + writePatience;
    while (!bytes.empty()) {
        if (!m_platform->input.isOpen())
            return false;
        const ssize_t count = send(m_platform->input.number(), bytes.data(), bytes.size(),
                                   MSG_NOSIGNAL | MSG_DONTWAIT);
        if (count > 0) {
            bytes.remove_prefix(static_cast<std::size_t>(count));
            continue;
        }
        if (count < 0 && errno != EAGAIN && errno != EINTR)
            return false;
        pollfd waiting{m_platform->input.number(), POLLOUT, 0};
        if (Clock::now() > deadline)
            return false;
        poll(&waiting, 1, 100);
    }
    return true;
}

void Process::closeInput() {
    m_platform->input.close();
}

bool Process::read(std::string& output, std::string& errors, milliseconds patience) {
    Descriptor* const both[] = {&m_platform->output, &m_platform->errors};
    std::string* const texts[] = {&output, &errors};
    pollfd waiting[2];
    for (int i = 0; i < 2; ++i)
        waiting[i] = {both[i]->number(), POLLIN, 0};  // a negative number is passed over
    if (!both[0]->isOpen() && !both[1]->isOpen())
        return false;
    if (poll(waiting, 2, static_cast<int>(patience.count())) > 0)
        for (int i = 0; i < 2; ++i)
            if (waiting[i].revents != 0)
                drain(*both[i], *texts[i]);
    return both[0]->isOpen() || both[1]->isOpen();
}

void Process::terminate() {
    if (!m_platform->end.ended)
        ::kill(-m_platform->process, SIGTERM);
}

void Process::kill() {
    if (!m_platform->end.ended)
        ::kill(-m_platform->process, SIGKILL);
}

Process::End Process::waitFor(milliseconds patience) {
    const auto deadline = Clock::now() + patience;
    while (!m_platform->end.ended) {
        siginfo_t info{};
        const int looked = waitid(P_PID, static_cast<id_t>(m_platform->process), &info,
                                  WEXITED | WNOHANG | WNOWAIT);
        if (looked == 0 && info.si_pid == m_platform->process) {
            // What it has started and left behind goes, too: while its number can't be another's.
            ::kill(-m_platform->process, SIGKILL);
            int status = 0;
            waitpid(m_platform->process, &status, 0);
            m_platform->end = {true, WIFEXITED(status) ? WEXITSTATUS(status) : 0,
                               WIFSIGNALED(status) ? WTERMSIG(status) : 0};
        } else if (looked != 0 && errno != EINTR) {
            m_platform->end = {true, 0, 0};
        } else if (Clock::now() >= deadline) {
            break;
        } else {
            std::this_thread::sleep_for(waitStep);
        }
    }
    return m_platform->end;
}

}  // namespace tarvo::plugin
