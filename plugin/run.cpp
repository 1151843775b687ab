#include "plugin/run.h"

#include "core/error.h"
#include "core/jsonvalues.h"
#include "files/error.h"
#include "files/path.h"
#include "files/temporaryfolder.h"
#include "plugin/messages.h"
#include "plugin/process.h"

#include <filesystem>
#include <fstream>
#include <optional>
#include <system_error>

namespace tarvo::plugin {

namespace {

using core::Failure;
using std::chrono::milliseconds;
using Clock = std::chrono::steady_clock;

constexpr milliseconds step{100};
constexpr milliseconds restPatience{2000};
constexpr std::size_t keptPrintLimit = 4000;  // of what is told of a process that died

void writeFile(const std::string& name, std::string_view bytes) {
    const std::filesystem::path path = files::pathOf(name);
    std::error_code error;
    std::filesystem::create_directories(path.parent_path(), error);
    std::ofstream stream(path, std::ios::binary);
    stream.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    stream.close();
    if (!stream)
        throw files::FileError("Failed to write \"" + name + "\".",
                               "Is there room on the disk of temporary files?");
}

// From the first wish to stop to the kill.
class Stop {
public:
    Stop(Process& process, const Patience& patience) : m_process(process), m_patience(patience) {}

    void ask() {
        if (m_isAsked)
            return;
        m_isAsked = true;
        m_asked = Clock::now();
        m_process.write(cancelMessage());
    }
    bool isAsked() const { return m_isAsked; }
    void press() {
        if (!m_isAsked)
            return;
        const auto waited = Clock::now() - m_asked;
        if (waited > m_patience.cancel + m_patience.terminate)
            m_process.kill();
        else if (waited > m_patience.cancel)
            m_process.terminate();
    }

private:
    Process& m_process;
    const Patience& m_patience;
    bool m_isAsked = false;
    Clock::time_point m_asked;
};

// The last lines of what was printed, for when nothing else tells what happened.
class Tail {
public:
    void add(std::string_view text) {
        m_text += text;
        if (m_text.size() > 2 * keptPrintLimit)
            m_text.erase(0, m_text.size() - keptPrintLimit);
    }
    std::string text() const {
        return m_text.size() > keptPrintLimit ? m_text.substr(m_text.size() - keptPrintLimit)
                                              : m_text;
    }

private:
    std::string m_text;
};

// What is in the pipes of a process that has ended.
void readRest(Process& process, std::string& output, std::string& printed) {
    const auto deadline = Clock::now() + restPatience;
    const auto size = [&] { return output.size() + printed.size(); };
    for (std::size_t before = size(); process.read(output, printed, milliseconds(0));) {
        if (size() == before || Clock::now() > deadline)
            break;
        before = size();
    }
}

Outcome diedOf(const Process::End& end, const std::string& lastPrinted) {
    Outcome outcome;
    outcome.text = end.signal != 0 ? "The plugin's process was ended by signal " +
                                         std::to_string(end.signal) + "."
                                   : "The plugin's process ended without a result (exit code " +
                                         std::to_string(end.code) + ").";
    outcome.details = lastPrinted;
    return outcome;
}

}  // namespace

Outcome run(const Request& request, Listener& listener) {
    const files::TemporaryFolder folder;
    for (const Script& script : request.scripts)
        writeFile(folder.file("scripts/" + script.name), script.text);
    for (const PackageFile& file : request.package->files)
        writeFile(folder.file("plugin/" + file.name), file.bytes);
    const std::string work = folder.file("work");
    std::error_code error;
    std::filesystem::create_directory(files::pathOf(work), error);

    // -E: the environment's wishes to Python are not heard; its path begins with the runner's
    // folder, not with the one that the program was started in.
    Process process(request.interpreter.program,
                    {"-E", "-u", "-B", "-X", "utf8", folder.file("scripts/runner/main.py")}, work);
    process.write(runMessage(request, folder.file("plugin/" + request.package->manifest.script)));

    Messages messages(listener);
    Stop stop(process, request.patience);
    Tail tail;
    std::string output, printed;
    std::optional<Clock::time_point> lastWord;
    const auto hear = [&] {
        messages.take(output, printed);
        if (printed.empty())
            return;
        tail.add(printed);
        listener.printed(printed);
        printed.clear();
    };
    for (bool open = true; open;) {
        open = process.read(output, printed, step);
        hear();
        if (messages.outcome() && !lastWord)
            lastWord = Clock::now();
        if (!messages.outcome() && (listener.cancelled() || messages.failure()))
            stop.ask();
        stop.press();
        // What it has started may keep the pipes open.
        if (open && process.waitFor(milliseconds(0)).ended) {
            readRest(process, output, printed);
            open = false;
        }
        if (lastWord && Clock::now() - *lastWord > request.patience.leave)
            process.kill();
    }
    process.closeInput();
    process.kill();
    const Process::End end = process.waitFor(request.patience.leave);
    hear();
    if (messages.failure())
        return {Outcome::End::FAILED, *messages.failure(), {}, 0};
    if (messages.outcome())
        return *messages.outcome();
    if (stop.isAsked())
        return {Outcome::End::CANCELLED, {}, {}, 0};
    return diedOf(end, tail.text());
}

}  // namespace tarvo::plugin
