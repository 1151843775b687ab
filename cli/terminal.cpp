#include "cli/terminal.h"

#include "cli/errors.h"
#include "cli/json.h"
#include "cli/manner.h"
#include "cli/text.h"
#include "numbers/numbertext.h"

#include <algorithm>
#include <csignal>
#include <cstdio>

#if defined(_WIN32)
#include <io.h>
#else
#include <fcntl.h>
#include <unistd.h>
#endif

namespace tarvo::cli {

namespace {

volatile std::sig_atomic_t s_signal = 0;

bool errorIsTerminal() {
#if defined(_WIN32)
    return _isatty(2) != 0;
#else
    return isatty(STDERR_FILENO) != 0;
#endif
}

extern "C" void keepSignal(int number) {
    s_signal = number;
    std::signal(number, SIG_DFL);
}

void setHandler(int number, void (*handler)(int)) {
#if defined(_WIN32)
    std::signal(number, handler);
#else
    // Without SA_RESTART: what waits for the other end of a pipe is to be heard, too.
    struct sigaction action {};
    action.sa_handler = handler;
    sigemptyset(&action.sa_mask);
    sigaction(number, &action, nullptr);
#endif
}

void forEachSignal(void (*handler)(int)) {
    setHandler(SIGINT, handler);
    setHandler(SIGTERM, handler);
#if defined(SIGHUP)
    setHandler(SIGHUP, handler);
#endif
}

}  // namespace

void takeStandardFiles() {
#if !defined(_WIN32)
    // A file gets the lowest free number.
    int number = 0;
    while (number >= 0 && number <= STDERR_FILENO) {
        number = open("/dev/null", O_RDONLY);
    }
    if (number > STDERR_FILENO) {
        close(number);
    }
#endif
}

void watchInterrupts() {
    forEachSignal(keepSignal);
}

InterruptsEnd::InterruptsEnd() {
    forEachSignal(SIG_DFL);
    checkInterrupted();
}

void checkInterrupted() {
    if (s_signal != 0) {
        throw Interrupted();
    }
}

int interruptSignal() {
    return s_signal;
}

void note(const std::string& text) {
    if (manner().quiet) {
        return;
    }
    if (!manner().json) {
        std::fprintf(stderr, "qrbtool: %s\n", oneLine(text).c_str());
        return;
    }
    JsonText json;
    json.beginObject();
    json.member("note", text);
    json.endObject();
    std::fprintf(stderr, "%s\n", json.compact().c_str());
}

void note(const std::vector<std::string>& texts) {
    for (const std::string& text : texts) {
        note(text);
    }
}

void noteStep(const std::string& text, std::chrono::steady_clock::time_point begin) {
    if (!manner().verbose) {
        return;
    }
    const std::chrono::duration<double> time = std::chrono::steady_clock::now() - begin;
    std::string seconds;
    numbers::appendFixed(seconds, time.count(), 3);
    note(text + ": " + seconds + " s");
}

ProgressLine::ProgressLine(std::string label)
    : m_label(oneLine(label)),
      m_terminal(errorIsTerminal() && !manner().quiet),
      m_begin(std::chrono::steady_clock::now()) {}

ProgressLine::~ProgressLine() {
    if (m_shown) {
        std::fputs("\r\033[K", stderr);
    }
    noteStep(m_label, m_begin);
}

void ProgressLine::update(double fraction) {
    checkInterrupted();
    if (!m_terminal) {
        return;
    }
    const auto now = std::chrono::steady_clock::now();
    if (m_shown && now - m_last < std::chrono::milliseconds(100)) {
        return;
    }
    m_last = now;
    m_shown = true;
    std::fprintf(stderr, "\r\033[K%s %d %%", m_label.c_str(),
                 static_cast<int>(std::clamp(fraction, 0.0, 1.0) * 100));
    std::fflush(stderr);
}

}  // namespace tarvo::cli
