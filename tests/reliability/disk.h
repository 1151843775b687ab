// The file system calls of the process on their way to the system: those of the container, of the
// C++ library and our own. Calls on files right in one folder can be written down, for what a power
// cut would leave of them (platter.h), and any of them can be made to fail. Compile disk.cpp into
// the program itself, and let it export its symbols: the library that it loads then calls it, too.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace tarvo::trial {

// What changed the folder or one of its files. Files are told by numbers: names may come to mean
// others.
struct Operation {
    enum class Kind {
        Create,
        Write,
        Truncate,
        Sync,
        SyncFolder,
        Rename,
        Link,
        Remove,
        Acknowledge
    };
    Kind kind;
    int file = 0;
    std::string name = {};  // of the entry in the folder; Rename, Link: the former one
    std::string to = {};    // Rename, Link
    std::uint64_t at = 0;   // Write: where; Truncate: the new size
    std::string bytes = {};
};

namespace disk {

// From now on calls on files right in this folder are written down and counted. The files that are
// in it get numbers in the order of their names, from 1.
void watch(const std::string& folder);
// What was written down since; the folder is watched no longer.
std::vector<Operation> unwatch();
// Writes down that what was done so far was told to be done.
void acknowledge();

// What goes wrong. Full: what takes room fails, at first in the middle of it.
enum class Fault { Error, Full };
// Makes the call with this number (from 1, counted since watch) fail, or the first one behind it
// that the fault may hit; forGood: and all that follow.
void failAt(std::uint64_t call, Fault fault, bool forGood);
// Calls counted since watch, and those of them that failed.
std::uint64_t calls();
std::uint64_t failures();
// Which of the calls synced a file, or opened or synced the folder.
std::vector<std::uint64_t> syncs();

// What was not synced, though it should have been.
struct Unsynced {
    int files = 0;    // syncs of them that failed
    int folders = 0;  // syncs of the folder that failed, or could not begin
    // Names that changed before one of these, and nothing changed behind it that another one has
    // synced: that a sync was repeated proves nothing, the system may believe that it has written.
    bool names = false;
};
Unsynced unsynced();

// Locks of open files, and those of whole files, are given without being taken: no writer keeps the
// other one out.
void ignoreFileLocks();

}  // namespace disk

}  // namespace tarvo::trial
