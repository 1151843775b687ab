#include "files/openfiles.h"

#ifndef _WIN32
#include <fcntl.h>
#include <sys/resource.h>
#include <unistd.h>
#include <cerrno>
#endif

namespace tarvo::files {

#ifdef _WIN32

void allowManyOpenFiles() noexcept {}
std::uint64_t exhaustedLimit() noexcept {
    return 0;
}

#else

void allowManyOpenFiles() noexcept {
    rlimit limit{};
    if (::getrlimit(RLIMIT_NOFILE, &limit) == 0 && limit.rlim_cur < limit.rlim_max) {
        limit.rlim_cur = limit.rlim_max;
        ::setrlimit(RLIMIT_NOFILE, &limit);
    }
}

std::uint64_t exhaustedLimit() noexcept {
    rlimit limit{};
    const int descriptor = ::open("/dev/null", O_RDONLY | O_CLOEXEC);
    if (descriptor >= 0) {
        ::close(descriptor);
        return 0;
    }
    return errno == EMFILE && ::getrlimit(RLIMIT_NOFILE, &limit) == 0 ? limit.rlim_cur : 0;
}

#endif

}  // namespace tarvo::files
