// Takes the place of fsync in a test program and keeps which names a folder had when it was synced:
// those that a power cut can't take away. Include it in one file of the program.
#pragma once

#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <filesystem>
#include <set>
#include <string>

// The names in the folder that was synced last.
inline std::set<std::string>& lastSyncedNames() {
    static std::set<std::string> names;
    return names;
}

extern "C" __attribute__((visibility("default"))) int fsync(int file) {
    struct stat status;
    if (::fstat(file, &status) == 0 && S_ISDIR(status.st_mode)) {
        lastSyncedNames().clear();
        const std::string folder = "/proc/self/fd/" + std::to_string(file) + "/";
        for (const auto& entry : std::filesystem::directory_iterator(folder))
            lastSyncedNames().insert(entry.path().filename().string());
    }
    return static_cast<int>(::syscall(SYS_fsync, file));
}
