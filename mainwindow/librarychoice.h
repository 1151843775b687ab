// Which database library the next window is to run on. Used on the GUI thread only.
#pragma once

#include <QString>

struct LibraryChoice {
    QString fileName;      // empty: the default library
    bool restart = false;  // a window asked for a start with another library
};

// The process's one choice.
LibraryChoice& libraryChoice();
