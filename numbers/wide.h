// Whole numbers that hold every signed and every unsigned 64-bit number.
#pragma once

namespace tarvo::numbers {

__extension__ typedef __int128 Wide;

}  // namespace tarvo::numbers
