// The patterns of what the rooms below the window tell people. They are read out of the sources of
// these rooms when the program is built (window/translations/messages.py).
#pragma once

#include <span>

namespace tarvo::window {

struct MessagePattern {
    const char* text;   // English in UTF-8, with %1, %2, ... in this order for what is put in
    const char* kinds;  // of what is put in, a letter each: n is a number, v a value, name or other
                        // text of a user, and m may be a message itself
};

// Sorted by nothing that matters; no text twice.
std::span<const MessagePattern> messagePatterns();

}  // namespace tarvo::window
