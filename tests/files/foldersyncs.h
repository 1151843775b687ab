// Takes the place of fsync in a test program and keeps which names a folder had when it was synced:
// those that a power cut can't take away.
#pragma once

#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <cerrno>
#include <filesystem>
#include <set>
#include <string>

// The names in the folder that was synced last.
inline std::set<std::string>& lastSyncedNames() {
    static std::set<std::string> names;
    return names;
}

// How many syncs of folders there were, and which of them fails, counted from 1; 0: none.
struct FolderSyncs {
    int count = 0;
    int failing = 0;
    int error = EIO;
};
inline FolderSyncs& folderSyncs() {
    static FolderSyncs syncs;
    return syncs;
}

extern "C" __attribute__((visibility("default"), used)) inline int fsync(int file) {
    struct stat status;
    if (::fstat(file, &status) == 0 && S_ISDIR(status.st_mode)) {
        lastSyncedNames().clear();
        const std::string folder = "/proc/self/fd/" + std::to_string(file) + "/";
        for (const auto& entry : std::filesystem::directory_iterator(folder))
            lastSyncedNames().insert(entry.path().filename().string());
        if (++folderSyncs().count == folderSyncs().failing) {
            errno = folderSyncs().error;
            return -1;
        }
    }
    return static_cast<int>(::syscall(SYS_fsync, file));
}
