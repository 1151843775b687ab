// Long work beside the window: on a thread of its own, with a dialog "Cancel" that comes up once it
// has taken half a second.
#pragma once

#include <QString>
#include <functional>
#include <string>

class QWidget;

namespace tarvo::window {

// Learns of a step, in words, and of how much of it is done, 0 to 1; from the working thread.
// Throws Cancelled (window/common/progress.h) once the user has asked for that.
using StepProgress = std::function<void(const std::string& step, double fraction)>;

// Runs the job on another thread and waits for it. text: what is being done. What the job throws is
// thrown on; a job that came to its end has done its work, whatever was asked. Nothing that the job
// works on may be used elsewhere meanwhile: the parent's window takes no input.
void workAside(QWidget* parent, const QString& text,
               const std::function<void(const StepProgress&)>& job);

}  // namespace tarvo::window
