#include "window/frame/librarychoice.h"

namespace tarvo::window {

void LibraryChoice::ask(const QString& name) {
    if (!restart)
        previous = fileName;
    fileName = name;
    restart = true;
}

void LibraryChoice::takeBack() {
    if (restart)
        fileName = previous;
    restart = false;
}

LibraryChoice& libraryChoice() {
    static LibraryChoice choice;
    return choice;
}

}  // namespace tarvo::window
