// The one place where failed calls of slots become message boxes.
#pragma once

#include <functional>

class QWidget;

namespace tarvo::common {

// Runs the action and shows what it throws in an error box over parent; that the user cancelled
// it (common/progress.h) needs no box. Returns whether it ended without throwing. Every call from a slot into the interface layer runs through here, because no
// exception may pass through the event loop.
bool guarded(QWidget* parent, const std::function<void()>& action);

// Shows the wait cursor while it lives. Leave its scope before showing a box; guarded() does so.
class WaitCursor {
public:
    WaitCursor();
    ~WaitCursor();
    WaitCursor(const WaitCursor&) = delete;
    WaitCursor& operator=(const WaitCursor&) = delete;
};

}  // namespace tarvo::common
