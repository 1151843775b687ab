// The steps of the program's start, apart from main() so that tests can take them too.
#pragma once

namespace tarvo::window {

// Names under which settings are stored. Needs the application object.
void setApplicationNames();

// The style sheet of the resources; without it the program looks plain, no more.
void applyStyleSheet();

// Loads the library, runs a window on it until all windows are closed, and starts again when a
// window asked for another library. Returns the program's exit code.
int runWindows();

}  // namespace tarvo::window
