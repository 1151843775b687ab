// What the library needs at two sizes, and how much memory.
#pragma once

#include "benchmarks/size.h"

namespace bench {

// Prints the table; needs the databases of both sizes.
void compareSizes(const Places& places, const Size& small, const Size& large);

}  // namespace bench
