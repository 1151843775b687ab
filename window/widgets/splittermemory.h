// Where the user put the handle of a splitter, kept in the program settings for the next start.
#pragma once

class QSplitter;

namespace tarvo::window {

// Restores it now and keeps it from now on, by the splitter's name.
void rememberSplitter(QSplitter* splitter);

}  // namespace tarvo::window
