// What the commands that change points have in common.
#pragma once

#include "cli/database.h"

#include <cstdint>
#include <string>

namespace tarvo::cli {

// Points that are changed at a time between two looks at the progress.
constexpr std::uint32_t changeBatch = 1 << 18;

// Writes how many points were changed ("removed", ...), and how many of those named there are not.
void printChanged(std::uint64_t points, std::uint64_t missing, const std::string& verb);

}  // namespace tarvo::cli
