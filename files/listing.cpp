#include "files/listing.h"

#include "files/path.h"

#ifdef _WIN32
#include <system_error>
#else
#include <dirent.h>
#include <memory>
#endif

namespace tarvo::files {

std::vector<std::string> namesIn(const std::string& folder) {
    std::vector<std::string> names;
#ifdef _WIN32
    std::error_code error;
    std::filesystem::directory_iterator at(pathOf(folder), error);
    for (; !error && at != std::filesystem::directory_iterator(); at.increment(error))
        names.push_back(nameOf(at->path().filename()));
#else
    const std::unique_ptr<DIR, int (*)(DIR*)> opened(::opendir(folder.c_str()), ::closedir);
    while (const dirent* const entry = opened ? ::readdir(opened.get()) : nullptr) {
        std::string name = entry->d_name;
        if (name != "." && name != "..")
            names.push_back(std::move(name));
    }
#endif
    return names;
}

}  // namespace tarvo::files
