// The one place where failed calls of slots become message boxes.
#pragma once

#include <QString>
#include <exception>
#include <functional>

class QWidget;

namespace tarvo::window {

// Runs the action and reports what it throws. Returns whether it ended without throwing. Every call
// from a slot into the interface layer runs through here, because the toolkit's event loop promises
// nothing for exceptions.
bool guarded(QWidget* parent, const std::function<void()>& action);

// What an error says.
struct ErrorText {
    QString text;
    QString details;  // may be empty
};
ErrorText describe(const std::exception_ptr& error);

// The general error report: an error box over parent. That the user cancelled
// (window/common/aside.h) needs none.
void reportError(QWidget* parent, const std::exception_ptr& error);

// Shows the wait cursor while it lives. Leave its scope before showing a box; guarded() does so.
class WaitCursor {
public:
    WaitCursor();
    ~WaitCursor();
    WaitCursor(const WaitCursor&) = delete;
    WaitCursor& operator=(const WaitCursor&) = delete;
};

}  // namespace tarvo::window
