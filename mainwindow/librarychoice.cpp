#include "mainwindow/librarychoice.h"

LibraryChoice& libraryChoice() {
    static LibraryChoice choice;
    return choice;
}
