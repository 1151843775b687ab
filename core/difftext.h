// What is different between two databases, in words.
#pragma once

#include "core/databasediff.h"

#include <string>

namespace tarvo::core {

// Lines that end with a line break: one that tells that there is no difference, or a chapter each
// for definitions, metadata items and points, as far as they differ. "+" stands before what was
// added, "-" before what was removed, "*" before what was changed. Texts from the databases stand
// in it as they are, but for line breaks.
std::string diffText(const DatabaseDiff& diff);

}  // namespace tarvo::core
