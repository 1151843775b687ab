#include "files/identity.h"

#include "files/path.h"

#ifdef _WIN32
#include <windows.h>
#else
#include <sys/stat.h>
#endif

namespace tarvo::files {

#ifdef _WIN32

std::optional<Identity> identityOf(const std::string& fileName) {
    const HANDLE file = CreateFileW(pathOf(fileName).c_str(), 0,
                                    FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                                    OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS, nullptr);
    if (file == INVALID_HANDLE_VALUE)
        return std::nullopt;
    BY_HANDLE_FILE_INFORMATION information;
    const bool known = GetFileInformationByHandle(file, &information) != 0;
    CloseHandle(file);
    if (!known)
        return std::nullopt;
    return Identity{information.dwVolumeSerialNumber,
                    (std::uint64_t(information.nFileIndexHigh) << 32) | information.nFileIndexLow};
}

#else

std::optional<Identity> identityOf(const std::string& fileName) {
    struct stat status;
    if (::stat(fileName.c_str(), &status) != 0)
        return std::nullopt;
    return Identity{static_cast<std::uint64_t>(status.st_dev),
                    static_cast<std::uint64_t>(status.st_ino)};
}

#endif

bool sameFile(const std::string& first, const std::string& second) {
    const std::optional<Identity> identity = identityOf(first);
    return identity && identity == identityOf(second);
}

}  // namespace tarvo::files
