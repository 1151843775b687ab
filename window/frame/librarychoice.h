// Which database library the next window is to run on. Used on the GUI thread only.
#pragma once

#include <QString>

namespace tarvo::window {

struct LibraryChoice {
    QString fileName;      // empty: the default library
    bool restart = false;  // a window asked for a start with another library
    QString previous;      // what fileName was before it did

    // Stays asked for, until it is done or taken back.
    void ask(const QString& name);
    void takeBack();
};

// The process's one choice.
LibraryChoice& libraryChoice();

}  // namespace tarvo::window
