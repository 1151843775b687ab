// A writer that is killed in the middle of its work.
#pragma once

#include <sqlite3.h>

#include <sys/wait.h>
#include <unistd.h>
#include <csignal>
#include <string>

namespace tarvo::testing {

// Leaves the database half overwritten, with the journal "NAME-journal" that undoes it.
inline void leaveJournal(const std::string& file) {
    const ::pid_t child = ::fork();
    if (child == 0) {
        sqlite3* handle = nullptr;
        sqlite3_open(file.c_str(), &handle);
        sqlite3_exec(handle,
                     "PRAGMA cache_size=5; BEGIN; UPDATE blob SET data = randomblob(20000); INSERT "
                     "INTO blob VALUES(100000, randomblob(3000000))",
                     nullptr, nullptr, nullptr);
        ::raise(SIGKILL);
    }
    ::waitpid(child, nullptr, 0);
}

}  // namespace tarvo::testing
