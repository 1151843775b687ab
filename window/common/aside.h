// Long work beside the window: on a thread of its own, with a dialog "Cancel" that comes up once it
// has taken half a second.
#pragma once

#include "qrb/context.h"

#include <QString>
#include <exception>
#include <functional>
#include <string>

class QWidget;

namespace tarvo::window {

// The user cancelled; guarded() takes it silently.
class Cancelled : public std::exception {
public:
    const char* what() const noexcept override { return "Cancelled."; }
};

// Learns of a step, in words, and of how much of it is done, 0 to 1; from the working thread.
// Throws Cancelled once the user has asked for that.
using StepProgress = std::function<void(const std::string& step, double fraction)>;

using AsideJob = std::function<void(const StepProgress&)>;

// For work that tells per cent of one step.
inline std::function<void(int)> percentOf(const StepProgress& progress) {
    return [&progress](int percent) { progress({}, percent / 100.0); };
}

// Runs the job on another thread and waits for it, while the window paints and takes no input.
// text: what is being done. What the job throws is thrown on; a job that came to its end has done
// its work, whatever was asked. Nothing that the job works on may be used elsewhere meanwhile.
void workAside(QWidget* parent, const QString& text, const AsideJob& job);
// The same for work with a library: Cancel interrupts its calls on the context, too, and what such
// a call throws then is Cancelled.
void workAside(QWidget* parent, const QString& text, const qrb::Context& context,
               const AsideJob& job);

// Whether something of the window is at work on the database, or waits for an answer.
bool isBusy(const QWidget* window);

}  // namespace tarvo::window
