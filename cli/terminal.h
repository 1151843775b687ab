// What the commands have to do with the terminal: progress lines and the wish to stop.
#pragma once

#include <chrono>
#include <string>
#include <vector>

namespace tarvo::cli {

// Where a standard file is closed, no other file is to get its number: what is printed would go
// there. Writing to one that was closed still fails.
void takeStandardFiles();

// From now on the signals that ask a program to stop (interrupt, terminate, hang-up) are kept for
// checkInterrupted(); a second one ends the program at once.
void watchInterrupts();
// Throws Interrupted after such a signal.
void checkInterrupted();
// The number of the signal, 0 for none.
int interruptSignal();

// While one lives, such a signal ends the program at once: for long calls that can't be stopped and
// change nothing. One that came before is thrown as Interrupted.
class InterruptsEnd {
public:
    InterruptsEnd();
    ~InterruptsEnd() { watchInterrupts(); }
    InterruptsEnd(const InterruptsEnd&) = delete;
    InterruptsEnd& operator=(const InterruptsEnd&) = delete;
};

// Lines on standard error, beside the answer, as the manner says. They may hold texts from files.
void note(const std::string& text);
void note(const std::vector<std::string>& texts);
// What was done since it began, for those who want to know: "TEXT: 1.250 s".
void noteStep(const std::string& text, std::chrono::steady_clock::time_point begin);

// A line "label 42 %" on standard error while it is a terminal; gone with the object, which notes
// the step then.
class ProgressLine {
public:
    explicit ProgressLine(std::string label);
    ~ProgressLine();
    ProgressLine(const ProgressLine&) = delete;
    ProgressLine& operator=(const ProgressLine&) = delete;

    // Also checks for interrupts. fraction: 0 to 1.
    void update(double fraction);

private:
    std::string m_label;
    bool m_terminal = false;
    bool m_shown = false;
    std::chrono::steady_clock::time_point m_begin;
    std::chrono::steady_clock::time_point m_last;
};

}  // namespace tarvo::cli
