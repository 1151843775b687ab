// How many files a process may have open.
#pragma once

#include <cstdint>

namespace tarvo::files {

// Raises this process's own limit as far as the system lets it.
void allowManyOpenFiles() noexcept;

// The limit, if no more file can be opened for it; else 0.
std::uint64_t exhaustedLimit() noexcept;

}  // namespace tarvo::files
