// Places in files of any size.
#pragma once

#include <cstdint>
#include <cstdio>

namespace tarvo::exchange {

// Zero, or errno tells why not.
inline int seekTo(std::FILE* file, std::uint64_t position) {
#if defined(_WIN32)
    return _fseeki64(file, static_cast<long long>(position), SEEK_SET);
#else
    return fseeko(file, static_cast<off_t>(position), SEEK_SET);
#endif
}

}  // namespace tarvo::exchange
